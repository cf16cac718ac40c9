// Imports recordings of web pages.

#include "fuzz/fuzzimport.h"
#include "import/importrrwebreader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const import::Rules rules;
    import::RrwebReader reader(rules.naming());
    fuzz::require_log(reader, fuzz::text_of(data, size));
    return 0;
}
