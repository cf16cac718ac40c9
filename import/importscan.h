#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace import {

/// Goes from one separator, line feed or carriage return of a text to the next.
class CellEnds {
public:
    /// Looks from `from` on. `text` outlives this.
    CellEnds(std::string_view text, std::size_t from, char separator)
        : mText(text)
        , mNextBlock(from)
        , mSeparator(separator) {}

    /// Its place; the size of the text when there is none left.
    std::size_t next() {
        while (mFound == 0) {
            if (mNextBlock == mText.size())
                return mText.size();
            look();
        }
        const auto place = mBlock + static_cast<std::size_t>(std::countr_zero(mFound));
        mFound &= mFound - 1;
        return place;
    }

private:
    static constexpr std::size_t BLOCK = 64; // bytes, a bit of mFound each

    void look() {
        mBlock = mNextBlock;
        mNextBlock += std::min(BLOCK, mText.size() - mBlock);
#ifdef __SSE2__
        if (mNextBlock - mBlock == BLOCK) {
            for (unsigned at = 0; at < BLOCK; at += 16)
                mFound |= std::uint64_t(endsAt(mText.data() + mBlock + at)) << at;
            return;
        }
#endif
        for (std::size_t at = mBlock; at < mNextBlock; ++at)
            mFound |= std::uint64_t(isEnd(mText[at])) << (at - mBlock);
    }

    bool isEnd(char c) const {
        return c == mSeparator || c == '\n' || c == '\r';
    }

#ifdef __SSE2__
    /// A bit for each of 16 bytes.
    std::uint16_t endsAt(const char* text) const {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        const __m128i separators = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(mSeparator));
        const __m128i lines = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')),
                                           _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
        return static_cast<std::uint16_t>(_mm_movemask_epi8(_mm_or_si128(separators, lines)));
    }
#endif

    std::string_view mText;
    std::size_t mBlock = 0;
    std::size_t mNextBlock;
    std::uint64_t mFound = 0; // those of the block that are still to be told
    char mSeparator;
};

} // namespace import
