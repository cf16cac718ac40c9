#include "domain/domainfingerprint.h"

#include <QRandomGenerator>

namespace domain::fingerprint {

const quint64 BASE = QRandomGenerator::system()->generate64() % (PRIME / 2) + PRIME / 4;

} // namespace domain::fingerprint
