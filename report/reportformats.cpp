#include "report/reportformats.h"

#include "report/reportcsvwriter.h"
#include "report/reporthtmlwriter.h"
#include "report/reportjsonwriter.h"
#include "report/reportpartial.h"
#include "report/reporttextwriter.h"

#include <algorithm>

namespace report {

namespace {

/// A page of so many is quick, and small enough to be mailed.
constexpr int PAGE_TOP = 10'000;

template <class W>
std::unique_ptr<Writer> newWriter(Output& output, const style& style) {
    return std::make_unique<W>(output, style);
}

} // namespace

const std::vector<output_format>& output_formats() {
    static const std::vector<output_format> formats{
        {QStringLiteral("text"), true, true, 0, true, newWriter<TextWriter>},
        {QStringLiteral("json"), false, true, 0, true, newWriter<JsonWriter>},
        {QStringLiteral("csv"), false, true, 0, false, newWriter<CsvWriter>},
        {QStringLiteral("html"), false, true, PAGE_TOP, true, newWriter<HtmlWriter>},
        {QStringLiteral("partial"), false, false, 0, true, newWriter<PartialWriter>},
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
