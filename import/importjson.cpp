#include "import/importjson.h"

#include <algorithm>
#include <cmath>

namespace import {

namespace {

constexpr std::size_t ROOM = 1 << 20; // bytes; larger values take more for a while
constexpr std::ptrdiff_t MOST_VALUES = 1'000'000;

/// Memory goes with the values, which commas part and brackets hold; so does that for their depth.
bool holdsTooMuch(std::string_view text) {
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return c == ',' || c == '[' || c == '{'; }) > MOST_VALUES;
}

} // namespace

Json::Json()
    : mRoom(ROOM)
    , mValues(mRoom.data(), mRoom.size()) {}

Json::~Json() = default;

const JsonValue* Json::parse(char* text, std::size_t size) {
    mDocument.reset();
    mValues.Clear();
    if (holdsTooMuch({text, size}))
        return nullptr;
    mDocument.emplace(&mValues);
    const char behind = text[size];
    text[size] = '\0';
    mDocument->ParseInsitu<rapidjson::kParseIterativeFlag>(text);
    text[size] = behind;
    return mDocument->HasParseError() ? nullptr : &*mDocument;
}

const JsonValue* member(const JsonValue& value, const char* name) {
    if (!value.IsObject())
        return nullptr;
    const auto found = value.FindMember(name);
    return found == value.MemberEnd() ? nullptr : &found->value;
}

std::string_view text(const JsonValue& value) {
    return value.IsString() ? std::string_view(value.GetString(), value.GetStringLength())
                            : std::string_view();
}

std::string_view text(const JsonValue& value, const char* name) {
    const JsonValue* const found = member(value, name);
    return found ? text(*found) : std::string_view();
}

std::optional<double> number(const JsonValue& value, const char* name) {
    const JsonValue* const found = member(value, name);
    if (!found || !found->IsNumber() || !std::isfinite(found->GetDouble()))
        return std::nullopt;
    return found->GetDouble();
}

} // namespace import
