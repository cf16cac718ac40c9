#pragma once

#include "report/reportfindings.h"
#include "report/reportoutput.h"

namespace report {

/// Writes reports in one format: `begin`, `write` for each log, `end`.
class Writer {
public:
    explicit Writer(Output& output)
        : mOutput(output) {}

    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    virtual ~Writer() = default;

    /// What stands before the first log.
    virtual void begin() {}

    virtual void write(const Findings& findings) = 0;

    /// What stands behind the last log.
    virtual void end() {}

protected:
    Output& mOutput;
};

} // namespace report
