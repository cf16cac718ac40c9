#include "json/jsonmarker.h"

#include "json/jsonkind.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace json {

namespace {

constexpr int BLOCK_SIZE = 64;

/// Which of 64 bytes are of a kind; the lowest bit is the first byte's.
struct block {
    quint64 quotes = 0;
    quint64 structure = 0; ///< Brackets and points.
    quint64 points = 0;    ///< Commas and colons.
    quint64 spaces = 0;    ///< The whitespace of ASCII.
    quint64 wide = 0;      ///< Parts of characters that are not ASCII.
};

/// Each bit tells whether the number of bits up to it is odd.
constexpr quint64 parities(quint64 bits) {
    for (int step = 1; step < BLOCK_SIZE; step *= 2)
        bits ^= bits << step;
    return bits;
}

/// The marks among the first `size` bytes of a block.
[[gnu::always_inline]] inline quint64 marksOf(const block& found, int size, text_state& state) {
    const quint64 valid = ~quint64(0) >> (BLOCK_SIZE - size);
    const quint64 quotes = found.quotes & valid;
    const quint64 inString = parities(quotes) ^ state.isInString; // with the opening quotes
    const quint64 outside = ~(inString | quotes) & valid;
    const quint64 spaces = found.spaces & outside;
    const quint64 bare = outside & ~(found.spaces | found.structure | found.wide);
    const quint64 hidesSpace = spaces | (found.points & outside);
    const quint64 marks = quotes | (outside & (found.structure | found.wide)) |
                          (bare & ~(bare << 1 | state.isBare)) |
                          (spaces & ~(hidesSpace << 1 | state.hidesSpace));
    state.isInString = inString >> (BLOCK_SIZE - 1) ? ~quint64(0) : 0;
    state.isBare = bare >> (size - 1) & 1;
    state.hidesSpace = hidesSpace >> (size - 1) & 1;
    return marks;
}

/// Writes the places of the marks of a block, `from` bytes behind the text's begin.
[[gnu::always_inline]] inline quint32* write(quint64 marks, int from, quint32* to) {
    constexpr int STEP = 8; // the number is hard to guess: eight at a time, some of them in vain
    const int count = std::popcount(marks);
    for (int done = 0; done < count; done += STEP) {
        for (int i = 0; i < STEP; ++i, marks &= marks - 1)
            to[done + i] = static_cast<quint32>(from + std::countr_zero(marks));
    }
    return to + count;
}

[[gnu::always_inline]] inline quint32* add(const block& found, int from, int size,
                                           text_state& state, quint32* to) {
    return write(marksOf(found, std::min(size - from, BLOCK_SIZE), state), from, to);
}

block blockAt(const char* text) {
    block found;
    for (int i = 0; i < BLOCK_SIZE; ++i) {
        const Kind kind = kind_of(text[i]);
        const quint64 bit = quint64(1) << i;
        found.quotes |= kind == Kind::Quote ? bit : 0;
        found.structure |= kind >= Kind::Colon && kind <= Kind::CloseArray ? bit : 0;
        found.points |= kind == Kind::Colon || kind == Kind::Comma ? bit : 0;
        found.spaces |= kind == Kind::Space ? bit : 0;
        found.wide |= kind == Kind::Wide ? bit : 0;
    }
    return found;
}

quint32* markPlainly(const char* text, int size, text_state& state, quint32* marks) {
    for (int from = 0; from < size; from += BLOCK_SIZE)
        marks = add(blockAt(text + from), from, size, state, marks);
    return marks;
}

#ifdef __SSE2__

// What tells a square bracket from a curly one is one bit. The five control characters among the
// whitespace stand side by side.
constexpr char CURLY = 0x20;
constexpr char FIRST_CONTROL = '\t';
constexpr char CONTROLS = '\r' - '\t';

inline __m128i are16(__m128i bytes, char byte) {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte));
}

inline void add16(quint64& bits, __m128i found, int at) {
    bits |= quint64(static_cast<quint32>(_mm_movemask_epi8(found))) << at;
}

inline block blockBy16(const char* text) {
    block found;
    for (int at = 0; at < BLOCK_SIZE; at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
        const __m128i curly = _mm_or_si128(bytes, _mm_set1_epi8(CURLY));
        const __m128i control = _mm_sub_epi8(bytes, _mm_set1_epi8(FIRST_CONTROL));
        const __m128i leastControl = _mm_min_epu8(control, _mm_set1_epi8(CONTROLS));
        const __m128i brackets = _mm_or_si128(are16(curly, '{'), are16(curly, '}'));
        const __m128i points = _mm_or_si128(are16(bytes, ':'), are16(bytes, ','));
        add16(found.quotes, are16(bytes, '"'), at);
        add16(found.structure, _mm_or_si128(brackets, points), at);
        add16(found.points, points, at);
        add16(found.spaces, _mm_or_si128(are16(bytes, ' '), _mm_cmpeq_epi8(leastControl, control)),
              at);
        add16(found.wide, bytes, at);
    }
    return found;
}

quint32* markBy16(const char* text, int size, text_state& state, quint32* marks) {
    for (int from = 0; from < size; from += BLOCK_SIZE)
        marks = add(blockBy16(text + from), from, size, state, marks);
    return marks;
}

constexpr std::array<quint8, BLOCK_SIZE> EACH_BYTE = [] {
    std::array<quint8, BLOCK_SIZE> each{};
    std::iota(each.begin(), each.end(), quint8(0));
    return each;
}();

#define WIDE_REGISTERS [[gnu::target("avx2,bmi,popcnt")]]

WIDE_REGISTERS inline __m256i are32(__m256i bytes, char byte) {
    return _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(byte));
}

WIDE_REGISTERS inline void add32(quint64& bits, __m256i found, int at) {
    bits |= quint64(static_cast<quint32>(_mm256_movemask_epi8(found))) << at;
}

WIDE_REGISTERS inline block blockBy32(const char* text) {
    block found;
    for (int at = 0; at < BLOCK_SIZE; at += 32) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + at));
        const __m256i curly = _mm256_or_si256(bytes, _mm256_set1_epi8(CURLY));
        const __m256i control = _mm256_sub_epi8(bytes, _mm256_set1_epi8(FIRST_CONTROL));
        const __m256i leastControl = _mm256_min_epu8(control, _mm256_set1_epi8(CONTROLS));
        const __m256i brackets = _mm256_or_si256(are32(curly, '{'), are32(curly, '}'));
        const __m256i points = _mm256_or_si256(are32(bytes, ':'), are32(bytes, ','));
        add32(found.quotes, are32(bytes, '"'), at);
        add32(found.structure, _mm256_or_si256(brackets, points), at);
        add32(found.points, points, at);
        add32(found.spaces,
              _mm256_or_si256(are32(bytes, ' '), _mm256_cmpeq_epi8(leastControl, control)), at);
        add32(found.wide, bytes, at);
    }
    return found;
}

WIDE_REGISTERS quint32* markBy32(const char* text, int size, text_state& state, quint32* marks) {
    for (int from = 0; from < size; from += BLOCK_SIZE)
        marks = add(blockBy32(text + from), from, size, state, marks);
    return marks;
}

#define WIDEST_REGISTERS [[gnu::target("avx2,bmi,popcnt,avx512f,avx512bw,avx512vbmi2")]]

WIDEST_REGISTERS inline quint64 are64(__m512i bytes, char byte) {
    return _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8(byte));
}

WIDEST_REGISTERS inline block blockBy64(const char* text) {
    const __m512i bytes = _mm512_loadu_si512(text);
    const __m512i curly = _mm512_or_si512(bytes, _mm512_set1_epi8(CURLY));
    const __m512i control = _mm512_sub_epi8(bytes, _mm512_set1_epi8(FIRST_CONTROL));
    block found;
    found.quotes = are64(bytes, '"');
    found.points = are64(bytes, ':') | are64(bytes, ',');
    found.structure = found.points | are64(curly, '{') | are64(curly, '}');
    found.spaces = are64(bytes, ' ') | _mm512_cmple_epu8_mask(control, _mm512_set1_epi8(CONTROLS));
    found.wide = _mm512_movepi8_mask(bytes);
    return found;
}

/// Stores places 16 * `part` to 16 * `part` + 15. With masks that change nothing, as GCC 12 takes
/// what others leave undefined for a fault (GCC bug 105593).
template <int part>
WIDEST_REGISTERS inline void store64(__m512i places, int from, quint32* to) {
    const __m128i sixteen = _mm512_maskz_extracti32x4_epi32(0xff, places, part);
    const __m512i wide = _mm512_maskz_cvtepu8_epi32(0xffff, sixteen);
    _mm512_storeu_si512(to + std::ptrdiff_t(16) * part,
                        _mm512_add_epi32(wide, _mm512_set1_epi32(from)));
}

/// As `write`, without a loop: hardly any block has more than 32 marks.
WIDEST_REGISTERS inline quint32* write64(quint64 marks, int from, quint32* to) {
    const __m512i all = _mm512_loadu_si512(EACH_BYTE.data());
    const __m512i places = _mm512_maskz_compress_epi8(marks, all);
    const int count = std::popcount(marks);
    store64<0>(places, from, to);
    store64<1>(places, from, to);
    if (count > 32) {
        store64<2>(places, from, to);
        store64<3>(places, from, to);
    }
    return to + count;
}

WIDEST_REGISTERS quint32* markBy64(const char* text, int size, text_state& state, quint32* marks) {
    for (int from = 0; from < size; from += BLOCK_SIZE) {
        const int length = std::min(size - from, BLOCK_SIZE);
        marks = write64(marksOf(blockBy64(text + from), length, state), from, marks);
    }
    return marks;
}

bool hasWideRegisters() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("popcnt");
}

bool hasWidestRegisters() {
    return hasWideRegisters() && __builtin_cpu_supports("avx512f") &&
           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vbmi2");
}

#endif

} // namespace

std::vector<Marker> markers() {
    std::vector<Marker> all{markPlainly};
#ifdef __SSE2__
    all.push_back(markBy16);
    if (hasWideRegisters())
        all.push_back(markBy32);
    if (hasWidestRegisters())
        all.push_back(markBy64);
#endif
    return all;
}

} // namespace json
