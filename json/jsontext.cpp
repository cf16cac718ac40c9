#include "json/jsontext.h"

#include <QIODevice>
#include <QStringView>

#include <algorithm>
#include <bit>
#include <cstring>

namespace json {

namespace {

// Bytes of a read: small enough for the processor's second cache to hold them and their characters.
constexpr qsizetype READ_SIZE = 65536;

constexpr qsizetype MOST_HELD = 3;    // bytes of an unfinished character
constexpr qsizetype LONGEST_MARK = 4; // bytes of a byte order mark
constexpr qsizetype UTF8_MARK = 3;

// Bytes that are no character become one replacement each, as what ends a piece is not unfinished.
constexpr auto UTF8_FLAGS =
    QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom;

} // namespace

Text::Text(QIODevice& device)
    : mDevice(device)
    , mDecoder(QStringDecoder::Utf8, UTF8_FLAGS)
    , mBytes(std::make_unique_for_overwrite<char[]>(MOST_HELD + READ_SIZE)) {}

bool Text::readOn(const QChar* keep) {
    moveToFront(keep);
    const QChar* const from = mEnd;
    while (!mIsAtEnd && mEnd == from)
        append(readBytes());
    return mEnd != from;
}

/// Makes the characters from `keep` on the piece, with room for another read behind them.
void Text::moveToFront(const QChar* keep) {
    const qsizetype kept = mEnd - keep;
    const qsizetype needed = kept + mDecoder.requiredSpace(MOST_HELD + READ_SIZE);
    if (needed <= mBuffer.size()) {
        if (keep != mBuffer.constData())
            std::copy_n(keep, kept, mBuffer.data());
    } else {
        QString larger(std::max(needed, 2 * mBuffer.size()), Qt::Uninitialized);
        std::copy_n(keep, kept, larger.data());
        mBuffer.swap(larger);
    }
    mBegin = mBuffer.data();
    mEnd = mBegin + kept;
}

/// What was held back and the next bytes, as they stand in the device.
QByteArrayView Text::readBytes() {
    const bool textMode = mDevice.isTextModeEnabled();
    if (textMode)
        mDevice.setTextModeEnabled(false);
    const qint64 size = mDevice.read(mBytes.get() + mHeld, READ_SIZE);
    if (textMode)
        mDevice.setTextModeEnabled(true);
    mIsAtEnd = size <= 0;
    return {mBytes.get(), mHeld + std::max<qsizetype>(size, 0)};
}

/// Tells the encoding from the first bytes, when there are enough of them; the bytes to decode.
QByteArrayView Text::chooseEncoding(QByteArrayView bytes) {
    if (bytes.size() < LONGEST_MARK && !mIsAtEnd)
        return bytes;
    mIsAtStart = false;
    const auto encoding = QStringDecoder::encodingForData(bytes);
    if (!encoding)
        return bytes;
    if (*encoding == QStringDecoder::Utf8)
        return bytes.sliced(UTF8_MARK);
    mDecoder = QStringDecoder(*encoding);
    const bool isUtf32 =
        *encoding == QStringDecoder::Utf32LE || *encoding == QStringDecoder::Utf32BE;
    mUnit = isUtf32 ? 4 : 2;
    return bytes;
}

/// How many bytes at the end only begin a character, or all while the encoding is not known.
qsizetype Text::unfinished(QByteArrayView bytes) const {
    if (mIsAtStart)
        return bytes.size();
    if (mUnit > 1)
        return bytes.size() % mUnit;
    for (qsizetype back = 1; back <= std::min(bytes.size(), MOST_HELD); ++back) {
        const auto byte = static_cast<uchar>(bytes[bytes.size() - back]);
        const int length = std::countl_one(byte); // of the character that the byte begins
        if (length != 1)
            return length > back ? back : 0;
    }
    return 0;
}

void Text::append(QByteArrayView bytes) {
    if (mIsAtStart)
        bytes = chooseEncoding(bytes);
    const qsizetype held = mIsAtEnd ? 0 : unfinished(bytes);
    decode(bytes.chopped(held));
    std::memmove(mBytes.get(), bytes.end() - held, static_cast<std::size_t>(held));
    mHeld = held;
}

void Text::decode(QByteArrayView bytes) {
    QChar* const from = mEnd;
    mEnd = mDecoder.appendToBuffer(from, bytes);
    if (mDevice.isTextModeEnabled())
        mEnd = std::remove(from, mEnd, u'\r');
    const qsizetype nul = bytes.contains('\0') ? QStringView(from, mEnd).indexOf(u'\0') : -1;
    if (nul >= 0) {
        mEnd = from + nul;
        mIsAtEnd = true;
    }
}

} // namespace json
