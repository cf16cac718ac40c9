#pragma once

#include "json/jsonrecoder.h"

#include <QtGlobal>

#include <memory>
#include <optional>

class QIODevice;

namespace json {

/// The text of a device in UTF-8, valid or not. A NUL ends it. A device in UTF-16 or UTF-32, by its
/// byte order mark, or in text mode is recoded.
///
/// It is held piece by piece in one buffer that is used again and again: fresh memory costs more
/// than reading does. A piece never ends within a character. The buffer grows only for a piece that
/// is asked to keep what it holds.
class Text {
public:
    /// So many bytes can be read behind the end of a piece; they mean nothing.
    static constexpr qsizetype SPARE = 64;

    /// Nothing is read yet. `device` is open, not owned, and outlives the text.
    explicit Text(QIODevice& device);

    const char* begin() const { return mBegin; }

    const char* end() const { return mEnd; }

    /// Reads on: the next piece begins with the bytes from `keep` to the end of this one, so all
    /// pointers into this one become invalid. False, with nothing but the kept bytes left, at the
    /// end of the text. Throws `std::bad_alloc`.
    bool readOn(const char* keep);

    /// Whether it is the form that a `Recoder` gives.
    bool isRecoded() const { return mRecoder.has_value(); }

private:
    void moveToFront(const char* keep);
    void makeRoom(qsizetype size);
    void append();
    qsizetype read();
    void chooseEncoding();
    void endAtNul(char* from);

    QIODevice& mDevice;
    std::unique_ptr<char[]> mBuffer;
    qsizetype mRoom = 0; ///< Of the buffer, without the spare bytes.
    char* mBegin = nullptr;
    char* mEnd = nullptr;
    qsizetype mHeld = 0; ///< Bytes behind the end that are read, but not yet part of the text.
    std::optional<Recoder> mRecoder;
    bool mIsAtStart = true;
    bool mIsAtEnd = false;
};

} // namespace json
