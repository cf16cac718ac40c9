#include "import/importrrwebreader.h"

#include "import/importbytes.h"
#include "import/importeventstore.h"
#include "import/importrrwebevents.h"
#include "import/importrrwebparser.h"
#include "import/importrrwebstream.h"
#include "import/importtextmap.h"
#include "import/importwrittentexts.h"

#include <deque>
#include <string>

namespace import {

namespace {

constexpr std::string_view PACKING = "v1";

/// Reads one file.
class Pass {
public:
    Pass(QIODevice& source, const naming& naming, Collector& into)
        : mNaming(naming)
        , mInto(into)
        , mBytes(source)
        , mEvents(mBytes)
        , mParser(naming) {}

    outcome run() {
        QString fault = readEvents();
        bool isStored = mIsStored;
        for (RrwebStream& stream : mStreams)
            isStored = stream.finish() && isStored;
        if (!(mStore.tell(mInto) && isStored) && fault.isEmpty())
            fault = QStringLiteral("the temporary file for its events cannot be used");
        for (const RrwebStream& stream : mStreams) {
            if (!stream.hasEvents())
                countEmpty();
        }
        return outcome_of(fault);
    }

private:
    QString readEvents() {
        while (mIsStored) {
            switch (mEvents.next()) {
            case RrwebEvents::Next::Event:
                take();
                break;
            case RrwebEvents::Next::Odd:
                mInto.report("no event");
                break;
            case RrwebEvents::Next::Unpacked:
                mInto.report("packed event that cannot be unpacked");
                break;
            case RrwebEvents::Next::TooLarge:
                mInto.report("event over 64 MB");
                break;
            case RrwebEvents::Next::Cut:
                return faultOr("the text ends within an event");
            case RrwebEvents::Next::Open:
                return faultOr("the text ends within a list of events");
            case RrwebEvents::Next::End:
                return mBytes.fault();
            }
        }
        return {};
    }

    QString faultOr(const char* cut) const {
        return mBytes.fault().isEmpty() ? QString::fromLatin1(cut) : mBytes.fault();
    }

    void take() {
        const rrweb_event* const event = mParser.parse(mEvents.data(), mEvents.size());
        if (!event)
            return mInto.report("broken event");
        if (mEvents.isPacked() && event->packing != PACKING)
            return mInto.report("packed event of another version");
        mIsStored = streamOf(*event).add(*event);
    }

    /// An event that says nothing of its window or session belongs to what wraps it.
    RrwebStream& streamOf(const rrweb_event& event) {
        const std::string_view name = !event.window.empty()    ? event.window
                                      : !event.session.empty() ? event.session
                                                               : mEvents.stream();
        auto known = mByName.find(name);
        if (known == mByName.end()) {
            mStreams.emplace_back(std::string(name), mNaming, mWritten, mStore, mInto);
            known = mByName.emplace(name, &mStreams.back()).first;
        }
        return *known->second;
    }

    void countEmpty() {
        mInto.beginRecording();
        mInto.endRecording();
    }

    const naming& mNaming;
    Collector& mInto;
    Bytes mBytes;
    RrwebEvents mEvents;
    RrwebParser mParser;
    WrittenTexts mWritten;
    EventStore mStore;
    std::deque<RrwebStream> mStreams;
    text_map<RrwebStream*> mByName;
    bool mIsStored = true;
};

} // namespace

outcome RrwebReader::read(QIODevice& source, Collector& into) {
    return Pass(source, mNaming, into).run();
}

} // namespace import
