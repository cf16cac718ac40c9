#include "domain/domainblackboard.h"

namespace domain {

void Blackboard::on(Nest& nest, const Trace& trace) {
    if (mCycleBuilder.begin(nest, trace))
        mCycleBuilder.run();
}

} // namespace domain
