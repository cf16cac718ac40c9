#pragma once

#include "import/importcollector.h"
#include "import/importevent.h"
#include "import/importtexts.h"

#include <QTemporaryFile>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace import {

/// Events of many cases in any order, to be told case by case. Within a case they stay in the order
/// in which they were added, or go by their `order`, equal ones as they were added. Above 24 MB
/// events wait in a temporary file; keys and cases take memory for each that differs.
class EventStore {
public:
    /// `order` sorts the events of a case. False when the temporary file cannot be written.
    bool add(std::string_view recording, double order, const event& event);

    /// Tells all, recordings in the order of their first event. False when the temporary file
    /// cannot be read.
    bool tell(Collector& into);

private:
    struct stored {
        std::uint32_t recording;
        std::uint32_t key;
        double order;
        double time;
        place at;
        Gesture gesture;
        Named named;
        bool hasPlace;
    };

    class Run;

    static bool isBefore(const stored& a, const stored& b);
    bool spill();
    bool tellRuns(Collector& into);
    void tellOne(const stored& from, Collector& into);

    Texts mRecordings;
    Texts mKeys;
    std::vector<stored> mEvents;
    std::unique_ptr<QTemporaryFile> mFile;
    std::vector<qint64> mRuns; // where each begins in the file, in bytes
    std::int64_t mLast = -1;   // the recording told last
};

} // namespace import
