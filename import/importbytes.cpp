#include "import/importbytes.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>

namespace import {

namespace {

constexpr std::size_t PIECE = 1 << 18; // bytes read at a time
constexpr std::string_view UTF8_MARK = "\xef\xbb\xbf";

/// Length of the character that `first` begins; 0 when no character begins so.
std::size_t lengthOf(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first < 0xc2 || first > 0xf4)
        return 0;
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

/// Whether the text could be UTF-8; a character cut off at its end could.
bool isUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = lengthOf(static_cast<unsigned char>(text[at]));
        if (length == 0)
            return false;
        const std::string_view rest = text.substr(at + 1, length - 1);
        const auto continues = [](char c) {
            return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
        };
        if (!std::all_of(rest.begin(), rest.end(), continues))
            return false;
        at += length;
    }
    return true;
}

/// UTF-16 of mostly plain characters has NULs at every other place.
std::optional<QStringConverter::Encoding> withoutMark(std::string_view text) {
    constexpr std::size_t LOOKED_AT = 64;
    const std::string_view start = text.substr(0, LOOKED_AT);
    std::size_t nuls[2] = {0, 0};
    for (std::size_t i = 0; i < start.size(); ++i)
        nuls[i % 2] += start[i] == '\0' ? 1 : 0;
    if (nuls[0] + nuls[1] < start.size() / 3 || start.empty())
        return std::nullopt;
    return nuls[1] > nuls[0] ? QStringConverter::Utf16LE : QStringConverter::Utf16BE;
}

} // namespace

Bytes::Bytes(QIODevice& device)
    : mDevice(device) {
    makeRoom(PIECE);
}

bool Bytes::more() {
    if (mIsAtEnd)
        return false;
    dropUsed();
    makeRoom(PIECE);
    char* const piece = mRoom.get() + mEnd;
    const qint64 count = mDevice.read(piece, static_cast<qint64>(PIECE));
    if (count < 0)
        mFault = mDevice.errorString();
    mIsAtEnd = count <= 0;
    if (mIsAtEnd)
        return false;
    const std::string_view read(piece, static_cast<std::size_t>(count));
    const bool isFirst = mEncoding == Encoding::Unknown;
    if (isFirst)
        tellEncoding(read);
    if (mEncoding == Encoding::Utf8)
        mEnd += read.size();
    else
        decode(read.size());
    if (isFirst && held().starts_with(UTF8_MARK))
        use(UTF8_MARK.size());
    return true;
}

void Bytes::dropUsed() {
    if (mUsed == 0)
        return;
    mEnd -= mUsed;
    std::memmove(mRoom.get(), mRoom.get() + mUsed, mEnd);
    mUsed = 0;
}

/// For `size` bytes behind what is held, and one more.
void Bytes::makeRoom(std::size_t size) {
    const std::size_t needed = mEnd + size + 1;
    if (needed <= mSize)
        return;
    const std::size_t grown = std::max(needed, mSize + mSize / 2);
    auto* const room = static_cast<char*>(std::realloc(mRoom.get(), grown));
    if (!room)
        throw std::bad_alloc();
    static_cast<void>(mRoom.release());
    mRoom.reset(room);
    mSize = grown;
}

void Bytes::tellEncoding(std::string_view piece) {
    const QByteArrayView view(piece.data(), static_cast<qsizetype>(piece.size()));
    auto marked = QStringConverter::encodingForData(view);
    if (!marked)
        marked = withoutMark(piece);
    if (marked && *marked != QStringConverter::Utf8) {
        mDecoder = QStringDecoder(*marked);
        mEncoding = Encoding::Decoded;
    } else {
        mEncoding = marked || isUtf8(piece) ? Encoding::Utf8 : Encoding::Latin1;
    }
}

/// Makes UTF-8 of the `size` bytes behind what is held.
void Bytes::decode(std::size_t size) {
    const QByteArrayView view(mRoom.get() + mEnd, static_cast<qsizetype>(size));
    const QString text =
        mEncoding == Encoding::Latin1 ? QString::fromLatin1(view) : QString(mDecoder.decode(view));
    const QByteArray bytes = text.toUtf8();
    const auto length = static_cast<std::size_t>(bytes.size());
    makeRoom(length);
    std::copy(bytes.begin(), bytes.end(), mRoom.get() + mEnd);
    mEnd += length;
}

} // namespace import
