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

QString joinedKeys(const domain::Nest& nest, const domain::Pattern& pattern) {
    QStringList keys;
    for (int i = 0; i < pattern.mSequence.size(); ++i) {
        const domain::Branch* branch = nest.branchAt(pattern.mSequence[i]);
        keys.append(branch ? branch->mKey : QString());
    }
    return keys.join(QStringLiteral(" > "));
}

} // namespace

void CsvWriter::begin() {
    mOutput << "log,key,count,length,sequence\r\n";
}

void CsvWriter::write(const Log& log) {
    for (int i = 0; i < log.nest.size(); ++i) {
        const domain::Branch* branch = log.nest.branchAt(i);
        if (!branch)
            continue;
        for (const domain::Pattern* pattern : branch->mPatterns)
            mOutput << field(log.path) << "," << field(branch->mKey) << "," << pattern->mCount
                    << "," << pattern->mSequence.size() << ","
                    << field(joinedKeys(log.nest, *pattern)) << "\r\n";
    }
}

} // namespace report
