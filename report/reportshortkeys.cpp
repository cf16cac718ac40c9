#include "report/reportshortkeys.h"

#include <QStringBuilder>

#include <algorithm>

namespace report {

namespace {

constexpr QChar ELLIPSIS = u'…';
constexpr QChar SEPARATOR = u':';

bool isBeforeFromEnd(const QString& a, const QString& b) {
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

/// How many characters the ends of two texts have in common.
qsizetype commonEnd(const QString& a, const QString& b) {
    return std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first - a.rbegin();
}

/// Where the part begins that has the character at `at`, which may be its separator.
qsizetype partBegin(const QString& key, qsizetype at) {
    return at > 0 ? key.lastIndexOf(SEPARATOR, at - 1) + 1 : 0;
}

/// The end of a key, marked as such.
QString from(const QString& key, qsizetype begin) {
    return begin > 1 ? ELLIPSIS % QStringView(key).sliced(begin) : key;
}

QString withoutMiddle(const QString& text, int columns) {
    if (text.size() <= columns)
        return text;
    QStringView front = QStringView(text).first((columns - 1) / 2);
    QStringView back = QStringView(text).last(columns / 2);
    if (front.back().isHighSurrogate())
        front.chop(1);
    if (back.front().isLowSurrogate())
        back = back.sliced(1);
    return front % ELLIPSIS % back;
}

} // namespace

ShortKeys::ShortKeys(QStringList keys) {
    // The keys with the most in common at their ends are neighbours then.
    std::sort(keys.begin(), keys.end(), isBeforeFromEnd);
    qsizetype before = 0;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const QString& key = keys[i];
        const qsizetype behind = i + 1 < keys.size() ? commonEnd(key, keys[i + 1]) : 0;
        mBegins.insert(key, partBegin(key, key.size() - std::max(before, behind) - 1));
        before = behind;
    }
}

QString ShortKeys::shortest(const QString& key, int columns) const {
    return withoutMiddle(from(key, mBegins.value(key)), columns);
}

QString ShortKeys::longest(const QString& key, int columns) const {
    if (key.size() <= columns)
        return key;
    const qsizetype begin = key.indexOf(SEPARATOR, key.size() - columns) + 1;
    const bool fits = begin > 0 && begin <= mBegins.value(key);
    return fits ? from(key, begin) : shortest(key, columns);
}

QString end_of(const QString& text, int columns) {
    if (text.size() <= columns)
        return text;
    QStringView end = QStringView(text).last(columns - 1);
    if (end.front().isLowSurrogate())
        end = end.sliced(1);
    return ELLIPSIS % end;
}

QString beginning_of(const QString& text, int columns) {
    if (text.size() <= columns)
        return text;
    QStringView beginning = QStringView(text).first(columns - 1);
    if (beginning.back().isHighSurrogate())
        beginning.chop(1);
    return beginning % ELLIPSIS;
}

} // namespace report
