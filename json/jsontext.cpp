#include "json/jsontext.h"

#include <QIODevice>
#include <QStringConverter>

#include <algorithm>
#include <cstring>
#include <utility>

namespace json {

namespace {

// Bytes of a read: small enough for the processor's first cache to hold much of them.
constexpr qsizetype READ_SIZE = 32768;

constexpr qsizetype LONGEST_MARK = 4; // bytes of a byte order mark
constexpr qsizetype UTF8_MARK = 3;

} // namespace

Text::Text(QIODevice& device)
    : mDevice(device) {}

bool Text::readOn(const char* keep) {
    moveToFront(keep);
    const qsizetype kept = mEnd - mBegin;
    while (!mIsAtEnd && mEnd - mBegin == kept)
        append();
    return mEnd - mBegin != kept;
}

/// Makes the bytes from `keep` on the piece.
void Text::moveToFront(const char* keep) {
    const qsizetype kept = mEnd - keep;
    if (keep != mBegin && kept + mHeld > 0)
        std::memmove(mBuffer.get(), keep, static_cast<std::size_t>(kept + mHeld));
    mBegin = mBuffer.get();
    mEnd = mBegin + kept;
}

/// Makes room for `size` bytes behind the text.
void Text::makeRoom(qsizetype size) {
    const qsizetype used = mEnd - mBegin + mHeld;
    if (used + size <= mRoom)
        return;
    const qsizetype room = std::max(used + size, 2 * mRoom);
    auto larger = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(room + SPARE));
    std::copy_n(mBegin, used, larger.get());
    mEnd = larger.get() + (mEnd - mBegin);
    mBegin = larger.get();
    mBuffer = std::move(larger);
    mRoom = room;
}

void Text::append() {
    makeRoom(READ_SIZE);
    mHeld += read();
    if (mIsAtStart && mHeld < LONGEST_MARK && !mIsAtEnd)
        return;
    if (std::exchange(mIsAtStart, false))
        chooseEncoding();
    const qsizetype from = mEnd - mBegin;
    if (mRecoder) {
        const QByteArrayView recoded = mRecoder->recode({mEnd, std::exchange(mHeld, 0)}, mIsAtEnd);
        makeRoom(recoded.size());
        mEnd = std::copy(recoded.begin(), recoded.end(), mEnd);
    } else {
        const qsizetype unfinished = mIsAtEnd ? 0 : unfinished_utf8({mEnd, mHeld});
        mEnd += mHeld - unfinished;
        mHeld = unfinished;
    }
    endAtNul(mBegin + from);
}

/// Reads the next bytes, as they stand in the device, behind those that are held; their number.
qsizetype Text::read() {
    const bool textMode = mDevice.isTextModeEnabled();
    if (textMode)
        mDevice.setTextModeEnabled(false);
    const qint64 size = mDevice.read(mEnd + mHeld, READ_SIZE);
    if (textMode)
        mDevice.setTextModeEnabled(true);
    mIsAtEnd = size <= 0;
    return std::max<qsizetype>(size, 0);
}

/// Tells the encoding from the first bytes.
void Text::chooseEncoding() {
    const auto encoding = QStringConverter::encodingForData(QByteArrayView(mEnd, mHeld));
    if (encoding == QStringConverter::Utf8) {
        mHeld -= UTF8_MARK;
        std::memmove(mEnd, mEnd + UTF8_MARK, static_cast<std::size_t>(mHeld));
    }
    const bool textMode = mDevice.isTextModeEnabled();
    if (textMode || (encoding && encoding != QStringConverter::Utf8))
        mRecoder.emplace(encoding.value_or(QStringConverter::Utf8), textMode);
}

void Text::endAtNul(char* from) {
    if (void* nul = std::memchr(from, '\0', static_cast<std::size_t>(mEnd - from))) {
        mEnd = static_cast<char*>(nul);
        mHeld = 0;
        mIsAtEnd = true;
    }
}

} // namespace json
