#pragma once

#include "domain/domainanalysis.h"
#include "domain/domaincyclebuilderiterative.h"

namespace domain {

/// The program's analysis: attaches the repeated runs of a recording to its branches.
class Blackboard : public Analysis {
public:
    void on(Nest& nest, const Trace& trace) override;

    bool mayRunBeside() const override { return true; }

protected:
    CycleBuilderIterative& cycleBuilder() { return mCycleBuilder; }

private:
    CycleBuilderIterative mCycleBuilder;
};

} // namespace domain
