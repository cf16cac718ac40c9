#pragma once

#include "import/importcollector.h"
#include "import/importelementnames.h"
#include "import/importeventstore.h"
#include "import/importnodetree.h"
#include "import/importrrwebevent.h"

#include <string>
#include <string_view>
#include <vector>

namespace import {

/// The events of one tab of a browser on their way into a recording: its page, and what was pressed
/// on it.
///
/// A press of the mouse is told three times, as its beginning, end and click, a tap once more, as
/// that of a mouse. Beginnings and ends are what counts. Where a recorder was told to leave
/// beginnings out, clicks do: those of a stream wait until it is clear whether it has any, at most
/// until there are a thousand.
class RrwebStream {
public:
    /// `name` tells the stream from others in `store`. What is referred to outlives the stream.
    RrwebStream(std::string name, const naming& naming, WrittenTexts& written, EventStore& store,
                Collector& into);

    /// False when the store cannot be written.
    bool add(const rrweb_event& event);

    /// Must follow the last event. False when the store cannot be written.
    bool finish();

    /// Whether anything of it came into the store.
    bool hasEvents() const { return mHasEvents; }

private:
    /// Whether the beginnings of presses are recorded.
    enum class Presses { Unknown, Begin, Click };

    /// An event that may be one.
    struct candidate {
        Gesture gesture = Gesture::Down;
        bool isClick = false;
        std::string_view missing; ///< Why it cannot become one.
        std::string key;
        Named named = Named::Path;
        double time = 0;
        std::optional<place> at;
    };

    void addIncrement(const rrweb_event& event);
    void addInteraction(const rrweb_event& event);
    void begin(const rrweb_event& event);
    void end(const rrweb_event& event);
    void click(const rrweb_event& event);
    void choose(const rrweb_event& event);
    bool isOfTap(const rrweb_event& event);
    bool isOfLabel(const rrweb_event& event);
    bool isOfChoice(const rrweb_event& event) const;
    candidate candidateFor(const rrweb_event& event, Gesture gesture);
    std::string_view missingPage(bool isEnd) const;
    void nameFor(candidate& made, NodeTree::Node pressed);
    candidate releaseFor(const rrweb_event& event);
    bool isUnderPressed(const rrweb_event& event) const;
    std::optional<place> placeOf(const rrweb_event& event, NodeTree::Node node);
    void take(const candidate& made);
    void settle();
    void write(const candidate& made);

    std::string mName;
    EventStore& mStore;
    Collector& mInto;
    NodeTree mTree;
    ElementNames mNames;
    bool mHasPage = false;
    place mScrolled;
    Presses mPresses = Presses::Unknown;
    std::vector<candidate> mWaiting;
    candidate mPressed;            // the press that began last
    std::int64_t mPressedId = -1;  // its node; -1 when it has ended
    std::int64_t mTappedId = -1;   // the node of the last tap, until a mouse pressed elsewhere
    double mTapped = 0;            // when
    bool mIsTapMouse = false;      // whether the mouse that follows a tap is down
    double mClicked = 0;           // when the last click was
    bool mClickedLabel = false;    // and whether on a label
    std::int64_t mChosenList = -1; // the list whose option was pressed last
    std::string mChosen;           // and its value
    std::int64_t mToldList = -1;   // the list that told a choice last
    double mTold = 0;              // when
    bool mHasEvents = false;
    bool mIsStored = true;
};

} // namespace import
