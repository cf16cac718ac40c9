#include "import/importjsonscanner.h"

#include <array>
#include <bit>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace import {

namespace {

constexpr std::size_t LONGEST_NAME = 1 << 16; // bytes

bool isBetween(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == ',' || c == ':' || c == '\x1e';
}

enum class ByteKind : unsigned char { Other, Open, Close, Quote, Blank };

constexpr std::array<ByteKind, 256> kinds() {
    std::array<ByteKind, 256> table{};
    table['{'] = table['['] = ByteKind::Open;
    table['}'] = table[']'] = ByteKind::Close;
    table['"'] = ByteKind::Quote;
    for (const char c : {' ', '\n', '\r', '\t', ',', ':', '\x1e'})
        table[static_cast<unsigned char>(c)] = ByteKind::Blank;
    return table;
}

constexpr std::array<ByteKind, 256> KINDS = kinds();

constexpr std::size_t BLOCK = 64; // bytes looked at in one go

#ifdef __SSE2__

/// A bit for each byte of a block.
struct block_bits {
    std::uint64_t quotes = 0;
    std::uint64_t escapes = 0;
    std::uint64_t opening = 0;
    std::uint64_t closing = 0;
};

std::uint64_t bitsOf(__m128i equal) {
    return static_cast<std::uint16_t>(_mm_movemask_epi8(equal));
}

block_bits bitsAt(const char* text) {
    block_bits bits;
    for (unsigned at = 0; at < BLOCK; at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
        // Brackets differ from braces by one bit.
        const __m128i braces = _mm_or_si128(bytes, _mm_set1_epi8(0x20));
        bits.quotes |= bitsOf(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"'))) << at;
        bits.escapes |= bitsOf(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'))) << at;
        bits.opening |= bitsOf(_mm_cmpeq_epi8(braces, _mm_set1_epi8('{'))) << at;
        bits.closing |= bitsOf(_mm_cmpeq_epi8(braces, _mm_set1_epi8('}'))) << at;
    }
    return bits;
}

/// Each bit becomes the sum of itself and those below: between a quote and the next, 1.
std::uint64_t sumsOf(std::uint64_t bits) {
    for (unsigned by = 1; by < BLOCK; by *= 2)
        bits ^= bits << by;
    return bits;
}

#endif

} // namespace

JsonScanner::Next JsonScanner::peek() {
    for (;;) {
        const std::string_view held = mBytes.held();
        std::size_t at = 0;
        while (at < held.size() && isBetween(held[at]))
            ++at;
        mBytes.use(at);
        if (at < held.size())
            break;
        if (!mBytes.more())
            return Next::End;
    }
    switch (mBytes.held().front()) {
    case '{':
        return Next::Object;
    case '[':
        return Next::Array;
    case '}':
        return Next::EndOfObject;
    case ']':
        return Next::EndOfArray;
    case '"':
        return Next::String;
    default:
        return KINDS[static_cast<unsigned char>(mBytes.held().front())] == ByteKind::Other
                   ? Next::Scalar
                   : Next::Broken;
    }
}

bool JsonScanner::takeName(std::string& name) {
    std::string_view value;
    if (takeValue(value, LONGEST_NAME) != Taken::Whole)
        return false;
    name = value.substr(1, value.size() - 2);
    finishValue();
    return true;
}

JsonScanner::Taken JsonScanner::takeValue(std::string_view& value, std::size_t largest) {
    mSearch = {};
    while (!mSearch.isDone) {
        if (mSearch.at > largest)
            return findEnd() ? Taken::TooLarge : Taken::Cut;
        look(mBytes.held());
        if (mSearch.isDone || mBytes.more())
            continue;
        if (!mSearch.isScalar || mSearch.at == 0)
            return Taken::Cut;
        mSearch.isDone = true;
    }
    value = mBytes.held().substr(0, mSearch.at);
    return Taken::Whole;
}

void JsonScanner::finishValue() {
    mBytes.use(mSearch.at);
    mSearch = {};
}

bool JsonScanner::skipValue() {
    mSearch = {};
    return findEnd();
}

/// Goes on with the search, letting go of what was looked at.
bool JsonScanner::findEnd() {
    while (!mSearch.isDone) {
        look(mBytes.held());
        mBytes.use(mSearch.at);
        mSearch.at = 0;
        if (!mSearch.isDone && !mBytes.more())
            return mSearch.isScalar;
    }
    return true;
}

/// Passes over blocks in which neither an escape nor the end of the value can be.
void JsonScanner::passBlocks([[maybe_unused]] std::string_view text, [[maybe_unused]] search& now) {
#ifdef __SSE2__
    while (now.at + BLOCK <= text.size()) {
        const block_bits bits = bitsAt(text.data() + now.at);
        const std::uint64_t inside = sumsOf(bits.quotes) ^ (now.inString ? ~0ULL : 0);
        const auto closing = static_cast<std::size_t>(std::popcount(bits.closing & ~inside));
        if (bits.escapes != 0 || closing >= now.depth)
            return;
        now.depth += static_cast<std::size_t>(std::popcount(bits.opening & ~inside)) - closing;
        now.inString = (inside >> (BLOCK - 1)) != 0;
        now.at += BLOCK;
    }
#endif
}

/// Looks for the value's end from where the search stands; it ends up behind it, or at the end of
/// what is held.
void JsonScanner::look(std::string_view text) {
    search now = mSearch;         // in registers
    std::size_t byBlock = now.at; // from where on blocks are tried
    while (now.at < text.size()) {
        if (now.at >= byBlock && now.depth > 0 && !now.isEscaped) {
            passBlocks(text, now);
            byBlock = now.at + BLOCK;
            if (now.at == text.size())
                break;
        }
        const char c = text[now.at];
        if (now.inString) {
            ++now.at;
            if (now.isEscaped)
                now.isEscaped = false;
            else if (c == '\\')
                now.isEscaped = true;
            else if (c == '"') {
                now.inString = false;
                now.isDone = now.depth == 0;
            }
        } else {
            const ByteKind kind = KINDS[static_cast<unsigned char>(c)];
            if (now.isScalar && kind != ByteKind::Other) {
                now.isDone = true;
                break;
            }
            ++now.at;
            now.inString = kind == ByteKind::Quote;
            now.isScalar = kind == ByteKind::Other && now.depth == 0;
            now.depth += kind == ByteKind::Open ? 1 : 0;
            if (kind == ByteKind::Close) {
                now.depth -= now.depth > 0 ? 1 : 0;
                now.isDone = now.depth == 0;
            }
        }
        if (now.isDone)
            break;
    }
    mSearch = now;
}

} // namespace import
