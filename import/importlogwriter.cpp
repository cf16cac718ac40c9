#include "import/importlogwriter.h"

#include <algorithm>
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

constexpr std::size_t LONGEST_NUMBER = 32; // characters

char* put(char* to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
}

/// With at most three digits behind the point: thousandths of pixels and milliseconds.
char* put(char* to, double number) {
    constexpr int THOUSAND = 1000;
    constexpr double EXACT = 9e12; // up to which thousandths are
    if (!(std::abs(number) < EXACT))
        return std::to_chars(to, to + LONGEST_NUMBER, number).ptr;
    const long long thousandths = std::llround(std::abs(number) * THOUSAND);
    if (number < 0 && thousandths > 0)
        *to++ = '-';
    to = std::to_chars(to, to + LONGEST_NUMBER, thousandths / THOUSAND).ptr;
    auto rest = static_cast<int>(thousandths % THOUSAND);
    if (rest == 0)
        return to;
    *to++ = '.';
    for (int digit = THOUSAND / 10; rest > 0; digit /= 10) {
        *to++ = static_cast<char>('0' + rest / digit);
        rest %= digit;
    }
    return to;
}

} // namespace

LogWriter::LogWriter(QIODevice& device)
    : mDevice(device)
    , mText("[") {
    mText.reserve(2 * WRITTEN_AT_ONCE);
}

void LogWriter::add(const event& event) {
    beginMember();
    char part[4 * LONGEST_NUMBER];
    char* end = put(part, memberOf(event.gesture));
    end = put(end, event.time);
    mText.append(part, put(end, ", \""));
    mText += event.key;
    end = put(part, "\"");
    if (event.at) {
        end = put(end, ", ");
        end = put(end, event.at->x);
        end = put(end, ", ");
        end = put(end, event.at->y);
    }
    mText.append(part, put(end, "]"));
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
    std::string_view rest = mText;
    // A full disk takes a part, and says why when it is to take the rest.
    while (mIsWritten && !rest.empty()) {
        const qint64 count = mDevice.write(rest.data(), static_cast<qint64>(rest.size()));
        mIsWritten = count > 0;
        rest.remove_prefix(mIsWritten ? static_cast<std::size_t>(count) : 0);
    }
    mText.clear();
}

} // namespace import
