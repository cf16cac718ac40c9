#include "report/reportforeign.h"

#include <QStringDecoder>

#include <algorithm>

namespace report {

namespace {

struct sample {
    QByteArrayView bytes;
    QString text; ///< Without blanks at its ends.
};

bool isGzip(const sample& s) {
    return s.bytes.startsWith("\x1f\x8b");
}

bool isZip(const sample& s) {
    return s.bytes.startsWith("PK\x03\x04");
}

bool isTrace(const sample& s) {
    return isZip(s) && (s.bytes.contains("trace.trace") || s.bytes.contains("trace.network"));
}

/// Every other byte of Latin letters is a NUL.
bool isBareUtf16(const sample& s) {
    constexpr qsizetype LOOKED_AT = 16;
    const QByteArrayView bytes = s.bytes.first(std::min(s.bytes.size(), LOOKED_AT));
    if (bytes.size() < 4)
        return false;
    const bool highFirst = bytes[0] == '\0';
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if ((bytes[i] == '\0') != ((i % 2 == 0) == highFirst))
            return false;
    }
    return true;
}

bool isXml(const sample& s) {
    const QChar second = s.text.size() > 1 ? s.text[1] : QChar();
    return s.text.startsWith(u'<') && (second.isLetter() || second == u'?' || second == u'!');
}

bool isRrweb(const sample& s) {
    const auto has = [&](const char16_t* name) { return s.text.contains(QStringView(name)); };
    return (s.text.startsWith(u'[') || s.text.startsWith(u'{')) && has(u"\"type\"") &&
           has(u"\"data\"") && (has(u"\"timestamp\"") || has(u"\"childNodes\""));
}

bool isXes(const sample& s) {
    return isXml(s) && s.text.contains(QStringView(u"<log"));
}

/// Of the recorder in a browser's developer tools, or of a test editor.
bool isScript(const sample& s) {
    const auto has = [&](const char16_t* name) { return s.text.contains(QStringView(name)); };
    return s.text.startsWith(u'{') && ((has(u"\"steps\"") && has(u"\"selectors\"")) ||
                                       (has(u"\"tests\"") && has(u"\"commands\"")));
}

/// Two lines that are an object each, as far as their ends tell.
bool isJsonLines(const sample& s) {
    const qsizetype end = s.text.indexOf(u'\n');
    return s.text.startsWith(u'{') && end > 0 &&
           QStringView(s.text).first(end).trimmed().endsWith(u'}') &&
           QStringView(s.text).sliced(end).trimmed().startsWith(u'{');
}

/// How many separators a line has, without those in quotes and those of prose, which have a blank
/// behind them. Moves `text` on to the next line.
int separatorsOfLine(QStringView& text, QChar separator) {
    int separators = 0;
    bool quoted = false;
    while (!text.isEmpty() && (quoted || text.front() != u'\n')) {
        quoted ^= text.front() == u'"';
        const bool cell = !quoted && text.front() == separator;
        text = text.sliced(1);
        separators += cell && !text.startsWith(u' ') ? 1 : 0;
    }
    text = text.sliced(text.isEmpty() ? 0 : 1);
    return separators;
}

/// Two lines of as many cells.
bool isTable(const sample& s, QChar separator) {
    QStringView rest = s.text;
    const int separators = separatorsOfLine(rest, separator);
    return separators > 0 && separatorsOfLine(rest, separator) == separators;
}

bool isPlain(const sample& s) {
    return std::all_of(s.text.begin(), s.text.end(),
                       [](QChar c) { return c.isPrint() || c.isSpace(); });
}

bool isCsv(const sample& s) {
    return isPlain(s) && (isTable(s, u',') || isTable(s, u';') || isTable(s, u'\t'));
}

struct form {
    bool (*is)(const sample& s) = nullptr;
    const char* name = "";
    bool isImported = false; ///< Whether quillon-import reads it.
};

constexpr form FORMS[] = {
    {isGzip, "gzip"},
    {isTrace, "a zipped trace of Playwright", true},
    {isZip, "a zip archive"},
    {isBareUtf16, "UTF-16 without a byte order mark"},
    {isXes, "an XES log", true},
    {isXml, "XML"},
    {isRrweb, "a recording of rrweb", true},
    {isScript, "a script of user steps", true},
    {isJsonLines, "JSON lines", true},
    {isCsv, "CSV", true},
};

} // namespace

QString foreign_form(QByteArrayView beginning) {
    const auto encoding = QStringDecoder::encodingForData(beginning);
    QStringDecoder decoder(encoding.value_or(QStringDecoder::Utf8));
    const QString text = decoder(beginning);
    const sample s{beginning, text.trimmed()};
    const auto* found = std::find_if(std::begin(FORMS), std::end(FORMS),
                                     [&](const form& form) { return form.is(s); });
    if (found == std::end(FORMS))
        return {};
    const QString name = QString::fromUtf8(found->name);
    return found->isImported ? name + QStringLiteral("; quillon-import makes a log of it") : name;
}

} // namespace report
