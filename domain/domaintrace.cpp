#include "domain/domaintrace.h"

namespace domain {

int Trace::at(int index) const {
    return index >= 0 && index < mIndices.size() ? mIndices[index] : -1;
}

Trace& Trace::operator=(const Trace& other) {
    if (&other != this)
        mIndices.setTo(other.mIndices);
    return *this;
}

} // namespace domain
