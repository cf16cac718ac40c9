#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace import {

/// An attribute as an event gives it; removed ones have an empty value.
struct node_attribute {
    std::string_view name;
    std::string_view value;
};

/// Some elements of a list that stands beside, from `from` to before `to`.
struct list_part {
    std::uint32_t from = 0;
    std::uint32_t to = 0;
};

/// A node of a page as an event gives it; nodes of a tree follow each other with every parent
/// before its children, and those in their order.
struct rrweb_node {
    static constexpr std::int32_t TOP = -1;

    std::int32_t id = -1;
    std::int32_t parent = TOP; ///< Its place in the list of nodes.
    std::int32_t type = -1;    ///< 0 document, 2 element, 3 text.
    list_part attributes;
    std::string_view text; ///< The tag of an element.
};

/// A tree of nodes to be put below a parent, before `next` or else behind `previous`; without
/// either, at the end.
struct rrweb_addition {
    std::int64_t parent = -1;
    std::int64_t next = -1;
    std::int64_t previous = -1;
    list_part nodes;
};

struct rrweb_text {
    std::int64_t id = -1;
    std::string_view text;
};

struct rrweb_change {
    std::int64_t id = -1;
    list_part attributes;
};

/// One event of a recording: what of it is of use. Texts are views into the JSON text it was read
/// from, which was changed in place. Members that an event does not have are as here.
struct rrweb_event {
    // Of the event itself.
    int type = -1;
    double time = 0;
    bool isPacked = false; ///< Its data is a text, in a way of packing that is not known.
    std::string_view window;
    std::string_view session;
    std::string_view packing; ///< The version of the way in which the whole event was packed.

    // Of its data.
    int source = -1;
    int interaction = -1;
    std::int64_t id = -1;
    bool hasPlace = false;
    double x = 0;
    double y = 0;
    double left = 0;
    double top = 0;
    bool isChecked = false;
    std::string_view text;
    list_part snapshot;

    std::vector<rrweb_addition> additions;
    std::vector<std::int64_t> removals;
    std::vector<rrweb_text> texts;
    std::vector<rrweb_change> changes;

    // What the lists above have parts of.
    std::vector<rrweb_node> nodes;
    std::vector<node_attribute> attributes;

    /// As new, but for the room that the lists have taken.
    void clear();
};

} // namespace import
