#pragma once

#include "import/importnames.h"

#include <QStringList>

#include <string>

namespace desktop {

/// Something on the accessibility bus: whose it is, and which.
struct accessible {
    QString service, path;

    bool operator==(const accessible&) const = default;

    explicit operator bool() const { return !service.isEmpty() && !path.endsWith(u"/null"); }
};

/// By their numbers: the names that the bus has for roles differ between its versions.
enum Role : uint {
    CheckItem = 8,
    FileChooser = 19,
    Label = 29,
    Menu = 33,
    MenuBar = 34,
    MenuItem = 35,
    Tab = 37,
    Tabs = 38,
    PopupMenu = 41,
    RadioItem = 45,
    Toggle = 62,
    Program = 75
};

inline bool is_menu_item(uint role) {
    return role == CheckItem || role == MenuItem || role == RadioItem;
}

/// What the bus tells of one element.
struct element {
    uint role = 0;
    QString name, id;
    QString label; ///< What stands beside it; of the last of a way alone, as what follows.
    int place = 0; ///< From 1, among its parent's children of that role; 0 for the only one.
    bool opensMenu = false; ///< Of an item of a menu.
    accessible self, parent;
};

struct element_name {
    enum class Kind { Press, Choice, Opener };

    std::string key; ///< Without the program.
    import::Named named = import::Named::Path;
    Kind kind = Kind::Press;
};

/// The way from a window to what lies under the pointer, without what no key tells: what is within
/// texts and fields and, but `withContent`, rows of lists.
QList<element> shortened(QList<element> way, bool withContent);

/// The key of the last of a way that was shortened: names of controls and of the groups around
/// them. What people wrote or collected is told by its role; titles of the program's `windows`,
/// values and texts get into no key, names of files only `withContent`.
element_name name_of(QList<element> way, const QStringList& windows, const import::naming& rules,
                     bool withContent);

} // namespace desktop
