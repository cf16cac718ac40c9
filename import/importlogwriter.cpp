#include "import/importlogwriter.h"

#include <charconv>
#include <cmath>

namespace import {

namespace {

constexpr std::size_t WRITTEN_AT_ONCE = 1 << 16; // bytes written at a time

constexpr std::string_view memberOf(Gesture gesture) {
    switch (gesture) {
    case Gesture::Up:
        return "\"up\": [";
    case Gesture::Menu:
        return "\"menu\": [";
    case Gesture::Down:
        break;
    }
    return "\"down\": [";
}

} // namespace

LogWriter::LogWriter(QIODevice& device)
    : mDevice(device)
    , mText("[") {
    mText.reserve(2 * WRITTEN_AT_ONCE);
}

void LogWriter::add(const event& event) {
    beginMember();
    mText += memberOf(event.gesture);
    append(event.time);
    mText += ", \"";
    mText += event.key;
    mText += '"';
    if (event.at) {
        mText += ", ";
        append(event.at->x);
        mText += ", ";
        append(event.at->y);
    }
    mText += ']';
    if (mText.size() > WRITTEN_AT_ONCE)
        flush();
}

void LogWriter::beginMember() {
    if (mInRecording) {
        mText += ",\n  ";
        return;
    }
    mText += mHasRecordings ? ",\n{\n  " : "\n{\n  ";
    mInRecording = true;
    mHasRecordings = true;
}

/// Whole numbers without a point, others with at most three digits behind it: thousandths of
/// pixels and milliseconds.
void LogWriter::append(double number) {
    constexpr double EXACT = 1e15;
    char digits[32];
    const double thousandths = std::round(number * 1000) / 1000;
    const auto end =
        std::abs(number) < EXACT && std::trunc(thousandths) == thousandths
            ? std::to_chars(digits, std::end(digits), static_cast<long long>(thousandths)).ptr
            : std::to_chars(digits, std::end(digits), thousandths).ptr;
    mText.append(digits, end);
}

void LogWriter::endRecording() {
    if (mInRecording)
        mText += "\n}";
    mInRecording = false;
}

bool LogWriter::finish() {
    endRecording();
    mText += "\n]\n";
    flush();
    return mIsWritten;
}

void LogWriter::flush() {
    const auto size = static_cast<qint64>(mText.size());
    mIsWritten = mIsWritten && mDevice.write(mText.data(), size) == size;
    mText.clear();
}

} // namespace import
