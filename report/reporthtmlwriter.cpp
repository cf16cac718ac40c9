#include "report/reporthtmlwriter.h"

#include "report/reportpage.h"
#include "report/reportpagekeys.h"
#include "report/reportsteps.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace report {

namespace {

template <class Things, class Measure>
QJsonArray column(const Things& things, const Measure& measure) {
    QJsonArray column;
    for (const auto& thing : things)
        column.append(measure(thing));
    return column;
}

QJsonArray numbers(const std::vector<int>& values) {
    return column(values, [](int value) { return value; });
}

QJsonArray firstPlaces(const found_pattern& found) {
    QJsonArray places;
    for (const domain::place& place : found.figures->places) {
        if (place.recording == 0)
            break;
        places.append(place.recording);
        places.append(place.event);
    }
    return places;
}

QJsonObject figuresOf(const Patterns& patterns, const std::vector<int>& first) {
    return {
        {QStringLiteral("first"), numbers(first)},
        {QStringLiteral("length"),
         column(patterns, [](const auto& of) { return of.pattern->mSequence.size(); })},
        {QStringLiteral("count"),
         column(patterns, [](const auto& of) { return of.pattern->mCount; })},
        {QStringLiteral("occurrences"),
         column(patterns, [](const auto& of) { return of.figures->occurrences; })},
        {QStringLiteral("recordings"),
         column(patterns, [](const auto& of) { return of.figures->recordings; })},
        {QStringLiteral("places"), column(patterns, firstPlaces)},
    };
}

QJsonObject reportOf(const Findings& findings, const Patterns& patterns) {
    const Log& log = findings.log();
    const Steps steps(patterns);
    QJsonObject report = page_keys(findings);
    report.insert(QStringLiteral("log"), log.path);
    report.insert(QStringLiteral("recordings"), log.recordings);
    report.insert(QStringLiteral("events"), log.events);
    report.insert(QStringLiteral("found"), findings.patternCount());
    report.insert(QStringLiteral("warnings"), QJsonArray::fromStringList(warnings_of(log)));
    report.insert(QStringLiteral("steps"), numbers(steps.all));
    report.insert(QStringLiteral("patterns"), figuresOf(patterns, steps.first));
    return report;
}

QJsonArray hitsOf(const Comparison& comparison, std::size_t group) {
    return column(comparison.patterns(),
                  [&](const compared_pattern& of) { return of.shares[group].hits; });
}

QJsonObject groupsOf(const Comparison& comparison) {
    const std::vector<compared_pattern>& patterns = comparison.patterns();
    return {
        {QStringLiteral("names"),
         column(comparison.groups(), [](const group& of) { return of.name; })},
        {QStringLiteral("recordings"),
         column(comparison.groups(), [](const group& of) { return of.recordings; })},
        {QStringLiteral("found"), QJsonArray{hitsOf(comparison, 0), hitsOf(comparison, 1)}},
        {QStringLiteral("low"), column(patterns, [](const auto& of) { return of.interval.low; })},
        {QStringLiteral("high"), column(patterns, [](const auto& of) { return of.interval.high; })},
        {QStringLiteral("q"), column(patterns, [](const auto& of) { return of.q; })},
    };
}

} // namespace

void HtmlWriter::write(const Findings& findings) {
    add(reportOf(findings, findings.patterns()));
}

void HtmlWriter::compare(const Comparison& comparison) {
    Patterns patterns;
    for (const compared_pattern& compared : comparison.patterns())
        patterns.push_back(compared.found);
    QJsonObject report = reportOf(comparison.findings(), patterns);
    const auto& groups = comparison.groups();
    report.insert(QStringLiteral("log"), groups[0].name + QStringLiteral(" and ") + groups[1].name);
    report.insert(QStringLiteral("warnings"), QJsonArray::fromStringList(comparison.warnings()));
    report.insert(QStringLiteral("groups"), groupsOf(comparison));
    add(report);
    end();
}

void HtmlWriter::add(const QJsonObject& report) {
    if (mHasBegun)
        mOutput << ",";
    else
        mOutput << explorer_page().before << R"({"version":")" QUILLON_VERSION R"(","reports":[)";
    mHasBegun = true;
    mOutput << page_data(QJsonDocument(report).toJson(QJsonDocument::Compact));
}

void HtmlWriter::end() {
    if (mHasBegun)
        mOutput << "]}" << explorer_page().behind;
}

} // namespace report
