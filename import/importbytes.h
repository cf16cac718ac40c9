#pragma once

#include <QIODevice>
#include <QString>
#include <QStringDecoder>

#include <cstdlib>
#include <memory>
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
    std::string_view held() const { return {mRoom.get() + mUsed, mEnd - mUsed}; }

    /// As `held`, to be changed in place; one byte behind it can be written to.
    char* data() { return mRoom.get() + mUsed; }

    /// Reads a piece behind what is held. False at the end of the text, or at a fault of the
    /// device.
    bool more();

    /// Lets go of the first `count` bytes held.
    void use(std::size_t count) { mUsed += count; }

    /// Why reading ended early; empty when it did not.
    const QString& fault() const { return mFault; }

private:
    enum class Encoding { Unknown, Utf8, Latin1, Decoded };

    struct freer {
        void operator()(char* room) const { std::free(room); }
    };

    void dropUsed();
    void makeRoom(std::size_t size);
    void tellEncoding(std::string_view piece);
    void decode(std::size_t size);

    QIODevice& mDevice;
    std::unique_ptr<char, freer> mRoom; // not a vector's: it grows without being copied
    std::size_t mSize = 0;              // of the room
    std::size_t mUsed = 0;
    std::size_t mEnd = 0; // of what is held
    bool mIsAtEnd = false;
    Encoding mEncoding = Encoding::Unknown;
    QStringDecoder mDecoder;
    QString mFault;
};

} // namespace import
