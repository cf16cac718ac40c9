#pragma once

#include <QIODevice>
#include <QString>
#include <QStringDecoder>

#include <string>
#include <string_view>

namespace import {

/// A text as UTF-8, piece by piece: held is what was read and not yet used up. UTF-8, UTF-16 and
/// UTF-32 are told by their byte order mark, UTF-16 without one by its NULs, and what is no UTF-8
/// within the first piece is taken for Latin-1. Broken UTF-8 is passed on as it is.
class Bytes {
public:
    /// `device` is open for reading, not owned, and outlives the bytes; it may be sequential.
    explicit Bytes(QIODevice& device);

    /// Until the next `more` or `use`.
    std::string_view held() const { return std::string_view(mHeld).substr(mUsed); }

    /// As `held`, to be changed in place.
    char* data() { return mHeld.data() + mUsed; }

    /// Reads a piece behind what is held. False at the end of the text, or at a fault of the
    /// device.
    bool more();

    /// Lets go of the first `count` bytes held.
    void use(std::size_t count) { mUsed += count; }

    /// Bytes used up since the beginning.
    std::size_t position() const { return mDropped + mUsed; }

    /// Why reading ended early; empty when it did not.
    const QString& fault() const { return mFault; }

private:
    enum class Encoding { Unknown, Utf8, Latin1, Decoded };

    void dropUsed();
    void tellEncoding(std::string_view piece);
    void append(std::string_view piece);

    QIODevice& mDevice;
    std::string mPiece;
    std::string mHeld;
    std::size_t mUsed = 0;
    std::size_t mDropped = 0;
    Encoding mEncoding = Encoding::Unknown;
    QStringDecoder mDecoder;
    QString mFault;
};

} // namespace import
