#include "json/jsonnumber.h"

#include "json/jsonrecoder.h"

#include <QString>

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>

namespace json {

namespace {

// Numbers of so many digits are whole in a double, and so are these powers: their quotient is
// rounded once, to the same double that a conversion of the text gives.
constexpr std::ptrdiff_t EXACT_DIGITS = 15;
constexpr std::array<double, EXACT_DIGITS> POWERS{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

constexpr int WORD = sizeof(quint64);

/// A word of eight times the same byte.
constexpr quint64 eight(quint8 byte) {
    return byte * quint64(0x0101010101010101);
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Of all words only "inf" and "nan" are numbers, in letters of either case.
bool isOtherWord(const char* begin, const char* end) {
    constexpr char TO_LOWER = 0x20;
    if (!isLetter(*begin))
        return false;
    const int first = *begin | TO_LOWER;
    const int second = end - begin > 1 ? begin[1] | TO_LOWER : ' ';
    return !(first == 'i' && second == 'n') && !(first == 'n' && second == 'a');
}

/// The bits from `bit` on.
constexpr quint64 bitsFrom(int bit) {
    return bit < 64 ? ~quint64(0) << bit : 0;
}

/// Takes the point out of eight characters, of which the first is the lowest; the number of digits
/// that stood behind it.
int takePoint(quint64& text) {
    const quint64 others = text ^ eight('.');
    const quint64 points = (others - eight(1)) & ~others & eight(0x80); // the lowest one surely
    if (points == 0)
        return 0;
    const int at = std::countr_zero(points) / 8 * 8;
    text = (text & bitsFrom(at + 8)) | (text & ~bitsFrom(at)) << 8 | '0';
    return WORD - 1 - at / 8;
}

bool areDigits(quint64 text) {
    constexpr quint64 HIGH = eight(0xf0);
    return ((text & HIGH) | ((text + eight(6)) & HIGH) >> 4) == eight(0x33);
}

/// The number of eight digits, of which the first is the lowest byte.
quint64 valueOf(quint64 digits) {
    constexpr quint64 PAIRS = 0x000000ff000000ff;
    digits -= eight('0');
    digits = digits * 10 + (digits >> 8);
    return ((digits & PAIRS) * (1000000 * (quint64(1) << 32) + 100) +
            (digits >> 16 & PAIRS) * (10000 * (quint64(1) << 32) + 1)) >>
           32;
}

/// Converts up to eight digits, with a point between two of them or without, all at once.
bool convertShort(const char* begin, const char* end, double& number) {
    const auto size = static_cast<int>(end - begin);
    if (std::endian::native != std::endian::little || end - begin > WORD || !isDigit(*begin) ||
        !isDigit(end[-1]))
        return false;
    quint64 text = 0;
    std::memcpy(&text, begin, sizeof(text));
    const int missing = 8 * (WORD - size);
    text = text << missing | (eight('0') & ~bitsFrom(missing));
    const int fraction = takePoint(text);
    if (!areDigits(text))
        return false;
    number = static_cast<double>(valueOf(text));
    if (fraction > 0)
        number /= POWERS[static_cast<std::size_t>(fraction)];
    return true;
}

/// Converts what is written in digits, with a point between two of them or without.
bool convertExact(const char* begin, const char* end, double& number) {
    quint64 digits = 0;
    const char* point = end;
    if (end - begin > EXACT_DIGITS + 1 || !isDigit(*begin) || !isDigit(end[-1]))
        return false;
    for (const char* here = begin; here != end; ++here) {
        if (isDigit(*here))
            digits = digits * 10 + static_cast<quint64>(*here - '0');
        else if (*here == '.' && point == end)
            point = here;
        else
            return false;
    }
    const std::ptrdiff_t fraction = point == end ? 0 : end - point - 1;
    if (end - begin - (point == end ? 0 : 1) > EXACT_DIGITS)
        return false;
    number = static_cast<double>(digits) / POWERS[static_cast<std::size_t>(fraction)];
    return true;
}

/// Converts what begins with a digit. Left to the toolkit are all other forms, and what is zero or
/// infinite, as it takes only some of it for a number.
bool convertUsual(const char* begin, const char* end, double& number) {
    double value = 0;
    if (!isDigit(*begin) || std::from_chars(begin, end, value).ptr != end)
        return false;
    if (value == 0 || !std::isfinite(value))
        return false;
    number = value;
    return true;
}

bool convertAny(const char* begin, const char* end, double& number) {
    const QString text = utf8_decoder()(QByteArrayView(begin, end));
    bool ok = false;
    const double converted = text.toDouble(&ok);
    if (ok)
        number = converted;
    return ok;
}

} // namespace

bool to_number(const char* begin, const char* end, double& number) {
    assert(begin < end);
    const bool negative = *begin == '-' && end - begin > 1;
    const char* const first = begin + (negative ? 1 : 0);
    double value = 0;
    if (!convertShort(first, end, value) && !convertExact(first, end, value) &&
        !convertUsual(first, end, value))
        return !isOtherWord(begin, end) && convertAny(begin, end, number);
    number = negative ? -value : value;
    return true;
}

} // namespace json
