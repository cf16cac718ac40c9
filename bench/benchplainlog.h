#pragma once

#include "bench/benchlogs.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bench {

/// What `domain::NestReader` does with a log, in plain containers of the standard library and UTF-8
/// throughout: the reader that other parsers feed. Knows the form of generated logs only, in which
/// recordings do not nest and events are complete.
class PlainLog {
public:
    void name(std::string_view name);
    void startObject();
    void endObject();
    void startArray();
    void endArray();
    void string(std::string_view value);
    void number(double value);

    Tally tally() const;

private:
    struct branch {
        std::string key;
        int gesture = 0; ///< None.
        float left = 0, top = 0, right = 0, bottom = 0;
    };

    static void merge(std::vector<branch>& branches, std::size_t index, const branch& other);
    std::size_t indexOf(const std::string& key);

    std::unordered_map<std::string, std::size_t> mKeys;
    std::vector<branch> mBranches;  ///< Of all recordings.
    std::vector<branch> mRecording; ///< At their final indices.
    std::vector<std::size_t> mTrace;
    branch mEvent;     ///< Being read.
    int mGesture = 0;  ///< By the name of the array to come.
    int mPosition = 0; ///< In the event's array.
    Tally mTally;
};

/// The reader that does nothing.
class IgnoredLog {
public:
    void name(std::string_view) {}

    void startObject() {}

    void endObject() {}

    void startArray() {}

    void endArray() {}

    void string(std::string_view) {}

    void number(double) {}
};

} // namespace bench
