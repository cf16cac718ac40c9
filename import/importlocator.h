#pragma once

#include "import/importnames.h"
#include "import/importwrittentexts.h"

#include <string>
#include <string_view>

namespace import {

/// What the locators of scripts say of one element: they find it by its names, so they hold them.
/// Several locators of the same element add up; the first to give a name wins.
///
/// Text is taken only from elements whose text is a label, such as buttons and links: that of
/// fields, and of elements nothing is known of, may have been typed by people.
class Locator {
public:
    /// Of the last element of a CSS selector: its tag, id and attributes.
    void addCss(std::string_view selector, const naming& naming);

    /// Of the last step of an XPath: its tag, and attributes that it is found by.
    void addXPath(std::string_view path, const naming& naming);

    /// An accessible name, and the role if it is known.
    void addAria(std::string_view name, std::string_view role);

    /// The attribute of an element.
    void addAttribute(std::string_view attribute, std::string_view value, const naming& naming);

    /// A name that people wrote for the element.
    void addTest(std::string_view name) { keep(Named::Test, name); }

    void addText(std::string_view text) { keep(Named::Text, text); }

    /// The text of a link.
    void addLinkText(std::string_view text);

    /// A locator of a kind that tells nothing but itself. What stands in quotes in it is left out.
    void addPath(std::string_view path);

    /// Takes any element's text for a label: for locators that people write.
    void trustText() { mTrustsText = true; }

    /// The element's name by the order of `naming`, without those that repeat a typed text.
    chosen_name choose(const naming& naming, WrittenTexts& typed) const;

    bool isSelect() const { return mTag == "select" || mRole == "combobox" || mRole == "listbox"; }

private:
    void keep(Named source, std::string_view name);
    bool hasLabelText() const;

    std::array<std::string, NAMED_BY.size()> mNames;
    std::string mTag;
    std::string mRole;
    bool mTrustsText = false;
};

} // namespace import
