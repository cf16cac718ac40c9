#pragma once

#include "import/importevent.h"

#include <QIODevice>

#include <string>

namespace import {

/// Writes one log for Quillon: an array of recordings. A recording comes into being with its first
/// event, so that none is empty. `finish` must be called to have a whole log.
class LogWriter {
public:
    /// `device` is open, not owned, and outlives the writer.
    explicit LogWriter(QIODevice& device);

    void add(const event& event);

    /// Ends the recording, if one is begun: the next event begins another.
    void endRecording();

    /// Ends the log. False when something of it could not be written; the device has the reason.
    bool finish();

private:
    void beginMember();
    void flush();

    QIODevice& mDevice;
    std::string mText;
    bool mInRecording = false;
    bool mHasRecordings = false;
    bool mIsWritten = true;
};

} // namespace import
