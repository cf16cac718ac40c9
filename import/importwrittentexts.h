#pragma once

#include "import/importtextmap.h"

#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace import {

/// What people or scripts wrote into the fields of pages, for telling names that repeat it, such as
/// the name of a list's entry. Of each text its beginning is held, and the last hundred thousand
/// states of fields; a name is looked for among them in steps that go with its length.
class WrittenTexts {
public:
    /// A number for a page, whose fields have numbers below 2^32 of their own.
    std::int64_t newPage() { return ++mPages << 32; }

    /// The text that a field holds now. While it is written on, or back, it stays one text.
    void note(std::int64_t field, std::string_view text);

    /// A text of which only is known that it was typed.
    void note(std::string_view text) { note(newPage(), text); }

    /// Whether the name is what was written, holds it, or is its beginning. Upper case is lower
    /// case; texts of a few characters have to be the whole name, or words of it.
    bool isRepeatedBy(std::string_view name);

private:
    bool isRepeated(std::string_view name) const;
    bool isHeldAt(std::size_t at, std::string_view name) const;

    using Sorted = std::multiset<std::string, std::less<>>;

    struct answer {
        std::int64_t upTo = 0; // the number of the last text when it was asked
        bool isRepeated = false;
    };

    std::int64_t mPages = 0;
    std::int64_t mNumber = 0;
    Sorted mSorted;                                       // folded
    std::deque<Sorted::iterator> mTexts;                  // by number; its end for one that another
                                                          // goes on with
    std::unordered_map<std::int64_t, std::int64_t> mLast; // numbers by field
    text_map<answer> mAnswers;                            // by name as it was asked
};

} // namespace import
