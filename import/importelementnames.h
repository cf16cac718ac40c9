#pragma once

#include "import/importnames.h"
#include "import/importnodetree.h"
#include "import/importrules.h"
#include "import/importwrittentexts.h"

#include <string>

namespace import {

/// Makes the keys of elements: by the best name that the element has, with that of the nearest
/// ancestor in front that has a test id, an accessible name or an id. What does nothing itself, an
/// icon for one, gives way to what it is part of, and what is within a field to the field. Nothing
/// that people wrote becomes part of a key: texts are taken from buttons, links, tabs, menu items,
/// options and headers alone, never from fields or what is in them, and names that repeat what was
/// written into a field are passed over, as are masked ones.
class ElementNames {
public:
    using Node = NodeTree::Node;

    /// None is owned, all outlive the names.
    ElementNames(const NodeTree& tree, WrittenTexts& written, const naming& naming)
        : mTree(tree)
        , mWritten(written)
        , mNaming(naming) {}

    /// Of a pressed node. The text is empty when there is nothing to name it by.
    chosen_name keyOf(Node pressed);

    /// Whether the node is a menu item or option, or in one.
    bool isChoice(Node pressed) const;

    /// Whether the node is a label, or in one.
    bool isInLabel(Node pressed) const;

    /// The part of a key that stands for the option of a list by its value or label, as `cleaned`;
    /// empty when the list has no such option or is masked.
    std::string optionOf(Node list, std::string_view value) const;

    /// The list that an `option` is one of, `NONE` for other nodes.
    Node listOf(Node option) const;

    /// The value by which the recorder tells that the option was chosen.
    std::string valueOf(Node option) const;

private:
    Node elementFor(Node pressed) const;
    std::string_view roleOf(Node element) const;
    bool isInteractive(Node element) const;
    bool isMasked(Node element) const;
    bool isInMasked(Node element) const;
    bool hidesText(Node node) const;
    element_names namesOf(Node element);
    element_names namesByAttribute(Node element) const;
    std::string_view testIdOf(Node element) const;
    std::string_view labelOf(Node element) const;
    std::string_view usable(std::string_view name) const;
    std::string textOf(Node element) const;
    void writeText(Node element);
    void writePath(Node element);
    chosen_name lentBy(Node element) const;
    chosen_name nameAround(Node element) const;

    const NodeTree& mTree;
    WrittenTexts& mWritten;
    const naming& mNaming;
    std::string mText; // of the element at hand
    std::string mPath;
};

} // namespace import
