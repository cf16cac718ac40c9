#include "import/importtext.h"

#include <QDateTime>
#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace import {

namespace {

constexpr std::size_t LONGEST_PART = 60; // characters
constexpr int SHORTEST_DATE = 8;         // "20240131"

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isPlain(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code >= 0x20 && code < 0x7f;
}

bool isForbidden(char32_t c) {
    return c == '"' || c == ':' || c == '\\' || c < 0x20 || (c >= 0x7f && c < 0xa0);
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

enum Trait : unsigned char { BLANK = 1, UNFIT = 2 }; // of a byte within a part of a key

constexpr std::array<unsigned char, 256> traits() {
    std::array<unsigned char, 256> table{};
    for (unsigned code = 0; code < table.size(); ++code)
        table[code] = code < 0x20 || code >= 0x7f ? UNFIT : 0;
    table['"'] = table[':'] = table['\\'] = UNFIT;
    table[' '] = BLANK;
    return table;
}

constexpr std::array<unsigned char, 256> TRAITS = traits();

/// Whether a text can be a part of a key as it stands.
bool isClean(std::string_view text) {
    if (text.size() > LONGEST_PART)
        return false;
    unsigned before = 0;
    for (const char c : text) {
        const unsigned trait = TRAITS[static_cast<unsigned char>(c)];
        if ((trait & (UNFIT | before)) != 0)
            return false;
        before = trait;
    }
    return true;
}

void appendPlain(std::string& key, std::string_view text) {
    std::size_t left = LONGEST_PART;
    bool blank = false;
    for (const char c : text) {
        if (left == 0)
            break;
        if (c == ' ' && blank)
            continue;
        blank = c == ' ';
        key += isForbidden(static_cast<unsigned char>(c)) ? '_' : c;
        --left;
    }
    if (blank)
        key.pop_back();
}

/// Any text, by way of the toolkit's tables of characters.
void appendDecoded(std::string& key, std::string_view text) {
    const QString all = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QList<uint> part = all.simplified().toUcs4();
    part.resize(std::min<qsizetype>(part.size(), LONGEST_PART));
    for (uint& c : part) {
        if (isForbidden(c))
            c = '_';
    }
    const QString shown =
        QString::fromUcs4(reinterpret_cast<const char32_t*>(part.constData()), part.size());
    key += shown.trimmed().toStdString();
}

void appendCleaned(std::string& key, std::string_view text) {
    // Characters of four bytes each, and room for blanks that fall together.
    const std::string_view seen = text.substr(0, 64 * LONGEST_PART);
    if (std::all_of(seen.begin(), seen.end(), isPlain))
        appendPlain(key, seen);
    else
        appendDecoded(key, seen);
}

/// The number that digits, perhaps with a point among them, are; empty for any other text and for
/// one of too many digits to be exact.
std::optional<double> plainNumber(std::string_view text) {
    constexpr std::size_t MOST_DIGITS = 15;
    static constexpr std::array<double, MOST_DIGITS + 1> POWERS{
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.empty() || text.size() > MOST_DIGITS)
        return std::nullopt;
    std::int64_t digits = 0;
    std::size_t behindPoint = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto digit = static_cast<unsigned>(text[i] - '0');
        if (digit <= 9)
            digits = 10 * digits + digit;
        else if (text[i] == '.' && i > 0 && behindPoint == 0)
            behindPoint = text.size() - 1 - i;
        else
            return std::nullopt;
    }
    return static_cast<double>(digits) / POWERS[behindPoint];
}

} // namespace

void append_part(std::string& key, std::string_view text) {
    text = trimmed(text);
    if (isClean(text))
        key += text;
    else
        appendCleaned(key, text);
}

std::string cleaned(std::string_view text) {
    std::string part;
    append_part(part, text);
    return part;
}

void append_whole(std::string& key, std::string_view text) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return isPlain(c) && c != '"'; })) {
        key += text;
        return;
    }
    QString all = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& c : all) {
        if (c == u'"' || c < u' ')
            c = u'_';
    }
    key += all.toStdString();
}

std::optional<double> to_number(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    if (const auto plain = plainNumber(text))
        return plain;
    double number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::optional<double> to_time(std::string_view text) {
    text = trimmed(text);
    if (const auto number = to_number(text))
        return number;
    if (text.size() < SHORTEST_DATE)
        return std::nullopt;
    const auto shown = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    QDateTime when = QDateTime::fromString(shown, Qt::ISODateWithMs);
    if (!when.isValid())
        return std::nullopt;
    if (when.timeSpec() == Qt::LocalTime)
        when.setTimeSpec(Qt::UTC);
    return static_cast<double>(when.toMSecsSinceEpoch());
}

} // namespace import
