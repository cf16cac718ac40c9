#include "examples/recorder-desktop/desktopnaming.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Kind = desktop::element_name::Kind;

/// "23 Notes > 43 Save": the roles and names from the window to what is under the pointer. Behind
/// an @ stands an id, behind a | a label beside it, behind a # its place among its like; ! opens a
/// menu.
QList<desktop::element> wayOf(const QString& text) {
    QList<desktop::element> way;
    for (const QString& part : text.split(QStringLiteral(" > "))) {
        desktop::element one;
        one.role = part.section(u' ', 0, 0).toUInt();
        QString rest = part.section(u' ', 1);
        one.opensMenu = rest.endsWith(u'!');
        rest.remove(u'!');
        one.place = rest.section(u'#', 1).toInt();
        one.label = rest.section(u'#', 0, 0).section(u'|', 1);
        one.id = rest.section(u'#', 0, 0).section(u'|', 0, 0).section(u'@', 1);
        one.name = rest.section(u'#', 0, 0).section(u'|', 0, 0).section(u'@', 0, 0);
        way.append(one);
    }
    return way;
}

struct row {
    const char* way;
    const char* key;
    const char* keyWithContent = nullptr; // the same when not given
    Kind kind = Kind::Press;
};

void PrintTo(const row& row, std::ostream* out) {
    *out << row.way;
}

class DesktopNaming : public testing::TestWithParam<row> {
protected:
    static desktop::element_name name(bool withContent) {
        const auto way = desktop::shortened(wayOf(QString::fromUtf8(GetParam().way)), withContent);
        const QStringList windows{QStringLiteral("*Miller (changed) - Writer"),
                                  QStringLiteral("Find")};
        return desktop::name_of(way, windows, import::naming(), withContent);
    }
};

TEST_P(DesktopNaming, TellsControlsByNameAndWhatPeopleWroteByRole) {
    const row& row = GetParam();
    EXPECT_EQ(name(false).key, row.key);
    EXPECT_EQ(name(true).key, row.keyWithContent ? row.keyWithContent : row.key);
    EXPECT_EQ(name(false).kind, row.kind);
}

const row ROWS[] = {
    {"23 Miller - Writer", "window"},
    {"23 W > 39  > 63 Format > 43 Bold", "Format:Bold"},
    {"23 W > 16 Find > 39 Options > 7 Match case", "Find:Options:Match case"},
    {"23 W > 43 Save > 29 Save", "Save"},
    {"23 W > 43 Save > 39  > 29 Save", "Save"},
    {"23 W > 43 Save > 116 icon", "Save"},
    {"23 W > 116 > 39 Box#2", "Box"},
    {"23 W > 43 GtkMenuButton#2 > 43 GtkMenuButton#3", "button 2"},
    {"23 W > 43 7 7", "7"},
    {"23 W > 43 @send", "send"},
    {"23 W > 43 Say \\ \xe2\x80\x9cgo\xe2\x80\x9d", "Say _"},
    {"23 W > 62 #4", "toggle 4"},
    {"23 W > 29 Balance of Dr. Jones#2", "label 2"},
    // What people wrote or chose.
    {"23 W > 79 |Name:", "Name"},
    {"23 W > 61 #2", "text 2"},
    {"23 W > 61  > 43 inside", "text"},
    {"23 W > 11 chosen value", "combo box"},
    {"23 W > 11 chosen value > 43 open", "combo box"},
    {"23 W > 11 chosen|Font:", "Font"},
    {"23 W > 94 letter > 73 a sentence", "document"},
    {"23 W > 95 page > 83 heading", "page"},
    {"23 W > 95 page > 88 link text#3", "link 3"},
    {"23 W > 38  > 37 a page's title#2", "tab 2"},
    {"23 W > 43 Delete MILLER", "button"},
    {"23 W > 33 Edit > 35 Undo: Typing: \xe2\x80\x9cword\xe2\x80\x9d", "Edit:Undo", nullptr,
     Kind::Choice},
    // Rows and files, on request.
    {"23 W > 31 #2 > 32 first row", "list 2", "first row"},
    {"23 W > 55  > 56 cell > 29 text", "table", "cell"},
    {"23 W > 31 Orders > 32 first row > 43 Remove", "Remove", "first row:Remove"},
    {"23 W > 55  > 57 Date", "Date"},
    {"23 W > 43 report.odt", "button", "report.odt"},
    {"23 W > 19 Open > 62 home#2", "Open:toggle 2", "Open:home"},
    {"23 W > 33 Recent > 35 /home/me#1", "Recent:menu item 1", "Recent:/home/me", Kind::Choice},
    // Menus.
    {"23 W > 34  > 33 File", "File", nullptr, Kind::Opener},
    {"23 W > 34  > 35 File", "File", nullptr, Kind::Opener},
    {"23 W > 34  > 33 File > 35 Color!", "File:Color", nullptr, Kind::Opener},
    {"23 W > 34  > 35 File > 41 File > 35 Save As...", "File:Save As...", nullptr, Kind::Choice},
    {"23 W > 34  > 33 Window > 45 Miller - Writer#3", "Window:menu item 3", nullptr, Kind::Choice},
};

INSTANTIATE_TEST_SUITE_P(Ways, DesktopNaming, testing::ValuesIn(ROWS));

TEST(DesktopNames, FollowTheOrderOfTheRulesAndAreTextForNoWay) {
    import::naming rules;
    rules.order = {import::Named::Id};
    const auto way = wayOf(QStringLiteral("23 W > 43 Save@save-12#2"));
    EXPECT_EQ(desktop::name_of(way, {}, rules, false).key, "save-#");
    EXPECT_EQ(desktop::name_of({}, {}, rules, false).key, "unnamed");
}

} // namespace
