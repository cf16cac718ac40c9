#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

#include <memory>

class QIODevice;

namespace json {

/// The text of a device, as if all its bytes were decoded in one go: from UTF-8 as `QString` does
/// it, or from UTF-16 or UTF-32 by their byte order mark. A NUL ends it.
///
/// It is held piece by piece in one buffer that is used again and again: fresh memory costs more
/// than decoding does. The buffer grows only for a piece that is asked to keep what it holds.
class Text {
public:
    /// Nothing is read yet. `device` is open, not owned, and outlives the text.
    explicit Text(QIODevice& device);

    const QChar* begin() const { return mBegin; }

    const QChar* end() const { return mEnd; }

    /// Reads on: the next piece begins with the characters from `keep` to the end of this one, so
    /// all pointers into this one become invalid. False, with nothing but the kept characters left,
    /// at the end of the text. Throws `std::bad_alloc`.
    bool readOn(const QChar* keep);

private:
    void moveToFront(const QChar* keep);
    QByteArrayView readBytes();
    QByteArrayView chooseEncoding(QByteArrayView bytes);
    qsizetype unfinished(QByteArrayView bytes) const;
    void append(QByteArrayView bytes);
    void decode(QByteArrayView bytes);

    QIODevice& mDevice;
    QStringDecoder mDecoder;
    std::unique_ptr<char[]> mBytes; ///< As read, not yet decoded.
    qsizetype mHeld = 0;            ///< The first of them were held back from the piece before.
    qsizetype mUnit = 1;            ///< Bytes that the encoding takes at a time.
    QString mBuffer;                ///< Its size is room, not text.
    QChar* mBegin = nullptr;        ///< Of the piece, in the buffer.
    QChar* mEnd = nullptr;
    bool mIsAtStart = true;
    bool mIsAtEnd = false;
};

} // namespace json
