#pragma once

#include <ctime>

/// Seconds of processor time, of the calling thread or of what else the clock is of.
inline double processor_time(clockid_t clock = CLOCK_THREAD_CPUTIME_ID) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}
