#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace import {

/// What a script types, so that it gets into no key where it comes back, as the name of a list's
/// entry for one. Remembers the last thousand texts.
class TypedTexts {
public:
    void add(std::string_view text);

    /// Whether a typed text of some length is in `name`.
    bool areIn(std::string_view name) const;

private:
    std::vector<std::string> mTexts;
    std::size_t mNext = 0;
};

} // namespace import
