#pragma once

#include "domain/domainnest.h"
#include "domain/domaintrace.h"

namespace domain {

/// A stage that examines each recording before its branches join the result. This base leaves
/// recordings as they are.
class Analysis {
public:
    Analysis() = default;
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;
    virtual ~Analysis() = default;

    /// Called at the end of every recording, on the thread that reads the log unless `mayRunBeside`
    /// allows another. `nest` holds the recording's branches, one for every index of `trace`, and
    /// may be given patterns and branches: all join the result at their index.
    virtual void on(Nest& nest, const Trace& trace);

    /// Whether another thread than the one that reads the log may call `on`, still one recording
    /// after the other. Such an analysis adds no branches, so that indices can be given ahead.
    virtual bool mayRunBeside() const { return false; }
};

} // namespace domain
