// Imports scripts that browsers recorded, of both kinds.

#include "fuzz/fuzzimport.h"
#include "import/importscriptreader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using Kind = import::ScriptReader::Kind;
    const import::Rules rules;
    for (const Kind kind : {Kind::Recorder, Kind::Side}) {
        import::ScriptReader reader(kind, rules, true);
        fuzz::require_log(reader, fuzz::text_of(data, size), {true, true});
    }
    return 0;
}
