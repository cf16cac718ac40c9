#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What every fuzzer offers, to libFuzzer as to the main function beside this file: tries one input
/// and ends the process when it finds a fault. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, saying what does not hold, unless it does.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// Ends the process, showing both texts, unless they are the same.
inline void requireSame(const std::string& actual, const std::string& expected) {
    if (actual == expected)
        return;
    std::fprintf(stderr, "expected:\n%s\nactual:\n%s\n", expected.c_str(), actual.c_str());
    std::abort();
}

} // namespace fuzz
