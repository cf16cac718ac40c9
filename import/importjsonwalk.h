#pragma once

#include "import/importjson.h"
#include "import/importjsonscanner.h"

#include <string>

namespace import {

/// Calls `visit(name)` for each member of the object that comes next; it uses up the member's value
/// and returns false to stop. False when it did, or the text ends or breaks within the object.
template <typename Visit>
bool each_member(JsonScanner& scanner, Visit visit) {
    if (scanner.peek() != JsonScanner::Next::Object)
        return false;
    scanner.step();
    std::string name;
    while (scanner.peek() == JsonScanner::Next::String) {
        if (!scanner.takeName(name) || !visit(name))
            return false;
    }
    const bool isEnded = scanner.peek() == JsonScanner::Next::EndOfObject;
    if (isEnded)
        scanner.step();
    return isEnded;
}

/// Calls `visit()` for each element of the array that comes next, as `each_member` does. Anything
/// but an array is passed over.
template <typename Visit>
bool each_element(JsonScanner& scanner, Visit visit) {
    if (scanner.peek() != JsonScanner::Next::Array)
        return scanner.skipValue();
    scanner.step();
    for (;;) {
        const JsonScanner::Next next = scanner.peek();
        if (next == JsonScanner::Next::EndOfArray) {
            scanner.step();
            return true;
        }
        if (next == JsonScanner::Next::End || next == JsonScanner::Next::EndOfObject || !visit())
            return false;
    }
}

/// Calls `use(value)` with the value that comes next, or `lost()` where it is too large or none.
/// False when the text ends within it.
template <typename Use, typename Lost>
bool with_value(JsonScanner& scanner, Json& json, Use use, Lost lost) {
    constexpr std::size_t LARGEST = std::size_t(64) << 20; // bytes
    std::string_view text;
    const JsonScanner::Taken taken = scanner.takeValue(text, LARGEST);
    if (taken == JsonScanner::Taken::Cut)
        return false;
    if (taken == JsonScanner::Taken::TooLarge) {
        lost();
        return true;
    }
    if (const JsonValue* const value = json.parse(scanner.data(), text.size()))
        use(*value);
    else
        lost();
    scanner.finishValue();
    return true;
}

} // namespace import
