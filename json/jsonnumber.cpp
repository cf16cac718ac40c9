#include "json/jsonnumber.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>

namespace json {

namespace {

// Numbers of so many digits are whole in a double, and so are these powers: their quotient is
// rounded once, to the same double that a conversion of the text gives.
constexpr qsizetype EXACT_DIGITS = 15;
constexpr std::array<double, EXACT_DIGITS> POWERS{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

// Room for any number that a program writes to the last digit of a double.
constexpr qsizetype USUAL_LENGTH = 64;

constexpr bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

constexpr bool isLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

/// Reads digits from `here` on into `digits`; returns the place behind them.
const QChar* readDigits(const QChar* here, const QChar* end, quint64& digits) {
    for (; here != end && isDigit(*here); ++here)
        digits = digits * 10 + (here->unicode() - u'0');
    return here;
}

/// Of all words only "inf" and "nan" are numbers, in letters of either case.
bool isOtherWord(QStringView span) {
    constexpr char16_t TO_LOWER = 0x20;
    if (!isLetter(span.front()))
        return false;
    const char16_t first = span.front().unicode() | TO_LOWER;
    const char16_t second = span.size() > 1 ? span[1].unicode() | TO_LOWER : u' ';
    return !(first == u'i' && second == u'n') && !(first == u'n' && second == u'a');
}

/// Converts what stands in digits, with a point and an exponent or without. Left to the toolkit are
/// all other forms, and what is zero or infinite, as it takes only some of it for a number.
bool convertUsual(QStringView span, double& number) {
    std::array<char, USUAL_LENGTH> text{};
    if (span.size() > USUAL_LENGTH)
        return false;
    const auto narrow = [](QChar c) { return c.unicode() < 0x80 ? c.toLatin1() : '?'; };
    const char* const end = std::transform(span.begin(), span.end(), text.begin(), narrow);
    const QChar first = span.front() == u'-' && span.size() > 1 ? span[1] : span.front();
    double value = 0;
    const bool isWhole = isDigit(first) && std::from_chars(text.data(), end, value).ptr == end;
    if (!isWhole || value == 0 || !std::isfinite(value))
        return false;
    number = value;
    return true;
}

} // namespace

const QChar* read_decimal(const QChar* here, const QChar* end, double& number) {
    const bool negative = here != end && *here == u'-';
    const QChar* const first = here + (negative ? 1 : 0);
    quint64 digits = 0;
    const QChar* const point = readDigits(first, end, digits);
    const QChar* last = point;
    if (point != end && *point == u'.')
        last = readDigits(point + 1, end, digits);
    const qsizetype fraction = last == point ? 0 : last - point - 1;
    if (point == first || last == point + 1 || point - first + fraction > EXACT_DIGITS)
        return nullptr;
    auto value = static_cast<double>(digits);
    if (fraction > 0)
        value /= POWERS[static_cast<std::size_t>(fraction)];
    number = negative ? -value : value;
    return last;
}

bool to_number(QStringView span, double& number) {
    assert(!span.isEmpty());
    if (isOtherWord(span))
        return false;
    double decimal = 0;
    if (read_decimal(span.begin(), span.end(), decimal) == span.end()) {
        number = decimal;
        return true;
    }
    if (convertUsual(span, number))
        return true;
    bool ok = false;
    const double converted = span.toDouble(&ok);
    if (ok)
        number = converted;
    return ok;
}

} // namespace json
