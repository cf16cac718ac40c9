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

/// What a spreadsheet would take for a formula.
bool isFormula(const QString& text) {
    return !text.isEmpty() && QStringView(u"=+-@\t\r").contains(text.front());
}

/// As in "1:4 1:7 2:3", recording and event of each.
QString placesOf(const domain::pattern_figures& figures) {
    QStringList places;
    for (const domain::place& place : figures.places) {
        if (place.recording > 0)
            places += QStringLiteral("%1:%2").arg(place.recording).arg(place.event);
    }
    return places.join(u' ');
}

} // namespace

/// `text` as a field, in quotes where it needs them.
QString CsvWriter::field(QString text) const {
    if (mStyle.cellsAreText && isFormula(text))
        text.prepend(u'\'');
    if (!needsQuotes(text))
        return text;
    return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

void CsvWriter::begin() {
    mOutput << "log,key,count,length,sequence,occurrences,recordings,places,key_events,"
               "key_recordings"
            << (mStyle.loopsOnce ? ",found_at\r\n" : "\r\n");
}

void CsvWriter::write(const Findings& findings) {
    for (const found_pattern& found : findings.patterns()) {
        const domain::Pattern& pattern = *found.pattern;
        mOutput << field(findings.log().path) << "," << field(findings.keyAt(pattern.mSequence[0]))
                << "," << pattern.mCount << "," << pattern.mSequence.size() << ","
                << field(joined_keys(findings, pattern));
        writeFigures(findings, found);
        mOutput << "\r\n";
    }
}

void CsvWriter::writeFigures(const Findings& findings, const found_pattern& found) {
    const key_findings& key =
        findings.keys()[static_cast<std::size_t>(found.pattern->mSequence[0])];
    mOutput << "," << found.figures->occurrences << "," << found.figures->recordings << ","
            << placesOf(*found.figures) << "," << key.figures->events << ","
            << key.figures->recordings;
    if (!mStyle.loopsOnce)
        return;
    QStringList keys;
    for (const int index : found.keys)
        keys += findings.keyAt(index);
    mOutput << "," << field(keys.join(QStringLiteral(" | ")));
}

void CsvWriter::compare(const Comparison& comparison) {
    const Findings& findings = comparison.findings();
    mOutput << "first,second,key,length,sequence,first_recordings,first_of,second_recordings,"
               "second_of,difference,low,high,p,q\r\n";
    for (const compared_pattern& compared : comparison.patterns()) {
        const domain::Pattern& pattern = *compared.found.pattern;
        mOutput << field(comparison.groups()[0].name) << "," << field(comparison.groups()[1].name)
                << "," << field(findings.keyAt(pattern.mSequence[0])) << ","
                << pattern.mSequence.size() << "," << field(joined_keys(findings, pattern));
        for (const statistics::share& share : compared.shares)
            mOutput << "," << share.hits << "," << share.of;
        for (const double value : {compared.difference(), compared.interval.low,
                                   compared.interval.high, compared.p, compared.q})
            mOutput << "," << QByteArray::number(value, 'g', 6);
        mOutput << "\r\n";
    }
}

} // namespace report
