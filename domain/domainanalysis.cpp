#include "domain/domainanalysis.h"

namespace domain {

void Analysis::on(Nest& /*nest*/, const Trace& /*trace*/) {}

} // namespace domain
