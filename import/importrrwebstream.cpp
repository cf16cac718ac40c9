#include "import/importrrwebstream.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace import {

namespace {

using Node = NodeTree::Node;

// As the recorder numbers them.
constexpr int FULL_SNAPSHOT = 2;
constexpr int INCREMENT = 3;
constexpr int CUSTOM = 5;
constexpr int PLUGIN = 6;
constexpr int MUTATION = 0;
constexpr int INTERACTION = 2;
constexpr int SCROLL = 3;
constexpr int INPUT = 5;
constexpr int MOUSE_UP = 0;
constexpr int MOUSE_DOWN = 1;
constexpr int CLICK = 2;
constexpr int TOUCH_START = 7;
constexpr int TOUCH_END = 9;

constexpr std::size_t MOST_WAITING = 1000;
constexpr double TAP_TO_MOUSE = 1000; // milliseconds, at most
constexpr double STILL = 5;           // pixels that a hand moves while it presses
constexpr double LABEL_TO_FIELD = 10; // milliseconds, at most
constexpr double CHOICE_TO_CLICK = 100;

constexpr std::array<std::string_view, 17> SOURCES{
    "mutation",   "mouse move",   "mouse interaction", "scroll",       "window resize", "input",
    "touch move", "media",        "style change",      "canvas",       "font",          "console",
    "drag",       "style change", "selection",         "style change", "custom element"};
constexpr std::array<std::string_view, 11> INTERACTIONS{
    "mouse up", "mouse down",  "click",      "context menu", "double click", "focus",
    "blur",     "touch start", "touch move", "touch end",    "touch cancel"};

template <std::size_t SIZE>
std::string_view nameAt(const std::array<std::string_view, SIZE>& names, int number) {
    const auto place = static_cast<std::size_t>(number);
    return place < SIZE ? names[place] : "unknown kind";
}

} // namespace

RrwebStream::RrwebStream(std::string name, const naming& naming, WrittenTexts& written,
                         EventStore& store, Collector& into)
    : mName(std::move(name))
    , mStore(store)
    , mInto(into)
    , mTree(written)
    , mNames(mTree, written, naming) {}

bool RrwebStream::add(const rrweb_event& event) {
    const bool isPage = event.type == FULL_SNAPSHOT || event.type == INCREMENT;
    if (event.type < 0) {
        mInto.report("event without a type");
    } else if (isPage && event.isPacked) {
        mInto.report("packed event of another version");
    } else if (event.type == FULL_SNAPSHOT) {
        mHasPage = mTree.reset(event);
        mScrolled = {event.left, event.top};
    } else if (event.type == INCREMENT) {
        addIncrement(event);
    } else if (event.type == CUSTOM || event.type == PLUGIN) {
        mInto.skip("custom event");
    }
    return mIsStored;
}

void RrwebStream::addIncrement(const rrweb_event& event) {
    switch (event.source) {
    case MUTATION:
        return mTree.change(event);
    case INTERACTION:
        return addInteraction(event);
    case INPUT:
        return choose(event);
    case SCROLL:
        if (event.id >= 0 && mTree.find(event.id) == mTree.root())
            mScrolled = {event.x, event.y};
        break;
    default:
        break;
    }
    mInto.skip(nameAt(SOURCES, event.source));
}

void RrwebStream::addInteraction(const rrweb_event& event) {
    switch (event.interaction) {
    case MOUSE_DOWN:
    case TOUCH_START:
        return begin(event);
    case MOUSE_UP:
    case TOUCH_END:
        return end(event);
    case CLICK:
        return click(event);
    default:
        return mInto.skip(nameAt(INTERACTIONS, event.interaction));
    }
}

void RrwebStream::begin(const rrweb_event& event) {
    if (isOfTap(event))
        return mInto.skip("mouse after a tap");
    mPresses = Presses::Begin;
    settle();
    mPressed = candidateFor(event, Gesture::Down);
    mPressedId = event.id;
    take(mPressed);
}

/// Browsers let a press of the mouse follow a tap, for pages that know no taps.
bool RrwebStream::isOfTap(const rrweb_event& event) {
    const bool isMouse = event.interaction == MOUSE_DOWN && event.id >= 0;
    mIsTapMouse = isMouse && event.id == mTappedId && event.time - mTapped <= TAP_TO_MOUSE;
    mTappedId = -1;
    return mIsTapMouse;
}

void RrwebStream::end(const rrweb_event& event) {
    if (event.interaction == MOUSE_UP && mIsTapMouse) {
        mIsTapMouse = false;
        return mInto.skip("mouse after a tap");
    }
    if (event.interaction == TOUCH_END) {
        mTappedId = event.id;
        mTapped = event.time;
    }
    const candidate release = releaseFor(event);
    const bool isOfMenu = mPressedId >= 0 && mPressed.gesture == Gesture::Menu;
    mPressedId = -1;
    if (isOfMenu)
        return mInto.skip("end of a choice");
    take(release);
}

/// A press may change or remove what it was on: its end has the same name.
RrwebStream::candidate RrwebStream::releaseFor(const rrweb_event& event) {
    const Node node = mTree.find(event.id);
    const bool isOfPress =
        mPressedId >= 0 && mPressed.missing.empty() &&
        (event.id == mPressedId || node == NodeTree::NONE || isUnderPressed(event));
    if (!isOfPress)
        return candidateFor(event, Gesture::Up);
    candidate release = mPressed;
    release.gesture = Gesture::Up;
    release.time = event.time;
    if (release.at && event.hasPlace)
        release.at = place{event.x + mScrolled.x, event.y + mScrolled.y};
    return release;
}

/// Whether it is on what came into view there when the press removed what it was on.
bool RrwebStream::isUnderPressed(const rrweb_event& event) const {
    return mTree.find(mPressedId) == NodeTree::NONE && mPressed.at && event.hasPlace &&
           std::hypot(event.x + mScrolled.x - mPressed.at->x,
                      event.y + mScrolled.y - mPressed.at->y) <= STILL;
}

void RrwebStream::click(const rrweb_event& event) {
    if (mPresses == Presses::Begin)
        return mInto.skip("click");
    if (isOfLabel(event))
        return mInto.skip("click of a label on its field");
    if (isOfChoice(event))
        return mInto.skip("choice of a pressed option");
    candidate press = candidateFor(event, Gesture::Down);
    press.isClick = true;
    take(press);
}

/// A click on a label is followed by one on what it is the label of.
bool RrwebStream::isOfLabel(const rrweb_event& event) {
    const std::string_view tag = mTree.tag(mTree.find(event.id));
    const bool isField = tag == "input" || tag == "select" || tag == "textarea";
    const bool isOfLabel = mClickedLabel && isField && event.time - mClicked <= LABEL_TO_FIELD;
    mClicked = event.time;
    mClickedLabel = mNames.isInLabel(mTree.find(event.id)) && !isField;
    return isOfLabel;
}

/// Lists that are open tell what was chosen before the click that chose it.
bool RrwebStream::isOfChoice(const rrweb_event& event) const {
    const Node list = mNames.listOf(mTree.find(event.id));
    return list != NodeTree::NONE && mTree.id(list) == mToldList &&
           event.time - mTold <= CHOICE_TO_CLICK;
}

/// The value that a list of choices or a field has now.
void RrwebStream::choose(const rrweb_event& event) {
    const Node node = mTree.find(event.id);
    if (mTree.tag(node) != "select") {
        mTree.noteInput(event.id, event.isChecked ? std::string_view() : event.text);
        return mInto.skip("input");
    }
    const std::string option = mNames.optionOf(node, event.text);
    const bool isTold = event.id == mChosenList && event.text == mChosen;
    mChosenList = -1;
    if (isTold)
        return mInto.skip("choice of a pressed option");
    if (option.empty())
        return mInto.skip("choice that is no option of its list");
    mToldList = event.id;
    mTold = event.time;
    candidate choice = candidateFor(event, Gesture::Menu);
    choice.key += ':' + option;
    take(choice);
}

RrwebStream::candidate RrwebStream::candidateFor(const rrweb_event& event, Gesture gesture) {
    candidate made;
    made.gesture = gesture;
    made.time = event.time;
    const Node node = mTree.find(event.id);
    if (node == NodeTree::NONE) {
        made.missing = missingPage(gesture == Gesture::Up);
        return made;
    }
    nameFor(made, node);
    made.at = placeOf(event, node);
    return made;
}

std::string_view RrwebStream::missingPage(bool isEnd) const {
    if (mHasPage)
        return isEnd ? "end of a press on an unknown node" : "press on an unknown node";
    return isEnd ? "end of a press before the first snapshot" : "press before the first snapshot";
}

void RrwebStream::nameFor(candidate& made, Node pressed) {
    if (made.gesture == Gesture::Down) {
        mChosenList = -1;
        made.gesture = mNames.isChoice(pressed) ? Gesture::Menu : Gesture::Down;
    }
    const Node list = made.gesture == Gesture::Menu ? mNames.listOf(pressed) : NodeTree::NONE;
    const chosen_name key = mNames.keyOf(list == NodeTree::NONE ? pressed : list);
    made.key = key.text;
    made.named = key.named;
    if (list == NodeTree::NONE)
        return;
    mChosen = mNames.valueOf(pressed);
    mChosenList = mTree.id(list);
    const std::string option = mNames.optionOf(list, mChosen);
    if (!option.empty())
        made.key += ':' + option;
}

std::optional<place> RrwebStream::placeOf(const rrweb_event& event, Node node) {
    if (!event.hasPlace)
        return std::nullopt;
    if (!mTree.isInFrame(node))
        return place{event.x + mScrolled.x, event.y + mScrolled.y};
    mInto.skip("place in a frame");
    return std::nullopt;
}

void RrwebStream::take(const candidate& made) {
    if (mPresses != Presses::Unknown)
        return write(made);
    mWaiting.push_back(made);
    if (mWaiting.size() >= MOST_WAITING) {
        mPresses = Presses::Click;
        settle();
    }
}

/// Writes what has waited for it to be known what counts.
void RrwebStream::settle() {
    for (const candidate& made : mWaiting)
        write(made);
    mWaiting.clear();
}

void RrwebStream::write(const candidate& made) {
    const bool isCounted =
        mPresses == Presses::Begin ? !made.isClick : made.isClick || made.gesture != Gesture::Up;
    if (!isCounted)
        return mInto.skip(made.isClick ? "click" : "mouse up");
    if (!made.missing.empty())
        return mInto.report(made.missing);
    event event{made.gesture, made.key, made.named, made.time, made.at};
    mHasEvents = true;
    mIsStored = mStore.add(mName, 0, event) && mIsStored;
    if (!made.isClick || made.gesture == Gesture::Menu)
        return;
    event.gesture = Gesture::Up;
    mIsStored = mStore.add(mName, 0, event) && mIsStored;
}

bool RrwebStream::finish() {
    const bool hasClicks = std::any_of(mWaiting.begin(), mWaiting.end(),
                                       [](const candidate& made) { return made.isClick; });
    if (mPresses == Presses::Unknown)
        mPresses = hasClicks ? Presses::Click : Presses::Begin;
    settle();
    mInto.skip("mutation of an unknown node", mTree.misfits());
    return mIsStored;
}

} // namespace import
