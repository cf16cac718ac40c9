#include "json/jsonnumber.h"

#include <array>
#include <cassert>

namespace json {

namespace {

// Numbers of so many digits are whole in a double, and so are these powers: their quotient is
// rounded once, to the same double that a conversion of the text gives.
constexpr qsizetype EXACT_DIGITS = 15;
constexpr std::array<double, EXACT_DIGITS> POWERS{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                                                  1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

constexpr bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Reads digits from `here` on into `digits`; returns the place behind them.
const QChar* readDigits(const QChar* here, const QChar* end, quint64& digits) {
    for (; here != end && isDigit(*here); ++here)
        digits = digits * 10 + (here->unicode() - u'0');
    return here;
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
    double decimal = 0;
    if (read_decimal(span.begin(), span.end(), decimal) == span.end()) {
        number = decimal;
        return true;
    }
    bool ok = false;
    const double converted = span.toDouble(&ok);
    if (ok)
        number = converted;
    return ok;
}

} // namespace json
