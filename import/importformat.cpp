#include "import/importformat.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace import {

namespace {

using namespace std::string_view_literals;

struct named_format {
    const char* name;
    Format format;
};

constexpr std::array<named_format, 7> FORMATS{{{"table", Format::Csv},
                                               {"rrweb", Format::Rrweb},
                                               {"playwright", Format::Playwright},
                                               {"xes", Format::Xes},
                                               {"recorder", Format::Recorder},
                                               {"side", Format::Side},
                                               {"log", Format::Log}}};

std::string_view fromFirstLetter(std::string_view text) {
    constexpr std::string_view BLANKS = " \t\r\n\xef\xbb\xbf";
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text;
}

bool hasName(std::string_view text, const char* name) {
    return text.find('"' + std::string(name) + '"') != std::string_view::npos;
}

bool matches(std::string_view text, const QRegularExpression& form) {
    return form.match(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())))
        .hasMatch();
}

bool isLog(std::string_view text) {
    static const QRegularExpression EVENT(QStringLiteral("\"(down|up|menu)\"\\s*:\\s*\\["));
    return matches(text, EVENT);
}

/// An event: a number called type beside an object called data, with plain members around them.
/// Whatever wraps events, the first of them begins near.
bool holdsEvent(std::string_view text) {
    static const QString PLAIN =
        QStringLiteral("(?>\"\\w+\"\\s*:\\s*(?>\"[^\"\\\\]*\"|[^,{}\\[\\]\"]+),\\s*)*+");
    static const QRegularExpression TYPE_FIRST(
        QStringLiteral("\\{\\s*(?>\"(?!type\")\\w+\"\\s*:\\s*(?>\"[^\"\\\\]*\"|[^,{}\\[\\]\"]+),"
                       "\\s*)*+\"type\"\\s*:\\s*[0-6]\\s*,\\s*") +
        PLAIN + QStringLiteral("\"data\"\\s*:\\s*[{\"]"));
    static const QRegularExpression DATA_FIRST(
        QStringLiteral("\\{\\s*") + PLAIN +
        QStringLiteral("\"data\"\\s*:\\s*\\{\\s*(\"source\"\\s*:\\s*\\d|\"node\"\\s*:\\s*\\{|"
                       "\"href\"\\s*:\\s*\")"));
    return matches(text, TYPE_FIRST) || matches(text, DATA_FIRST);
}

/// Events that stand there as texts begin as zlib begins what it packs.
bool holdsPackedEvent(std::string_view text) {
    static const QRegularExpression PACKED(
        QStringLiteral("(^|[\\[\\n])\\s*\"x(\\\\u00(01|5e|9c|da)|[\\x{1}^\\x{9c}\\x{da}])"));
    return matches(text, PACKED);
}

bool isRrweb(std::string_view text) {
    return holdsEvent(text) || holdsPackedEvent(text);
}

std::optional<Format> tellJson(std::string_view text) {
    if (isLog(text))
        return Format::Log;
    if (isRrweb(text)) // first: pages hold any words
        return Format::Rrweb;
    if (hasName(text, "steps") && (hasName(text, "title") || hasName(text, "selectors")))
        return Format::Recorder;
    if (hasName(text, "tests") && hasName(text, "commands"))
        return Format::Side;
    return Format::JsonLines;
}

bool isBinary(std::string_view text) {
    return text.find('\0') != std::string_view::npos;
}

} // namespace

QString name_of(Format format) {
    if (format == Format::JsonLines)
        format = Format::Csv;
    for (const named_format& known : FORMATS) {
        if (known.format == format)
            return QString::fromLatin1(known.name);
    }
    return {};
}

std::optional<Format> format_named(const QString& name, std::string_view head) {
    for (const named_format& known : FORMATS) {
        if (name != QLatin1String(known.name))
            continue;
        const bool isJson =
            fromFirstLetter(head).starts_with('{') || fromFirstLetter(head).starts_with('[');
        return known.format == Format::Csv && isJson ? Format::JsonLines : known.format;
    }
    return std::nullopt;
}

QStringList format_names() {
    QStringList names;
    for (const named_format& known : FORMATS)
        names.append(QString::fromLatin1(known.name));
    return names;
}

std::optional<Format> tell_format(std::string_view head) {
    if (head.starts_with("PK\x03\x04"sv) || head.starts_with("PK\x05\x06"sv))
        return Format::Playwright;
    const std::string_view text = fromFirstLetter(head);
    if (text.starts_with('<'))
        return text.find("<log") != std::string_view::npos ? std::optional(Format::Xes)
                                                           : std::nullopt;
    if (text.starts_with('{') || text.starts_with('['))
        return tellJson(text);
    if (text.empty() || isBinary(text))
        return std::nullopt;
    if (text.starts_with('"') && holdsPackedEvent(text))
        return Format::Rrweb;
    return Format::Csv;
}

QString guess(std::string_view head) {
    if (head.starts_with("\x1f\x8b"))
        return QStringLiteral("it is packed by gzip; unpack it first");
    if (fromFirstLetter(head).empty())
        return QStringLiteral("it is empty");
    if (fromFirstLetter(head).starts_with('<'))
        return QStringLiteral("it is XML, but no XES log");
    return {};
}

} // namespace import
