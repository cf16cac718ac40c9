#include "import/importjsonrows.h"

#include <charconv>

namespace import {

namespace {

constexpr std::size_t LONGEST_OBJECT = std::size_t(64) << 20; // bytes

/// The value at a path; members whose names hold dots are found before the path is parted there.
const JsonValue* valueAt(const JsonValue& row, const std::string& path) {
    if (const JsonValue* const found = member(row, path.c_str()))
        return found;
    for (std::size_t dot = path.find('.'); dot != std::string::npos;
         dot = path.find('.', dot + 1)) {
        const JsonValue* const inner = member(row, path.substr(0, dot).c_str());
        const JsonValue* const found = inner ? valueAt(*inner, path.substr(dot + 1)) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

} // namespace

QString JsonRows::choose(const std::vector<QString>& columns) {
    for (const QString& column : columns)
        mPaths.push_back(column.toStdString());
    mCells.resize(mPaths.size());
    mNumbers.resize(mPaths.size());
    return {};
}

Rows::Next JsonRows::next() {
    if (mIsHeld)
        mScanner.finishValue();
    mIsHeld = false;
    for (;;) {
        switch (mScanner.peek()) {
        case JsonScanner::Next::Array:
        case JsonScanner::Next::EndOfArray:
        case JsonScanner::Next::EndOfObject:
            mScanner.step();
            break;
        case JsonScanner::Next::Object:
            return take();
        case JsonScanner::Next::End:
            return Next::End;
        default:
            return mScanner.skipValue() ? Next::Odd : Next::Cut;
        }
    }
}

Rows::Next JsonRows::take() {
    std::string_view text;
    switch (mScanner.takeValue(text, LONGEST_OBJECT)) {
    case JsonScanner::Taken::TooLarge:
        return Next::Odd;
    case JsonScanner::Taken::Cut:
        return Next::Cut;
    case JsonScanner::Taken::Whole:
        break;
    }
    mIsHeld = true;
    const JsonValue* const row = mJson.parse(mScanner.data(), text.size());
    if (!row)
        return Next::Odd;
    for (std::size_t i = 0; i < mPaths.size(); ++i)
        mCells[i] = cellOf(*row, i);
    return Next::Row;
}

/// A cell as a table would write it.
std::string_view JsonRows::cellOf(const JsonValue& row, std::size_t column) {
    const JsonValue* const value = valueAt(row, mPaths[column]);
    if (!value)
        return {};
    if (value->IsBool())
        return value->GetBool() ? "true" : "false";
    if (!value->IsNumber())
        return text(*value);
    char digits[32];
    const auto end = value->IsInt64()
                         ? std::to_chars(digits, std::end(digits), value->GetInt64()).ptr
                         : std::to_chars(digits, std::end(digits), value->GetDouble()).ptr;
    mNumbers[column].assign(digits, end);
    return mNumbers[column];
}

} // namespace import
