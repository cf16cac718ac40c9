#pragma once

#include "domain/domainblackboard.h"
#include "domain/domainfigures.h"
#include "domain/domainfind.h"
#include "domain/domainrunnumbers.h"

#include <vector>

namespace domain {

/// The program's analysis for whoever asks how often and where as well: takes the figures of one
/// log, from an empty nest on. Throws `std::bad_alloc` while it is taken through the recordings.
class Survey : public Blackboard {
public:
    Survey();

    void on(Nest& nest, const Trace& trace) override;

    /// The figures of the log that was read into `nest`. Recordings without events, which no
    /// analysis sees, do not count for the numbers of places. Throws `std::bad_alloc`, as
    /// `in_nest_order` does.
    Figures figures(const Nest& nest) const;

private:
    struct seen_key : key_figures {
        int latest = 0;          ///< The recording that counted last.
        bool isHandedOn = false; ///< It hands the key on to the result.
    };

    void countKeys(const Nest& nest, const Trace& trace);
    void countFind(const find& find, int anchor);
    anchored_figures& patternOf(const find& find, int anchor);

    std::vector<find> mFinds; ///< Of one recording.
    int mRecordings = 0;
    std::vector<seen_key> mKeys;             ///< By branch index.
    std::vector<anchored_figures> mPatterns; ///< In the order of their first finds.
    RunNumbers mNumbers;                     ///< Their positions, by the runs' hashes.
};

} // namespace domain
