#include "import/importtext.h"

#include <QDateTime>
#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace import {

namespace {

constexpr int LONGEST_PART = 60; // characters
constexpr int SHORTEST_DATE = 8; // "20240131"

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

/// Whether a text can be a part of a key as it stands.
bool isClean(std::string_view text) {
    bool blank = false;
    for (const char c : text) {
        if (!isPlain(c) || c == '"' || c == ':' || c == '\\' || (c == ' ' && blank))
            return false;
        blank = c == ' ';
    }
    return text.size() <= LONGEST_PART;
}

void appendPlain(std::string& key, std::string_view text) {
    int left = LONGEST_PART;
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

} // namespace

void append_part(std::string& key, std::string_view text) {
    text = trimmed(text);
    if (isClean(text)) {
        key += text;
        return;
    }
    // Characters of four bytes each, and room for blanks that fall together.
    const std::string_view seen = text.substr(0, 64 * LONGEST_PART);
    if (std::all_of(seen.begin(), seen.end(), isPlain))
        appendPlain(key, seen);
    else
        appendDecoded(key, seen);
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
