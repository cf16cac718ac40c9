#pragma once

#include "report/reportwriter.h"

namespace report {

/// Comma-separated values after RFC 4180: a header line, then a row per pattern.
class CsvWriter : public Writer {
public:
    using Writer::Writer;
    void begin() override;
    void write(const Findings& findings) override;
    void compare(const Comparison& comparison) override;

private:
    QString field(QString text) const;
    void writeFigures(const Findings& findings, const found_pattern& found);
};

} // namespace report
