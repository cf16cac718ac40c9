#include "import/importrrwebparser.h"

#include "import/importnames.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace import {

namespace {

/// What an object or array is, by where it stands.
enum class At : std::uint8_t {
    Ignored,
    Outside,
    Event,
    Data,
    Offset,
    Additions,
    Addition,
    Node,
    Attributes,
    Children,
    Removals,
    Removal,
    Texts,
    Text,
    Changes,
    Change,
};

enum class Field : std::uint8_t {
    None,
    Type,
    Time,
    Window,
    Session,
    Packing,
    Data,
    Source,
    Id,
    X,
    Y,
    IsChecked,
    Text,
    Node,
    Offset,
    Left,
    Top,
    Additions,
    Removals,
    Texts,
    Attributes,
    Parent,
    Next,
    Previous,
    Tag,
    Children,
};

struct named_field {
    At at;
    std::string_view name;
    Field field;
};

// The most frequent ones first.
constexpr std::array<named_field, 36> FIELDS{{
    {At::Node, "id", Field::Id},
    {At::Node, "type", Field::Type},
    {At::Node, "tagName", Field::Tag},
    {At::Node, "attributes", Field::Attributes},
    {At::Node, "childNodes", Field::Children},
    {At::Node, "textContent", Field::Text},
    {At::Event, "type", Field::Type},
    {At::Event, "data", Field::Data},
    {At::Event, "timestamp", Field::Time},
    {At::Event, "windowId", Field::Window},
    {At::Event, "sessionId", Field::Session},
    {At::Event, "v", Field::Packing},
    {At::Data, "source", Field::Source},
    {At::Data, "type", Field::Type},
    {At::Data, "id", Field::Id},
    {At::Data, "x", Field::X},
    {At::Data, "y", Field::Y},
    {At::Data, "isChecked", Field::IsChecked},
    {At::Data, "text", Field::Text},
    {At::Data, "node", Field::Node},
    {At::Data, "initialOffset", Field::Offset},
    {At::Data, "adds", Field::Additions},
    {At::Data, "removes", Field::Removals},
    {At::Data, "texts", Field::Texts},
    {At::Data, "attributes", Field::Attributes},
    {At::Offset, "left", Field::Left},
    {At::Offset, "top", Field::Top},
    {At::Addition, "parentId", Field::Parent},
    {At::Addition, "nextId", Field::Next},
    {At::Addition, "previousId", Field::Previous},
    {At::Addition, "node", Field::Node},
    {At::Removal, "id", Field::Id},
    {At::Text, "id", Field::Id},
    {At::Text, "value", Field::Text},
    {At::Change, "id", Field::Id},
    {At::Change, "attributes", Field::Attributes},
}};

Field fieldCalled(std::string_view name, At at) {
    for (const named_field& known : FIELDS) {
        if (known.at == at && known.name == name)
            return known.field;
    }
    return Field::None;
}

/// What an object is that is the value of a field; of elements of an array, `None`.
At objectAt(At outer, Field field) {
    switch (outer) {
    case At::Outside:
        return At::Event;
    case At::Event:
        return field == Field::Data ? At::Data : At::Ignored;
    case At::Data:
        return field == Field::Node ? At::Node : field == Field::Offset ? At::Offset : At::Ignored;
    case At::Additions:
        return At::Addition;
    case At::Addition:
        return field == Field::Node ? At::Node : At::Ignored;
    case At::Children:
        return At::Node;
    case At::Node:
    case At::Change:
        return field == Field::Attributes ? At::Attributes : At::Ignored;
    case At::Removals:
        return At::Removal;
    case At::Texts:
        return At::Text;
    case At::Changes:
        return At::Change;
    default:
        return At::Ignored;
    }
}

At arrayAt(At outer, Field field) {
    if (outer == At::Node)
        return field == Field::Children ? At::Children : At::Ignored;
    if (outer != At::Data)
        return At::Ignored;
    switch (field) {
    case Field::Additions:
        return At::Additions;
    case Field::Removals:
        return At::Removals;
    case Field::Texts:
        return At::Texts;
    case Field::Attributes:
        return At::Changes;
    default:
        return At::Ignored;
    }
}

/// -1, which nothing has, for what is no whole number or too large.
std::int64_t wholeOf(double number) {
    constexpr double LARGEST = std::numeric_limits<std::int32_t>::max();
    const bool isWhole = number >= 0 && number <= LARGEST && number == std::floor(number);
    return isWhole ? static_cast<std::int64_t>(number) : -1;
}

/// An event is too short for more.
template <typename List>
std::uint32_t sizeOf(const List& list) {
    return static_cast<std::uint32_t>(list.size());
}

constexpr std::size_t MOST_PARTS = 3'000'000;  // nodes, attributes and changes of an event
constexpr std::size_t MOST_LEVELS = 1'000'000; // of brackets

constexpr std::array<std::string_view, 12> READ{"id",    "class", "name",       "type",
                                                "value", "role",  "title",      "alt",
                                                "label", "scope", "aria-label", "placeholder"};

} // namespace

void rrweb_event::clear() {
    rrweb_event fresh;
    const auto keepRoom = [](auto& ours, auto& theirs) {
        theirs.clear();
        ours.swap(theirs);
    };
    keepRoom(fresh.additions, additions);
    keepRoom(fresh.removals, removals);
    keepRoom(fresh.texts, texts);
    keepRoom(fresh.changes, changes);
    keepRoom(fresh.nodes, nodes);
    keepRoom(fresh.attributes, attributes);
    *this = std::move(fresh);
}

/// Follows the JSON reader through an event; every member can stand anywhere among its neighbours.
class RrwebParser::Handler
    : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, RrwebParser::Handler> {
public:
    Handler(const naming& naming, rrweb_event& event)
        : mNaming(naming)
        , mEvent(event) {
        mLevels.push_back({At::Outside, 0});
    }

    /// Null: an attribute that was removed.
    bool Default() {
        if (at() == At::Attributes)
            addAttribute({});
        return true;
    }

    bool Bool(bool value) {
        if (at() == At::Data && mField == Field::IsChecked)
            mEvent.isChecked = value;
        else if (at() == At::Attributes && value)
            addAttribute("true");
        return true;
    }

    bool Int(int value) { return takeNumber(value); }

    bool Uint(unsigned value) { return takeNumber(value); }

    bool Int64(std::int64_t value) { return takeNumber(static_cast<double>(value)); }

    bool Uint64(std::uint64_t value) { return takeNumber(static_cast<double>(value)); }

    bool Double(double value) { return takeNumber(value); }

    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        takeText({text, length});
        return hasRoom();
    }

    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        const std::string_view name(text, length);
        if (at() == At::Attributes)
            mAttribute = isRead(name) ? name : std::string_view();
        else if (at() != At::Ignored)
            mField = fieldCalled(name, at());
        return true;
    }

    bool StartObject() { return enter(objectAt(at(), mField)); }

    bool EndObject(rapidjson::SizeType /*members*/) {
        leave();
        return true;
    }

    bool StartArray() { return enter(arrayAt(at(), mField)); }

    bool EndArray(rapidjson::SizeType /*elements*/) {
        leave();
        return true;
    }

private:
    struct level {
        At at;
        std::uint32_t node; // the node at hand
    };

    At at() const { return mLevels.back().at; }

    /// False when it would take too much memory.
    bool enter(At at) {
        std::uint32_t node = mLevels.back().node;
        switch (at) {
        case At::Node:
            node = addNode();
            break;
        case At::Addition:
            mEvent.additions.emplace_back();
            break;
        case At::Removal:
            mEvent.removals.push_back(-1);
            break;
        case At::Text:
            mEvent.texts.emplace_back();
            break;
        case At::Change:
            mEvent.changes.emplace_back();
            break;
        case At::Attributes:
            mAttribute = {};
            mAttributesFrom = sizeOf(mEvent.attributes);
            break;
        default:
            break;
        }
        mLevels.push_back({at, node});
        mField = Field::None;
        return hasRoom() && mLevels.size() <= MOST_LEVELS;
    }

    /// Events of nothing but nodes that say nothing would take many times their size.
    bool hasRoom() const {
        return mEvent.nodes.size() + mEvent.attributes.size() + mEvent.additions.size() +
                   mEvent.removals.size() + mEvent.texts.size() + mEvent.changes.size() <=
               MOST_PARTS;
    }

    std::uint32_t addNode() {
        const std::uint32_t place = sizeOf(mEvent.nodes);
        rrweb_node node;
        if (at() == At::Children)
            node.parent = static_cast<std::int32_t>(mLevels.back().node);
        mEvent.nodes.push_back(node);
        return place;
    }

    void leave() {
        const level left = mLevels.back();
        mLevels.pop_back();
        mField = Field::None;
        const bool isTop = left.at == At::Node && at() != At::Children;
        if (isTop && at() == At::Addition)
            mEvent.additions.back().nodes = {left.node, sizeOf(mEvent.nodes)};
        else if (isTop)
            mEvent.snapshot = {left.node, sizeOf(mEvent.nodes)};
        else if (left.at == At::Attributes)
            leaveAttributes(left);
    }

    void leaveAttributes(const level& left) {
        const list_part part{mAttributesFrom, sizeOf(mEvent.attributes)};
        if (at() == At::Change)
            mEvent.changes.back().attributes = part;
        else
            mEvent.nodes[left.node].attributes = part;
    }

    bool isRead(std::string_view name) const {
        return std::find(READ.begin(), READ.end(), name) != READ.end() ||
               name == "contenteditable" || is_test_id(name, mNaming);
    }

    void addAttribute(std::string_view value) {
        if (!mAttribute.empty())
            mEvent.attributes.push_back({mAttribute, value});
    }

    bool takeNumber(double value) {
        switch (at()) {
        case At::Event:
            takeOfEvent(value);
            break;
        case At::Data:
        case At::Offset:
            takeOfData(value);
            break;
        case At::Addition:
            takeOfAddition(wholeOf(value));
            break;
        case At::Node:
            takeOfNode(static_cast<std::int32_t>(wholeOf(value)));
            break;
        default:
            takeId(wholeOf(value));
            break;
        }
        return true;
    }

    void takeOfEvent(double value) {
        if (mField == Field::Type)
            mEvent.type = static_cast<int>(wholeOf(value));
        else if (mField == Field::Time && std::isfinite(value))
            mEvent.time = value;
    }

    void takeOfData(double value) {
        switch (mField) {
        case Field::Source:
            mEvent.source = static_cast<int>(wholeOf(value));
            break;
        case Field::Type:
            mEvent.interaction = static_cast<int>(wholeOf(value));
            break;
        case Field::Id:
            mEvent.id = wholeOf(value);
            break;
        case Field::X:
            mEvent.x = value;
            break;
        case Field::Y:
            mEvent.y = value;
            mEvent.hasPlace = true; // x comes with it
            break;
        case Field::Left:
            mEvent.left = value;
            break;
        case Field::Top:
            mEvent.top = value;
            break;
        default:
            break;
        }
    }

    void takeOfAddition(std::int64_t value) {
        rrweb_addition& addition = mEvent.additions.back();
        if (mField == Field::Parent)
            addition.parent = value;
        else if (mField == Field::Next)
            addition.next = value;
        else if (mField == Field::Previous)
            addition.previous = value;
    }

    void takeOfNode(std::int32_t value) {
        rrweb_node& node = mEvent.nodes[mLevels.back().node];
        if (mField == Field::Id)
            node.id = value;
        else if (mField == Field::Type)
            node.type = value;
    }

    void takeId(std::int64_t value) {
        if (mField != Field::Id)
            return;
        if (at() == At::Removal)
            mEvent.removals.back() = value;
        else if (at() == At::Text)
            mEvent.texts.back().id = value;
        else if (at() == At::Change)
            mEvent.changes.back().id = value;
    }

    void takeText(std::string_view text) {
        switch (at()) {
        case At::Attributes: // a bare one says that it holds
            addAttribute(text.empty() && mAttribute == "contenteditable" ? "true" : text);
            break;
        case At::Node:
            takeOfNode(text);
            break;
        case At::Text:
            if (mField == Field::Text)
                mEvent.texts.back().text = text;
            break;
        case At::Data:
            if (mField == Field::Text)
                mEvent.text = text;
            break;
        case At::Event:
            takeOfEvent(text);
            break;
        default:
            break;
        }
    }

    void takeOfNode(std::string_view text) {
        rrweb_node& node = mEvent.nodes[mLevels.back().node];
        if (mField == Field::Tag || mField == Field::Text)
            node.text = text;
    }

    void takeOfEvent(std::string_view text) {
        if (mField == Field::Data)
            mEvent.isPacked = true;
        else if (mField == Field::Window)
            mEvent.window = text;
        else if (mField == Field::Session)
            mEvent.session = text;
        else if (mField == Field::Packing)
            mEvent.packing = text;
    }

    const naming& mNaming;
    rrweb_event& mEvent;
    std::vector<level> mLevels;
    Field mField = Field::None;
    std::string_view mAttribute; // its name; empty when it is not read
    std::uint32_t mAttributesFrom = 0;
};

const rrweb_event* RrwebParser::parse(char* text, std::size_t size) {
    mEvent.clear();
    Handler handler(mNaming, mEvent);
    const char behind = text[size];
    text[size] = '\0';
    rapidjson::InsituStringStream stream(text);
    const bool isJson =
        !rapidjson::Reader()
             .Parse<rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag>(stream, handler)
             .IsError();
    text[size] = behind;
    return isJson ? &mEvent : nullptr;
}

} // namespace import
