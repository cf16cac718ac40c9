#include "import/importnodetree.h"

#include <algorithm>
#include <array>

namespace import {

namespace {

using Node = NodeTree::Node;

constexpr std::size_t LONGEST_KEPT_TEXT = 255; // bytes, more than the longest part of a key
constexpr std::size_t SMALL_IDS = 1 << 16;
constexpr std::size_t MOST_NODES = 5'000'000; // of a page
constexpr int DOCUMENT = 0;
constexpr int ELEMENT = 2;
constexpr int TEXT = 3;

NodeTree::Kind kindOf(int type) {
    switch (type) {
    case DOCUMENT:
        return NodeTree::Kind::Document;
    case ELEMENT:
        return NodeTree::Kind::Element;
    case TEXT:
        return NodeTree::Kind::Text;
    default:
        return NodeTree::Kind::Other;
    }
}

/// The text up to a border of characters.
std::string_view beginningOf(std::string_view text) {
    if (text.size() <= LONGEST_KEPT_TEXT)
        return text;
    std::size_t end = LONGEST_KEPT_TEXT;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        --end;
    return text.substr(0, end);
}

// Attributes stand one after the other: a byte each for the lengths of name and value, name, value.

node_attribute attributeAt(std::string_view facts, std::size_t at) {
    const std::size_t name = static_cast<unsigned char>(facts[at]);
    const std::size_t value = static_cast<unsigned char>(facts[at + 1]);
    return {facts.substr(at + 2, name), facts.substr(at + 2 + name, value)};
}

std::size_t sizeOf(const node_attribute& attribute) {
    return 2 + attribute.name.size() + attribute.value.size();
}

/// Attributes without a value are as good as none. Of classes only those of the recorder are of
/// use.
void append(std::string& facts, std::string_view name, std::string_view value) {
    const bool isUseful = name != "class" || value.find("rr-") != std::string_view::npos;
    if (value.empty() || name.size() > LONGEST_KEPT_TEXT || !isUseful)
        return;
    value = beginningOf(value);
    facts += static_cast<char>(name.size());
    facts += static_cast<char>(value.size());
    facts += name;
    facts += value;
}

/// Inputs that nothing is written into.
constexpr std::array<std::string_view, 9> MUTE{"button", "submit", "reset", "image", "checkbox",
                                               "radio",  "range",  "color", "file"};

} // namespace

NodeTree::NodeTree(WrittenTexts& written)
    : mWritten(written)
    , mPage(written.newPage())
    , mNodes(1) {}

bool NodeTree::reset(const rrweb_event& snapshot) {
    mNodes.resize(1);
    mFree.clear();
    mById.clear();
    mByLarge.clear();
    mRoot = NONE;
    if (snapshot.snapshot.from == snapshot.snapshot.to)
        return false;
    mNodes.reserve(1 + snapshot.snapshot.to - snapshot.snapshot.from);
    place(snapshot, snapshot.snapshot, NONE, NONE);
    mRoot = mPlaced.front();
    return true;
}

/// The additions of a mutation. One waits while what it goes below or before is still to come; when
/// that never comes, it goes to the end of its parent, or nowhere.
class NodeTree::Additions {
public:
    Additions(NodeTree& tree, const rrweb_event& mutation)
        : mTree(tree)
        , mEvent(mutation)
        , mIsDone(mutation.additions.size())
        , mWaits(mutation.additions.size()) {}

    void apply() {
        for (std::size_t i = 0; i < mIsDone.size(); ++i)
            settle(i);
        if (mWaiting.empty())
            return;
        mIsLate = true;
        for (std::size_t i = 0; i < mIsDone.size(); ++i)
            settle(i);
        mTree.mMisfits += std::count(mIsDone.begin(), mIsDone.end(), false);
    }

private:
    /// The id of the node that the addition waits for; -1 when it need not wait.
    std::int64_t awaitedBy(std::size_t number) const {
        const rrweb_addition& addition = mEvent.additions[number];
        const Node parent = mTree.find(addition.parent);
        if (parent == NONE)
            return addition.parent;
        const Node next = mTree.find(addition.next);
        const bool hasNext = addition.next <= 0 || mTree.parent(next) == parent;
        return hasNext || mIsLate || mWaits[number] >= MOST_WAITS ? -1 : addition.next;
    }

    /// Puts it into its place, and those that have waited for one of its nodes.
    void settle(std::size_t number) {
        mReady.push_back(number);
        while (!mReady.empty()) {
            const std::size_t one = mReady.back();
            mReady.pop_back();
            if (!mIsDone[one])
                tryOne(one);
        }
    }

    void tryOne(std::size_t number) {
        const rrweb_addition& addition = mEvent.additions[number];
        const std::int64_t awaited = awaitedBy(number);
        if (awaited >= 0 || mTree.find(addition.parent) == NONE) {
            ++mWaits[number];
            mWaiting.emplace(awaited, number);
            return;
        }
        mIsDone[number] = true;
        mTree.place(mEvent, addition.nodes, mTree.find(addition.parent), nextOf(addition));
        if (!mWaiting.empty())
            wake();
    }

    Node nextOf(const rrweb_addition& addition) const {
        const Node next = mTree.find(addition.next);
        const Node previous = mTree.find(addition.previous);
        const Node parent = mTree.find(addition.parent);
        if (next == NONE && previous != NONE && mTree.parent(previous) == parent)
            return mTree.mNodes[previous].next;
        return next;
    }

    void wake() {
        for (const Node node : mTree.mPlaced) {
            if (mTree.id(node) < 0)
                continue;
            const auto [from, to] = mWaiting.equal_range(mTree.id(node));
            for (auto one = from; one != to; ++one)
                mReady.push_back(one->second);
            mWaiting.erase(from, to);
        }
    }

    NodeTree& mTree;
    const rrweb_event& mEvent;
    std::vector<bool> mIsDone;
    std::vector<int> mWaits; // how often each has waited
    std::vector<std::size_t> mReady;
    std::unordered_multimap<std::int64_t, std::size_t> mWaiting; // additions by awaited id
    bool mIsLate = false;

    /// For the parent, then for the next: moves to and fro would wake it without end.
    static constexpr int MOST_WAITS = 2;
};

void NodeTree::change(const rrweb_event& mutation) {
    for (const std::int64_t id : mutation.removals) {
        if (const Node node = find(id))
            remove(node);
        else
            ++mMisfits;
    }
    Additions(*this, mutation).apply();
    for (const rrweb_text& text : mutation.texts) {
        const Node node = find(text.id);
        if (node != NONE && kind(node) == Kind::Text)
            setText(node, text.text);
        else
            ++mMisfits;
    }
    for (const rrweb_change& change : mutation.changes) {
        const Node node = find(change.id);
        const bool fits = node != NONE && kind(node) == Kind::Element;
        mMisfits += fits ? 0 : 1;
        for (std::size_t i = change.attributes.from; fits && i < change.attributes.to; ++i)
            setAttribute(node, mutation.attributes[i].name, mutation.attributes[i].value);
    }
}

/// Puts a tree of nodes below `parent`. Nodes that there are already are moved, with what they
/// hold, and become what the event says.
void NodeTree::place(const rrweb_event& of, list_part nodes, Node parent, Node before) {
    mPlaced.assign(nodes.to - nodes.from, NONE);
    mIsWritten.assign(mPlaced.size(), 0);
    for (std::size_t i = 0; i < mPlaced.size(); ++i) {
        const rrweb_node& from = of.nodes[nodes.from + i];
        const bool isTop = from.parent == rrweb_node::TOP;
        const std::size_t above = isTop ? 0 : static_cast<std::uint32_t>(from.parent) - nodes.from;
        const Node under = isTop ? parent : mPlaced[above];
        const Node known = find(from.id);
        const bool hasPlace = under != NONE || (isTop && parent == NONE && mNodes.size() == 1);
        const bool hasRoom = known != NONE || !mFree.empty() || mNodes.size() < MOST_NODES;
        if (!hasPlace || !hasRoom || (known != NONE && isWithin(under, known))) {
            ++mMisfits;
            continue;
        }
        const Node node = known != NONE ? known : newNode(from.id);
        mPlaced[i] = node;
        fill(node, from, of);
        if (known != NONE)
            detach(node);
        if (under != NONE)
            attach(node, under, isTop ? before : NONE);
        const bool isAround =
            isTop ? fieldAround(node) != NONE : mIsWritten[above] || isField(node);
        mIsWritten[i] = isAround ? 1 : 0;
        if (isAround && mNodes[node].kind == Kind::Text)
            mWritten.note(mPage + from.id, from.text);
    }
}

Node NodeTree::newNode(std::int64_t id) {
    Node made = static_cast<Node>(mNodes.size());
    if (mFree.empty()) {
        mNodes.emplace_back();
    } else {
        made = mFree.back();
        mFree.pop_back();
    }
    setId(made, id);
    return made;
}

void NodeTree::setId(Node node, std::int64_t id) {
    mNodes[node].id = static_cast<std::int32_t>(id);
    if (id < 0)
        return;
    const auto place = static_cast<std::size_t>(id);
    if (place >= mById.size() && place < SMALL_IDS + 4 * mNodes.size())
        mById.resize(std::max(place + 1, 2 * mById.size()));
    if (place < mById.size())
        mById[place] = node;
    else
        mByLarge[id] = node;
}

Node NodeTree::find(std::int64_t id) const {
    if (id < 0)
        return NONE;
    const auto place = static_cast<std::size_t>(id);
    if (place < mById.size() && mById[place] != NONE)
        return mById[place];
    const auto known = mByLarge.find(id);
    return known == mByLarge.end() ? NONE : known->second;
}

void NodeTree::fill(Node node, const rrweb_node& from, const rrweb_event& of) {
    auto& filled = mNodes[node];
    filled.kind = kindOf(from.type);
    filled.isField = false;
    filled.facts.clear();
    if (filled.kind == Kind::Text)
        filled.facts = beginningOf(from.text);
    if (filled.kind != Kind::Element)
        return;
    append(filled.facts, {}, from.text.empty() ? "element" : from.text);
    for (char& c : filled.facts)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    for (std::size_t i = from.attributes.from; i < from.attributes.to; ++i)
        append(filled.facts, of.attributes[i].name, of.attributes[i].value);
    updateField(node);
}

void NodeTree::setAttribute(Node node, std::string_view name, std::string_view value) {
    std::string& facts = mNodes[node].facts;
    for (std::size_t at = 0; at < facts.size();) {
        const node_attribute known = attributeAt(facts, at);
        const std::size_t size = sizeOf(known);
        // What was written into an input is no label of the button that it becomes.
        if (known.name == name || (name == "type" && known.name == "value"))
            facts.erase(at, size);
        else
            at += size;
    }
    append(facts, name, value);
    updateField(node);
}

void NodeTree::setText(Node node, std::string_view text) {
    mNodes[node].facts = beginningOf(text);
    if (fieldAround(node) != NONE)
        mWritten.note(mPage + mNodes[node].id, text);
}

/// Must follow every change of attributes.
void NodeTree::updateField(Node node) {
    mNodes[node].isField = tellField(node);
    const std::string_view value = attribute(node, "value");
    if (!value.empty() && isField(node))
        mWritten.note(mPage + mNodes[node].id, value);
}

void NodeTree::noteInput(std::int64_t id, std::string_view text) {
    const Node node = find(id);
    if (node == NONE || fieldAround(node) != NONE)
        mWritten.note(mPage + id, text);
}

std::string_view NodeTree::attribute(Node node, std::string_view name) const {
    const std::string_view facts = mNodes[node].facts;
    for (std::size_t at = 0; kind(node) == Kind::Element && at < facts.size();) {
        const node_attribute known = attributeAt(facts, at);
        if (known.name == name)
            return known.value;
        at += sizeOf(known);
    }
    return {};
}

std::vector<node_attribute> NodeTree::attributes(Node node) const {
    std::vector<node_attribute> all;
    const std::string_view facts = mNodes[node].facts;
    for (std::size_t at = 0; kind(node) == Kind::Element && at < facts.size();
         at += sizeOf(all.back()))
        all.push_back(attributeAt(facts, at));
    return all;
}

bool NodeTree::tellField(Node node) const {
    const std::string_view name = tag(node);
    if (name == "input")
        return std::find(MUTE.begin(), MUTE.end(), attribute(node, "type")) == MUTE.end();
    const std::string_view role = attribute(node, "role");
    const std::string_view editable = attribute(node, "contenteditable");
    return name == "textarea" || role == "textbox" || role == "searchbox" ||
           (!editable.empty() && editable != "false" && editable != "inherit");
}

Node NodeTree::fieldAround(Node node) const {
    Node field = NONE;
    for (; node != NONE; node = parent(node))
        field = isField(node) ? node : field;
    return field;
}

bool NodeTree::isInFrame(Node node) const {
    for (; parent(node) != NONE; node = parent(node)) {
        if (kind(node) == Kind::Document)
            return true;
    }
    return false;
}

Node NodeTree::following(Node node, Node top) const {
    return firstChild(node) != NONE ? firstChild(node) : behind(node, top);
}

Node NodeTree::behind(Node node, Node top) const {
    while (node != top && mNodes[node].next == NONE)
        node = parent(node);
    return node == top ? NONE : mNodes[node].next;
}

bool NodeTree::isWithin(Node node, Node top) const {
    if (firstChild(top) == NONE)
        return node == top;
    while (node != NONE && node != top)
        node = parent(node);
    return node == top;
}

/// At the end of its siblings unless `before` is one of them.
void NodeTree::attach(Node node, Node parent, Node before) {
    if (before != NONE && mNodes[before].parent != parent)
        before = NONE;
    const Node previous = before != NONE ? mNodes[before].previous : mNodes[parent].last;
    mNodes[node].parent = parent;
    mNodes[node].previous = previous;
    mNodes[node].next = before;
    (previous != NONE ? mNodes[previous].next : mNodes[parent].first) = node;
    (before != NONE ? mNodes[before].previous : mNodes[parent].last) = node;
}

void NodeTree::detach(Node node) {
    auto& gone = mNodes[node];
    if (gone.parent == NONE)
        return;
    (gone.previous != NONE ? mNodes[gone.previous].next : mNodes[gone.parent].first) = gone.next;
    (gone.next != NONE ? mNodes[gone.next].previous : mNodes[gone.parent].last) = gone.previous;
    gone.parent = gone.previous = gone.next = NONE;
}

void NodeTree::remove(Node node) {
    detach(node);
    std::vector<Node> gone;
    const Node top = node;
    for (; node != NONE; node = following(node, top))
        gone.push_back(node);
    for (const Node one : gone)
        release(one);
}

void NodeTree::release(Node node) {
    const std::int64_t id = mNodes[node].id;
    if (id >= 0 && static_cast<std::size_t>(id) < mById.size())
        mById[static_cast<std::size_t>(id)] = NONE;
    mByLarge.erase(id);
    mRoot = node == mRoot ? NONE : mRoot;
    mNodes[node] = {};
    mFree.push_back(node);
}

} // namespace import
