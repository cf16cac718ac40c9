#include "import/importbytes.h"

#include <algorithm>
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
    : mDevice(device)
    , mPiece(PIECE, '\0') {}

bool Bytes::more() {
    dropUsed();
    const qint64 count = mDevice.read(mPiece.data(), static_cast<qint64>(mPiece.size()));
    if (count < 0)
        mFault = mDevice.errorString();
    if (count <= 0)
        return false;
    std::string_view piece(mPiece.data(), static_cast<std::size_t>(count));
    if (mEncoding == Encoding::Unknown)
        tellEncoding(piece);
    if (mEncoding == Encoding::Utf8 && mHeld.empty() && mDropped == 0 &&
        piece.starts_with(UTF8_MARK))
        piece.remove_prefix(UTF8_MARK.size());
    append(piece);
    return true;
}

void Bytes::dropUsed() {
    mHeld.erase(0, mUsed);
    mDropped += mUsed;
    mUsed = 0;
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

void Bytes::append(std::string_view piece) {
    const QByteArrayView view(piece.data(), static_cast<qsizetype>(piece.size()));
    if (mEncoding == Encoding::Utf8) {
        mHeld += piece;
        return;
    }
    const QString text =
        mEncoding == Encoding::Latin1 ? QString::fromLatin1(view) : QString(mDecoder.decode(view));
    const QByteArray bytes = text.toUtf8();
    mHeld.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace import
