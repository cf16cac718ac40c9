#pragma once

#include "bench/benchplainlog.h"

#include <cstdint>
#include <string>

namespace bench {

// Each reads the whole file at `path` from disk and reports it to `log`; false when it cannot.

bool readWithRapidJson(const std::string& path, PlainLog& log);
bool readWithRapidJson(const std::string& path, IgnoredLog& log);
bool readWithNlohmann(const std::string& path, PlainLog& log);
bool readWithNlohmann(const std::string& path, IgnoredLog& log);

/// Builds each object in the array that the file at `path` is, and lets go of it. Their number; 0
/// when it cannot.
std::int64_t elementsWithNlohmann(const std::string& path);

} // namespace bench
