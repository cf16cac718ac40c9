#pragma once

#include "report/reportlog.h"
#include "report/reportoutput.h"

namespace report {

/// Writes reports in one format, log after log.
class Writer {
public:
    explicit Writer(Output& output)
        : mOutput(output) {}

    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    virtual ~Writer() = default;

    /// What stands before the first log.
    virtual void begin() {}

    virtual void write(const Log& log) = 0;

protected:
    Output& mOutput;
};

} // namespace report
