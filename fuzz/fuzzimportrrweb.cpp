// Imports recordings of web pages, whole and in pieces: the log must be the same, be read by
// Quillon's parser, and hold no more events and no other keys than were counted.

#include "fuzz/fuzzdevice.h"
#include "fuzz/fuzztarget.h"
#include "import/importlogreader.h"
#include "import/importrrwebreader.h"

#include <QBuffer>

#include <algorithm>

namespace {

struct Imported {
    QByteArray log;
    std::string keys;
    std::int64_t events = 0;
    std::int64_t reported = 0;
    bool isWhole = true;
};

Imported imported(QIODevice& source, import::Reader& reader, const import::Rules& rules) {
    Imported result;
    QBuffer target(&result.log);
    target.open(QIODevice::WriteOnly);
    import::KeyTable keys(rules);
    import::LogWriter writer(target);
    import::Collector into(keys, writer);
    result.isWhole = reader.read(source, into).kind == import::outcome::Kind::Whole;
    fuzz::require(writer.finish(), "the log is written");
    for (const import::key_entry& entry : keys.keys())
        result.keys += entry.key + '\n';
    result.events = into.events();
    result.reported = into.reported().total();
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const import::Rules rules;
    import::RrwebReader reader(rules.naming());
    QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    QBuffer whole(&text);
    whole.open(QIODevice::ReadOnly);
    const Imported first = imported(whole, reader, rules);
    fuzz::require(first.keys.find('"') == std::string::npos, "keys hold no quotes");

    import::LogReader logs;
    QByteArray log = first.log;
    QBuffer written(&log);
    written.open(QIODevice::ReadOnly);
    const Imported again = imported(written, logs, rules);
    fuzz::require(again.isWhole && again.reported == 0, "a log is written that can be read");
    fuzz::require(again.events == first.events, "the log holds what was counted");
    fuzz::requireSame(again.keys, first.keys);
    return 0;
}
