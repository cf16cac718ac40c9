#include "report/reportformats.h"

#include "report/reportcsvwriter.h"
#include "report/reportjsonwriter.h"
#include "report/reportpartial.h"
#include "report/reporttextwriter.h"

#include <algorithm>

namespace report {

namespace {

template <class W>
std::unique_ptr<Writer> newWriter(Output& output, const style& style) {
    return std::make_unique<W>(output, style);
}

} // namespace

const std::vector<output_format>& output_formats() {
    static const std::vector<output_format> formats{
        {QStringLiteral("text"), true, true, true, newWriter<TextWriter>},
        {QStringLiteral("json"), false, true, true, newWriter<JsonWriter>},
        {QStringLiteral("csv"), false, true, false, newWriter<CsvWriter>},
        {QStringLiteral("partial"), false, false, true, newWriter<PartialWriter>},
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
