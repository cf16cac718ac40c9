#include "report/reportformats.h"

#include "report/reportcsvwriter.h"
#include "report/reportjsonwriter.h"
#include "report/reporttextwriter.h"

#include <algorithm>

namespace report {

namespace {

template <class W>
std::unique_ptr<Writer> newWriter(Output& output, bool /*everything*/) {
    return std::make_unique<W>(output);
}

std::unique_ptr<Writer> newTextWriter(Output& output, bool everything) {
    return std::make_unique<TextWriter>(output, everything);
}

} // namespace

const std::vector<output_format>& output_formats() {
    static const std::vector<output_format> formats{
        {QStringLiteral("text"), true, newTextWriter},
        {QStringLiteral("json"), false, newWriter<JsonWriter>},
        {QStringLiteral("csv"), false, newWriter<CsvWriter>},
    };
    return formats;
}

const output_format* find_format(const QString& name) {
    const std::vector<output_format>& formats = output_formats();
    const auto found =
        std::find_if(formats.begin(), formats.end(),
                     [&](const output_format& format) { return format.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

} // namespace report
