#include "import/importlogreader.h"

#include "import/importtext.h"
#include "json/jsonparser.h"
#include "json/jsonreader.h"

#include <array>
#include <string>

namespace import {

namespace {

// Positions of an event's elements.
constexpr int TIME_AT = 0;
constexpr int KEY_AT = 1;
constexpr int X_AT = 2;
constexpr int Y_AT = 3;

/// Follows the parser through a log.
class LogEvents : public json::Reader {
public:
    explicit LogEvents(Collector& into)
        : mInto(into) {}

    void startObject(json::Stack& stack, const QString& /*key*/) override {
        stack.push(this);
        mInto.beginRecording();
    }

    void endObject(json::Stack& /*stack*/) override { mInto.endRecording(); }

    void startArray(json::Stack& stack, const QString& key) override {
        stack.push(this);
        mGesture = gesture_called(key);
        mKey.clear();
        mEvent = {};
        mPlace = {};
    }

    void endArray(json::Stack& /*stack*/) override {
        if (mGesture)
            addEvent();
        mGesture.reset();
    }

    void jsonString(json::Stack& stack, const QString& /*key*/, const QString& value) override {
        if (mGesture && stack.arrayIndex() == KEY_AT)
            mKey = value.toStdString();
    }

    void jsonFloat(json::Stack& stack, const QString& /*key*/, double value) override {
        switch (stack.arrayIndex()) {
        case TIME_AT:
            mEvent.time = value;
            break;
        case X_AT:
            mPlace.x = value;
            mEvent.at = mPlace;
            break;
        case Y_AT:
            mPlace.y = value;
            mEvent.at = mPlace;
            break;
        default:
            break;
        }
    }

private:
    void addEvent() {
        mEvent.gesture = *mGesture;
        mEvent.key = mKey;
        mInto.add(mEvent);
    }

    Collector& mInto;
    std::optional<Gesture> mGesture;
    std::string mKey;
    event mEvent;
    place mPlace;
};

} // namespace

outcome LogReader::read(QIODevice& source, Collector& into) {
    LogEvents events(into);
    json::Parser parser;
    const bool complete = parser.parse(&source, &events);
    into.endRecording();
    return outcome_of(complete ? QString() : QStringLiteral("the log is malformed"));
}

} // namespace import
