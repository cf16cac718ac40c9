#pragma once

namespace bench {

/// Reads what `arguments` name behind the program, "--report" and "apart", "together" or "merged",
/// as quillon-report does, and prints the peak memory of this process in kB and the seconds that it
/// took by the clock: what the measurements start a process for. Returns an exit status.
int readAndReport(int count, char** arguments);

} // namespace bench
