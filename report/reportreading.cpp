#include "report/reportreading.h"

#include "report/reportmerger.h"
#include "report/reportoutput.h"
#include "report/reportpartial.h"
#include "report/reporttogether.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <new>

namespace report {

namespace {

using Take = std::function<void(Log& log)>;

/// Tells why a log could not be read, or what is wrong with it.
ExitStatus tell(const QString& path, const Log& log, const QString& reason) {
    if (!reason.isEmpty()) {
        complain(path, reason);
        return FAILED;
    }
    const QStringList warnings = warnings_of(log);
    for (const QString& warning : warnings)
        complain(path, QStringLiteral("warning: ") + warning);
    return warnings.isEmpty() ? ALL_REPORTED : UNSOUND;
}

ExitStatus readApart(const QStringList& paths, const Take& take) {
    ExitStatus status = ALL_REPORTED;
    for (const QString& path : paths) {
        Log log;
        const QString reason = reason_of([&] { return read_log(path, log); });
        const ExitStatus read = tell(path, log, reason);
        if (read != FAILED)
            take(log);
        status = worse(status, read);
    }
    return status;
}

ExitStatus readTogether(const QStringList& paths, const Take& take) {
    Log whole;
    Merger merger(whole);
    ExitStatus status = ALL_REPORTED;
    bool isAny = false;
    read_side_by_side(paths, [&](const QString& path, Log& log, const QString& reason) {
        const ExitStatus read = tell(path, log, reason);
        if (read != FAILED)
            merger.add(log);
        isAny = isAny || read != FAILED;
        status = worse(status, read);
    });
    merger.finish();
    if (isAny)
        take(whole);
    return status;
}

ExitStatus addPartials(const QString& path, Merger& merger) {
    const auto file = open_input(path);
    if (!file->isOpen()) {
        complain(path, file->errorString());
        return FAILED;
    }
    const QString fault = read_partials(*file, [&](Log& part) { merger.add(part); });
    if (fault.isEmpty())
        return ALL_REPORTED;
    complain(path, fault);
    return WRONG_USAGE;
}

ExitStatus readMerged(const QStringList& paths, const Take& take) {
    Log whole;
    Merger merger(whole);
    ExitStatus status = ALL_REPORTED;
    for (const QString& path : paths)
        status = worse(status, addPartials(path, merger));
    if (status != ALL_REPORTED)
        return status;
    merger.finish();
    take(whole);
    return tell(whole.path, whole, {});
}

} // namespace

ExitStatus worse(ExitStatus a, ExitStatus b) {
    constexpr ExitStatus WORST_FIRST[] = {FAILED, WRONG_USAGE, UNSOUND, ALL_REPORTED};
    return *std::find_if(std::begin(WORST_FIRST), std::end(WORST_FIRST),
                         [=](ExitStatus status) { return status == a || status == b; });
}

void complain(const QString& what, const QString& why) {
    Output(stderr) << "quillon-report: " << what << ": " << why << "\n";
}

QString reason_of(const std::function<QString()>& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return NO_MEMORY;
    }
}

ExitStatus read_logs(const QStringList& paths, Reading reading, const Take& take) {
    switch (reading) {
    case Reading::Together:
        return readTogether(paths, take);
    case Reading::Merged:
        return readMerged(paths, take);
    default:
        return readApart(paths, take);
    }
}

} // namespace report
