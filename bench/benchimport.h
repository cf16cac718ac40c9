#pragma once

namespace bench {

/// Imports as the command line in `arguments` asks, from its name on, and prints the peak memory of
/// this process in kB: what the measurements of memory start a process for. Returns an exit status.
int importAndReport(int count, char** arguments);

} // namespace bench
