#include "domain/domainlog.h"

#include "domain/domainnestreader.h"
#include "json/jsonparser.h"

namespace domain {

bool read_log(QIODevice& device, NestReader& reader) {
    return json::Parser().parse(&device, &reader);
}

} // namespace domain
