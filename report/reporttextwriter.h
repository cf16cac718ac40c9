#pragma once

#include "report/reportshortkeys.h"
#include "report/reportwriter.h"

#include <QString>

#include <vector>

namespace report {

/// A report to be read: the totals, then the keys that have patterns, highest rank first, each with
/// its patterns, most frequent first. Lines keep within 100 characters and long lists are cut,
/// saying how much is left out, unless everything is asked for. What stays of a sequence tells it
/// from the others of its key.
class TextWriter : public Writer {
public:
    using Writer::Writer;
    void write(const Findings& findings) override;
    void compare(const Comparison& comparison) override;

private:
    /// A key that is shown, and those of its patterns that are.
    struct shown_key {
        const key_findings* key;
        Patterns patterns;
    };

    std::vector<shown_key> choose(const Findings& findings,
                                  const std::vector<const key_findings*>& ranked) const;
    QStringList keysOf(const Findings& findings, const Patterns& shown) const;
    void writeTotals(const Findings& findings);
    void writeKey(const Findings& findings, const shown_key& shown, const ShortKeys& shortKeys);
    void writeCompared(const Comparison& comparison, const Patterns& shown);
    QString sequenceText(const Findings& findings, const domain::Pattern& pattern,
                         const Patterns& shown, const ShortKeys& shortKeys, int columns) const;
    QString foundAt(const Findings& findings, const found_pattern& found,
                    const ShortKeys& shortKeys) const;
};

} // namespace report
