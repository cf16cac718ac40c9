#include "domain/domainlog.h"

#include "domain/domainnestreader.h"
#include "json/jsonparser.h"

#include <QScopeGuard>
#include <QThread>

#include <new>

namespace domain {

namespace {

// So many events take some milliseconds, far more than a thread that waits and is woken.
constexpr int PAYS_FROM = 20'000;

} // namespace

bool read_log(QIODevice& device, NestReader& reader) {
    reader.analyseBeside(QThread::idealThreadCount() > 1 ? PAYS_FROM : NestReader::NEVER);
    const auto end = qScopeGuard([&reader] { reader.analyseBeside(NestReader::NEVER); });
    const bool isWhole = json::Parser().parse(&device, &reader);
    try {
        reader.finish();
        return isWhole;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace domain
