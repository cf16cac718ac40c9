#include "json/jsontext.h"

#include <QIODevice>
#include <QStringView>

#include <algorithm>

namespace json {

namespace {

// Bytes of a read: small enough for the processor's second cache to hold them and their characters.
constexpr qsizetype READ_SIZE = 65536;

} // namespace

Text::Text(QIODevice& device)
    : mDevice(device)
    , mDecoder(QStringDecoder::Utf8)
    , mBytes(std::make_unique_for_overwrite<char[]>(READ_SIZE)) {}

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
    const qsizetype needed = kept + mDecoder.requiredSpace(READ_SIZE);
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

/// The next bytes, as they stand in the device; none at its end.
QByteArrayView Text::readBytes() {
    const bool textMode = mDevice.isTextModeEnabled();
    if (textMode)
        mDevice.setTextModeEnabled(false);
    const qint64 size = mDevice.read(mBytes.get(), READ_SIZE);
    if (textMode)
        mDevice.setTextModeEnabled(true);
    return {mBytes.get(), std::max<qsizetype>(size, 0)};
}

void Text::append(QByteArrayView bytes) {
    if (mIsAtStart) {
        mIsAtStart = false;
        if (const auto encoding = QStringDecoder::encodingForData(bytes))
            mDecoder = QStringDecoder(*encoding);
    }
    QChar* const from = mEnd;
    mEnd = mDecoder.appendToBuffer(from, bytes);
    if (mDevice.isTextModeEnabled())
        mEnd = std::remove(from, mEnd, u'\r');
    const qsizetype nul = bytes.contains('\0') ? QStringView(from, mEnd).indexOf(u'\0') : -1;
    if (nul >= 0)
        mEnd = from + nul;
    mIsAtEnd = bytes.isEmpty() || nul >= 0;
}

} // namespace json
