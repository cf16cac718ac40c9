#pragma once

#include "report/reportwriter.h"

namespace report {

/// Comma-separated values after RFC 4180: a header line, then a row per pattern.
class CsvWriter : public Writer {
public:
    using Writer::Writer;
    void begin() override;
    void write(const Findings& findings) override;
};

} // namespace report
