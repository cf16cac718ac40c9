#pragma once

#include "json/jsonmarker.h"

#include <array>

namespace json {

/// The places of a text, in UTF-8, at which something may happen to a scan: each bracket, colon,
/// comma and quote, each first byte of bare values and of whitespace, and all bytes that are not
/// ASCII. Within a string nothing happens, nor does it, as a rule, at whitespace right after a
/// comma or a colon, which is left out unless it begins a piece.
///
/// The text comes in pieces; what one of them ends in goes on in the next.
class Marks {
public:
    Marks();

    /// Goes on with the text from `begin` to `end`, which stays where it is until the next call;
    /// 64 bytes more can be read behind it.
    void goOn(const char* begin, const char* end);

    /// The next place, `end` when there are no more.
    const char* next() { return mNext != mLast || find() ? mBase + *mNext++ : mEnd; }

    /// How many of the next places are known; there may be more.
    qptrdiff known() const { return mLast - mNext; }

    /// The place that the call of `next` after `skipped` others would give, of those known.
    const char* peek(int skipped) const { return mBase + mNext[skipped]; }

    /// Passes over so many of those known.
    void skip(int count) { mNext += count; }

private:
    static constexpr int SIZE = 2048; ///< Bytes at a time: their marks stay in the first cache.
    static constexpr int SPARE = 64;

    bool find();

    const Marker mMarker;
    text_state mState;
    const char* mBase = nullptr; ///< Of the marks.
    const char* mHere = nullptr; ///< What comes next is not looked at yet.
    const char* mEnd = nullptr;
    const quint32* mNext = nullptr;
    const quint32* mLast = nullptr;
    std::array<quint32, SIZE + SPARE> mMarks{};
};

} // namespace json
