#pragma once

#include "bench/benchplainlog.h"

#include <string>

namespace bench {

// Each reads the whole file at `path` from disk and reports it to `log`; false when it cannot.

bool readWithRapidJson(const std::string& path, PlainLog& log);
bool readWithRapidJson(const std::string& path, IgnoredLog& log);
bool readWithNlohmann(const std::string& path, PlainLog& log);
bool readWithNlohmann(const std::string& path, IgnoredLog& log);

} // namespace bench
