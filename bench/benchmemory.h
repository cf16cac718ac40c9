#pragma once

#include <string>

namespace bench {

/// Loads the log at `path` as the program does and prints the peak memory of this process in kB:
/// what the measurements of memory start a process for. Returns an exit status.
int loadAndReport(const std::string& path);

/// The largest resident size of this process so far.
long peakKilobytes();

} // namespace bench
