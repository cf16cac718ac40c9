#include "import/importsummary.h"

#include <QStringList>

#include <algorithm>

namespace import {

namespace {

QString number(std::int64_t count) {
    return QString::number(count);
}

QString counted(std::int64_t count, const QString& one, const QString& many) {
    return number(count) + u' ' + (count == 1 ? one : many);
}

QString listed(const Tally& tally) {
    QStringList parts;
    for (const auto& [name, count] : tally.counts())
        parts.append(QStringLiteral("%1 %2").arg(number(count),
                                                 name.empty() ? QStringLiteral("(empty)")
                                                              : QString::fromStdString(name)));
    return parts.join(QStringLiteral(", "));
}

QString namedBy(const std::array<std::int64_t, NAMED_BY.size()>& named) {
    QStringList parts;
    for (std::size_t i = 0; i < named.size(); ++i) {
        if (named[i] > 0)
            parts.append(QStringLiteral("%1 %2").arg(
                number(named[i]), QString::fromLatin1(NAMED_BY[i].data(),
                                                      static_cast<qsizetype>(NAMED_BY[i].size()))));
    }
    return parts.join(QStringLiteral(", "));
}

QString allNamedBy(const KeyTable& keys) {
    std::array<std::int64_t, NAMED_BY.size()> all{};
    for (const key_entry& entry : keys.keys()) {
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] += entry.named[i];
    }
    return namedBy(all);
}

QString hits(const KeyTable& keys, const Rules& rules) {
    QString text;
    const std::vector<std::int64_t> hits = keys.hits();
    for (std::size_t i = 0; i < hits.size(); ++i)
        text += QStringLiteral("rule '%1': %2\n")
                    .arg(rules.lines()[static_cast<qsizetype>(i)],
                         hits[i] == 0
                             ? QStringLiteral("matched nothing")
                             : counted(hits[i], QStringLiteral("event"), QStringLiteral("events")));
    return text;
}

} // namespace

QString summary(const Collector& collector, const KeyTable& keys, const Rules& rules) {
    QString text =
        QStringLiteral("%1, %2, %3\n")
            .arg(counted(collector.recordings(), QStringLiteral("recording"),
                         QStringLiteral("recordings")),
                 counted(collector.events(), QStringLiteral("event"), QStringLiteral("events")),
                 counted(static_cast<std::int64_t>(keys.keys().size()), QStringLiteral("key"),
                         QStringLiteral("keys")));
    if (collector.emptyRecordings() > 0)
        text += QStringLiteral("without events: %1\n")
                    .arg(counted(collector.emptyRecordings(), QStringLiteral("recording"),
                                 QStringLiteral("recordings")));
    if (collector.events() > 0)
        text += QStringLiteral("named by: %1\n").arg(allNamedBy(keys));
    if (collector.skipped().total() > 0)
        text += QStringLiteral("skipped: %1\n").arg(listed(collector.skipped()));
    if (collector.reported().total() > 0)
        text += QStringLiteral("could not be used: %1\n").arg(listed(collector.reported()));
    return text + hits(keys, rules);
}

QString key_list(const KeyTable& keys) {
    std::vector<const key_entry*> entries;
    for (const key_entry& entry : keys.keys())
        entries.push_back(&entry);
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto* a, const auto* b) { return a->events > b->events; });
    QString text;
    for (const key_entry* entry : entries)
        text += QStringLiteral("%1  %2  (%3)\n")
                    .arg(entry->events, 8)
                    .arg(QString::fromStdString(entry->key), namedBy(entry->named));
    return text;
}

} // namespace import
