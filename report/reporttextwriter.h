#pragma once

#include "report/reportwriter.h"

#include <QString>

namespace report {

/// A report to be read: the totals, then the keys that have patterns, highest rank first, each with
/// its patterns, most frequent first. Lines keep within 100 characters and long lists are cut,
/// saying how many rows are left out, unless everything is asked for.
class TextWriter : public Writer {
public:
    TextWriter(Output& output, bool everything);

    void write(const Findings& findings) override;

private:
    void writeTotals(const Findings& findings);
    void writeKey(const Findings& findings, const key_findings& key);
    void writePattern(const Findings& findings, const domain::Pattern& pattern);
    QString fitted(const QString& text, int columns) const;
    QString sequenceText(const Findings& findings, const domain::Pattern& pattern,
                         int columns) const;

    const bool mEverything;
};

} // namespace report
