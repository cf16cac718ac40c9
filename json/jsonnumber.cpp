#include "json/jsonnumber.h"

#include <array>

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

/// Digits with at most one point between them; all else is left to the general conversion.
bool unsignedDecimal(QStringView span, double& number) {
    if (span.isEmpty() || span.size() > EXACT_DIGITS + 1 || !isDigit(span.front()) ||
        !isDigit(span.back()))
        return false;
    qint64 digits = 0;
    std::size_t fraction = 0;
    bool point = false;
    for (const QChar c : span) {
        if (isDigit(c)) {
            digits = digits * 10 + (c.unicode() - u'0');
            fraction += point;
        } else if (c == u'.' && !point)
            point = true;
        else
            return false;
    }
    if (span.size() - point > EXACT_DIGITS)
        return false;
    number = static_cast<double>(digits) / POWERS[fraction];
    return true;
}

bool plainDecimal(QStringView span, double& number) {
    if (!span.startsWith(u'-'))
        return unsignedDecimal(span, number);
    if (!unsignedDecimal(span.sliced(1), number))
        return false;
    number = -number;
    return true;
}

} // namespace

bool toNumber(QStringView span, double& number) {
    if (span.isEmpty()) // the most frequent case: flushes with nothing pending
        return false;
    if (plainDecimal(span, number))
        return true;
    bool ok = false;
    const double converted = span.toDouble(&ok);
    if (ok)
        number = converted;
    return ok;
}

} // namespace json
