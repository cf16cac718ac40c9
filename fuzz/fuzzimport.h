#pragma once

#include "fuzz/fuzztarget.h"
#include "import/importlogreader.h"

#include <QBuffer>

#include <set>
#include <string>

namespace fuzz {

/// What came of one import.
struct imported {
    QByteArray log;
    std::string keys; ///< Sorted, a line each.
    std::int64_t events = 0;
    std::int64_t reported = 0;
    bool isWhole = true;
};

inline imported import_by(import::Reader& reader, QByteArray text,
                          const import::collecting& how = {}) {
    imported result;
    QBuffer source(&text);
    source.open(QIODevice::ReadOnly);
    QBuffer target(&result.log);
    target.open(QIODevice::WriteOnly);
    const import::Rules rules;
    import::KeyTable keys(rules);
    import::LogWriter writer(target);
    import::Collector into(keys, writer);
    into.setCollecting(how);
    result.isWhole = reader.read(source, into).kind == import::outcome::Kind::Whole;
    into.endRecording();
    require(writer.finish(), "the log is written");
    std::set<std::string> sorted;
    for (const import::key_entry& entry : keys.keys())
        sorted.insert(entry.key + '\n');
    for (const std::string& key : sorted)
        result.keys += key;
    result.events = into.events();
    result.reported = into.reported().total();
    return result;
}

/// Imports `text`, whatever it is: what is written must be a log that holds the keys and events
/// that were counted, and that comes out the same when it is imported itself.
inline void require_log(import::Reader& reader, const QByteArray& text,
                        const import::collecting& how = {}) {
    const imported first = import_by(reader, text, how);
    require(first.keys.find('"') == std::string::npos, "keys hold no quotes");
    require(QString::fromUtf8(first.log).toUtf8() == first.log, "the log is UTF-8");
    import::LogReader logs;
    const imported again = import_by(logs, first.log);
    require(again.isWhole && again.reported == 0, "a log is written that can be read");
    require(again.events == first.events, "the log holds what was counted");
    requireSame(again.keys, first.keys);
    requireSame(again.log.toStdString(), first.log.toStdString());
}

inline QByteArray text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

} // namespace fuzz
