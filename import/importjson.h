#pragma once

#include <rapidjson/document.h>

#include <optional>
#include <string_view>
#include <vector>

namespace import {

using JsonValue = rapidjson::Value;

/// A value of a JSON text at hand. Parsed in place and without recursion; what one value needed
/// serves the next.
class Json {
public:
    Json();
    Json(const Json&) = delete;
    Json& operator=(const Json&) = delete;
    ~Json(); // not in line: linters that see into it take its memory for freed twice

    /// Parses the `size` bytes at `text`, behind which one more can be written to. They are changed
    /// and must outlive the value. Null when they are no JSON value, or one of over a
    /// million values. The value is valid until the next call.
    const JsonValue* parse(char* text, std::size_t size);

private:
    std::vector<char> mRoom;
    rapidjson::MemoryPoolAllocator<> mValues;
    std::optional<rapidjson::Document> mDocument;
};

/// The member called so; null when `value` is no object or has none.
const JsonValue* member(const JsonValue& value, const char* name);

/// The text of a string; empty for anything else.
std::string_view text(const JsonValue& value);

/// The text of the member; empty when there is none or it is no string.
std::string_view text(const JsonValue& value, const char* name);

/// The number of the member; empty when there is none, it is no number, or it is not finite.
std::optional<double> number(const JsonValue& value, const char* name);

} // namespace import
