#pragma once

#include "report/reportcomparison.h"
#include "report/reportfindings.h"
#include "report/reportoutput.h"

namespace report {

/// What is asked of a format besides what it reports.
struct style {
    bool everything = false;   ///< Long lists are not cut.
    bool cellsAreText = false; ///< A spreadsheet sees no formulae.
    bool loopsOnce = false;    ///< There are rows for loops that were found at several keys.
};

/// Writes reports in one format: `begin`, `write` for each log, `end`; or a single comparison.
class Writer {
public:
    Writer(Output& output, const style& style)
        : mOutput(output)
        , mStyle(style) {}

    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    virtual ~Writer() = default;

    /// What stands before the first log.
    virtual void begin() {}

    virtual void write(const Findings& findings) = 0;

    /// What stands behind the last log.
    virtual void end() {}

    /// Not called for a format that compares nothing.
    virtual void compare(const Comparison& /*comparison*/) {}

protected:
    Output& mOutput;
    const style mStyle;
};

} // namespace report
