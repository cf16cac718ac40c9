// Imports tables. The bits of an input's first two bytes choose the options; what follows is the
// table, whose columns are called as below.

#include "fuzz/fuzzimport.h"
#include "fuzz/fuzzinput.h"
#include "import/importtablereader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int columns = input.byte();
    const int others = input.byte();
    const auto column = [&](int bit, const char* name) {
        return (columns & bit) != 0 ? QString::fromLatin1(name) : QString();
    };
    import::table table;
    table.key = {QStringLiteral("a"), QStringLiteral("b.c")};
    table.recording = column(1, "case");
    table.gesture = column(2, "g");
    table.map.set(QStringLiteral("u*=up,m=menu,s?=skip"));
    table.sort = column(4, "t");
    table.x = column(8, "x");
    table.y = column(8, "y");
    table.xy = column(16, "p");
    import::TableReader reader(table, (others & 1) != 0);
    const std::size_t used = std::min<std::size_t>(size, 2);
    fuzz::require_log(reader, fuzz::text_of(data + used, size - used),
                      {(others & 2) != 0, (others & 4) != 0});
    return 0;
}
