#include "report/reportcsvwriter.h"

#include <QString>
#include <QStringList>

#include <algorithm>

namespace report {

namespace {

bool needsQuotes(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c == u'"' || c == u',' || c == u'\r' || c == u'\n'; });
}

/// `text` as a field, in quotes where it needs them.
QString field(const QString& text) {
    if (!needsQuotes(text))
        return text;
    QString doubled = text;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

QString joinedKeys(const Findings& findings, const domain::Pattern& pattern) {
    QStringList keys;
    for (int index : pattern.mSequence)
        keys.append(findings.keyAt(index));
    return keys.join(QStringLiteral(" > "));
}

} // namespace

void CsvWriter::begin() {
    mOutput << "log,key,count,length,sequence\r\n";
}

void CsvWriter::write(const Findings& findings) {
    for (const key_findings& key : findings.keys()) {
        for (const domain::Pattern* pattern : key.patterns)
            mOutput << field(findings.log().path) << "," << field(key.branch->mKey) << ","
                    << pattern->mCount << "," << pattern->mSequence.size() << ","
                    << field(joinedKeys(findings, *pattern)) << "\r\n";
    }
}

} // namespace report
