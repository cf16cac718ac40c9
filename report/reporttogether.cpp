#include "report/reporttogether.h"

#include <algorithm>
#include <deque>
#include <future>
#include <memory>
#include <new>
#include <thread>

namespace report {

namespace {

struct read_result {
    QString path;
    Log log;
    QString reason;
};

std::unique_ptr<read_result> readOne(const QString& path) {
    auto result = std::make_unique<read_result>();
    result->path = path;
    try {
        result->reason = read_log(path, result->log);
    } catch (const std::bad_alloc&) {
        result->reason = NO_MEMORY;
    }
    return result;
}

} // namespace

/// The next one is begun when one was taken: there are never more models than cores beside what
/// they are put into.
void read_side_by_side(const QStringList& paths, const TakeLog& take) {
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    std::deque<std::future<std::unique_ptr<read_result>>> reading;
    auto next = paths.begin();
    do {
        for (; reading.size() < cores && next != paths.end(); ++next)
            reading.push_back(std::async(std::launch::async, readOne, *next));
        const auto result = reading.front().get();
        reading.pop_front();
        take(result->path, result->log, result->reason);
    } while (!reading.empty() || next != paths.end());
}

} // namespace report
