#pragma once

#include "import/importbytes.h"

#include <string>
#include <string_view>

namespace import {

/// Walks a JSON text, or several one after the other, without holding more of it than one value:
/// the brackets of the outer levels are stepped through, the values within are taken whole or
/// passed over. Only what is needed to find their ends is checked; memory does not grow with depth.
class JsonScanner {
public:
    enum class Next { Object, Array, String, Scalar, EndOfObject, EndOfArray, End, Broken };

    /// `bytes` is not owned and outlives the scanner.
    explicit JsonScanner(Bytes& bytes)
        : mBytes(bytes) {}

    /// What comes next, blanks, commas and colons aside; nothing is used up but these.
    Next peek();

    /// Steps into or out of the bracket that comes next.
    void step() { mBytes.use(1); }

    /// Takes the string that comes next, a member's name for one, without its quotes and with its
    /// escapes as they are. False when the text ends within it, or it is longer than a name may be.
    bool takeName(std::string& name);

    enum class Taken { Whole, TooLarge, Cut };

    /// The bytes of the value that comes next, to be changed in place; valid until the scanner is
    /// asked for more. Values over `largest` bytes are passed over, as `TooLarge`. `Cut`: the text
    /// ends within it.
    Taken takeValue(std::string_view& value, std::size_t largest);

    /// Passes over the value that comes next. False when the text ends within it.
    bool skipValue();

    /// The value of the last `takeValue`.
    char* data() { return mBytes.data(); }

    /// Must follow each `takeValue` that was `Whole`.
    void finishValue();

private:
    bool findEnd();

    Bytes& mBytes;

    // How far the search for a value's end has come within what is held.
    struct search {
        std::size_t at = 0;
        std::size_t depth = 0;
        bool inString = false;
        bool isScalar = false;
        bool isEscaped = false;
        bool isDone = false;
    } mSearch;

    void look(std::string_view text);
    static void passBlocks(std::string_view text, search& now);
};

} // namespace import
