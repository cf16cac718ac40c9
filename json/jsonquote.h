#pragma once

#include <QChar>

#ifdef __SSE2__
#include <emmintrin.h>

#include <bit>
#endif

namespace json {

/// The first quote from `here` on, `end` without one. Most strings of a log are short: what counts
/// is to begin at once, without a call.
inline const QChar* find_quote(const QChar* here, const QChar* end) {
#ifdef __SSE2__
    constexpr int LANES = 8;
    const __m128i quote = _mm_set1_epi16('"');
    for (; end - here >= LANES; here += LANES) {
        const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(here));
        const int found = _mm_movemask_epi8(_mm_cmpeq_epi16(text, quote)); // two bits a character
        if (found != 0)
            return here + std::countr_zero(static_cast<unsigned>(found)) / 2;
    }
#endif
    while (here != end && *here != u'"')
        ++here;
    return here;
}

} // namespace json
