#pragma once

#include "import/importrrwebevent.h"
#include "import/importwrittentexts.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace import {

/// The nodes of a page, as snapshots and mutations of it say. Holds any tree, however deep, in
/// memory that goes with its nodes; what mutations say of nodes that there are not, or that would
/// put a node within itself, changes nothing and is counted, as are nodes beyond five million.
class NodeTree {
public:
    /// A node by its place in memory; it stays so until it is removed.
    using Node = std::uint32_t;
    static constexpr Node NONE = 0;

    enum class Kind : std::uint8_t { Document, Element, Text, Other };

    /// `written` is told of what stands in fields; not owned, outlives the tree.
    explicit NodeTree(WrittenTexts& written);

    /// The page of a snapshot in the place of all there was. False when the event holds none.
    bool reset(const rrweb_event& snapshot);

    /// Removals first, then additions, which may come in any order, then texts and attributes.
    void change(const rrweb_event& mutation);

    /// What was written into the node called so, be it known or not; nothing when it is no field.
    void noteInput(std::int64_t id, std::string_view text);

    /// What mutations said in vain since the beginning.
    std::int64_t misfits() const { return mMisfits; }

    /// The node called so by the recorder; `NONE` for an unknown one.
    Node find(std::int64_t id) const;

    Node root() const { return mRoot; }

    std::int64_t id(Node node) const { return mNodes[node].id; }

    Node parent(Node node) const { return mNodes[node].parent; }

    Node firstChild(Node node) const { return mNodes[node].first; }

    /// The node that follows in the order of the text within `top`; `NONE` behind the last one.
    Node following(Node node, Node top) const;

    /// As `following`, without what is within `node`.
    Node behind(Node node, Node top) const;

    Kind kind(Node node) const { return mNodes[node].kind; }

    /// Whether the node is in the document of a frame.
    bool isInFrame(Node node) const;

    /// Whether people can write into it.
    bool isField(Node node) const { return mNodes[node].isField; }

    /// The outermost one that people can write into, of the node and all that it is in.
    Node fieldAround(Node node) const;

    /// Of an element, in lower case.
    std::string_view tag(Node node) const { return attribute(node, {}); }

    /// Its beginning; empty when the element has none.
    std::string_view attribute(Node node, std::string_view name) const;

    /// Those of an element; its tag is one without a name.
    std::vector<node_attribute> attributes(Node node) const;

    /// Of a text, its beginning.
    std::string_view text(Node node) const { return mNodes[node].facts; }

private:
    // 64 bytes; links are NONE where there is nothing.
    struct record {
        std::int32_t id = -1;
        Node parent = NONE;
        Node first = NONE;
        Node last = NONE;
        Node previous = NONE;
        Node next = NONE;
        Kind kind = Kind::Other;
        bool isField = false;
        std::string facts; // a text's, or the attributes of an element, one after the other
    };

    class Additions;

    void place(const rrweb_event& of, list_part nodes, Node parent, Node before);
    Node newNode(std::int64_t id);
    void setId(Node node, std::int64_t id);
    void fill(Node node, const rrweb_node& from, const rrweb_event& of);
    void setAttribute(Node node, std::string_view name, std::string_view value);
    void setText(Node node, std::string_view text);
    bool tellField(Node node) const;
    void updateField(Node node);
    bool isWithin(Node node, Node top) const;
    void attach(Node node, Node parent, Node before);
    void detach(Node node);
    void remove(Node node);
    void release(Node node);

    WrittenTexts& mWritten;
    std::int64_t mPage;
    std::vector<record> mNodes;
    std::vector<Node> mFree;
    std::vector<Node> mById;                         // of small ids
    std::unordered_map<std::int64_t, Node> mByLarge; // of those that would leave much room empty
    std::vector<Node> mPlaced;                       // what became of the nodes of an addition
    std::vector<char> mIsWritten;                    // which of these are in a field
    Node mRoot = NONE;
    std::int64_t mMisfits = 0;
};

} // namespace import
