// Imports logs of Quillon's own.

#include "fuzz/fuzzimport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    import::LogReader reader;
    fuzz::require_log(reader, fuzz::text_of(data, size));
    return 0;
}
