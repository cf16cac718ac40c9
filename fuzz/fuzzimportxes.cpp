// Imports logs of processes (XES).

#include "fuzz/fuzzimport.h"
#include "import/importxesreader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    import::table table;
    table.x = QStringLiteral("x");
    table.y = QStringLiteral("y");
    import::XesReader reader(table, QStringLiteral("complete"));
    fuzz::require_log(reader, fuzz::text_of(data, size), {true, true});
    return 0;
}
