#pragma once

#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>

#include <bit>
#endif

namespace import {

/// The first `separator`, line feed or carriage return from `at` on; `end` when there is none.
inline const char* find_cell_end(const char* at, const char* end, char separator) {
#ifdef __SSE2__
    constexpr int WIDTH = 16;
    const __m128i wanted = _mm_set1_epi8(separator);
    const __m128i feed = _mm_set1_epi8('\n');
    const __m128i carriage = _mm_set1_epi8('\r');
    for (; end - at >= WIDTH; at += WIDTH) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const __m128i found = _mm_or_si128(
            _mm_cmpeq_epi8(bytes, wanted),
            _mm_or_si128(_mm_cmpeq_epi8(bytes, feed), _mm_cmpeq_epi8(bytes, carriage)));
        const auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(found));
        if (mask != 0)
            return at + std::countr_zero(mask);
    }
#endif
    while (at != end && *at != separator && *at != '\n' && *at != '\r')
        ++at;
    return at;
}

} // namespace import
