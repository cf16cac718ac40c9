#include "examples/recorder-desktop/desktopnaming.h"

#include "import/importtext.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace desktop {

namespace {

/// Behind each number its sort. c: a control, its name is a label. g: a group, too, which tells
/// apart what is in it. f: a field, its name is a label, and nothing within is told. p: told by its
/// role. l: rows that people collected, r: one of them. t: what they wrote or chose.
const char* const ROLES =
    "6tcanvas,7ccheck box,8cmenu item,10ccolumn,11tcombo box,16gdialog,18tdrawing,19gfile "
    "chooser,23pwindow,"
    "26ricon,29plabel,31llist,32rrow,33cmenu,34gmenu bar,35cmenu item,37ptab,39gpanel,"
    "40fpassword,43cbutton,44cradio button,45cmenu item,48cscroll bar,51cslider,52fspin box,"
    "53psplitter,54pstatus bar,55ltable,56rcell,57ccolumn,60tterminal,61ftext,62ctoggle,"
    "63gtool bar,65ltree,66ltree,79fentry,82pdocument,88plink,91rrow,92tsheet,93tslides,"
    "94tdocument,95ppage,98llist,99ggroup,110glandmark,129cbutton";

QHash<uint, QString> readRoles() {
    static const QRegularExpression one(QStringLiteral("(\\d+)([a-z ]+)"));
    QHash<uint, QString> roles;
    for (const auto& role : one.globalMatch(QString::fromLatin1(ROLES)))
        roles.insert(role.captured(1).toUInt(), role.captured(2));
    return roles;
}

/// The sort of a role, and behind it what it is called in keys.
QString sorted(uint role) {
    static const QHash<uint, QString> roles = readRoles();
    return roles.value(role, QStringLiteral("?unnamed"));
}

bool isOf(const element& of, QStringView sorts) {
    return sorts.contains(sorted(of.role).front());
}

/// GTK 4 has buttons in buttons.
bool isTwin(const element& inner, const element& around) {
    return inner.role == around.role && inner.name == around.name && isOf(inner, u"c") &&
           !is_menu_item(inner.role);
}

/// "*letter.odt (changed) - Writer" is that of the document "letter.odt".
QStringList titlesIn(const QStringList& windows) {
    static const QRegularExpression between(QStringLiteral(" [-\\x{2013}\\x{2014}] "));
    static const QRegularExpression marks(QStringLiteral("^[*\\x{2022}\\s]+| ?[(\\[*].*$"));
    QStringList titles;
    for (const QString& window : windows)
        titles += window.split(between).mid(0, window.count(between));
    titles.replaceInStrings(marks, QString());
    titles.removeAll(QString());
    return titles;
}

/// "button 2": the second of its parent's buttons.
std::string byRole(const element& of) {
    const QString word = sorted(of.role).mid(1);
    return (of.place == 0 ? word : QStringLiteral("%1 %2").arg(word).arg(of.place)).toStdString();
}

/// Without what people may have written: "Undo: Typing: ...", quotations, titles, names of files.
std::string tidy(QString name, const QStringList& titles, bool withContent) {
    static const QRegularExpression rest(QStringLiteral(
        "\\s?[:\\x{ff1a}](\\s.*)?$|[\"\\x{2018}\\x{201a}\\x{201c}-\\x{201e}\\x{ab}\\x{2039}].*$"));
    static const QRegularExpression twice(QStringLiteral("^(.+) \\1$")); // GTK 4
    static const QRegularExpression made(QStringLiteral("^(Gtk|Adw|Gdk)[A-Z]\\w+$|^view_\\d+$"));
    static const QRegularExpression file(
        QStringLiteral("\\w\\.[A-Za-z]\\w{0,4}\\b|^~?/.|[a-z]+://|\\S@\\S"));
    name = name.remove(rest).simplified().replace(twice, QStringLiteral("\\1"));
    bool isHidden = name.contains(made) || (!withContent && name.contains(file));
    for (const QString& title : titles)
        isHidden = isHidden || name.contains(title, Qt::CaseInsensitive);
    return isHidden ? std::string() : import::cleaned(name.toStdString());
}

/// The name of an element of which it is a label.
std::string shownName(const element& of, const QStringList& titles, bool withContent) {
    const bool isLabel = isOf(of, withContent ? u"cgfr" : u"cgf");
    return isLabel ? tidy(of.name, titles, withContent) : std::string();
}

bool isIn(const QList<element>& way, uint role) {
    return std::any_of(way.begin(), way.end(),
                       [role](const element& at) { return at.role == role; });
}

element_name::Kind kindOf(const QList<element>& way) {
    const element& last = way.last();
    if (last.role == Menu || last.opensMenu ||
        (is_menu_item(last.role) && way.size() > 1 && way[way.size() - 2].role == MenuBar))
        return element_name::Kind::Opener;
    return is_menu_item(last.role) ? element_name::Kind::Choice : element_name::Kind::Press;
}

} // namespace

QList<element> shortened(QList<element> way, bool withContent) {
    // A label or picture in a control is the control.
    for (qsizetype i = way.size() - 1; i > 0 && (way[i].role == Label || isOf(way[i], u"?g"));
         --i) {
        if (isOf(way[i - 1], u"cr") || (isOf(way[i], u"?") && i + 1 == way.size()))
            way.resize(i);
    }
    if (way.size() > 1 && isTwin(way.last(), way[way.size() - 2]))
        way.removeLast();
    for (qsizetype i = 0; i + 1 < way.size(); ++i) {
        const bool isHidden = isOf(way[i], u"l") && !withContent;
        if (isHidden && isOf(way.last(), u"c")) // a button in a row of a list
            way.remove(i + 1, way.size() - i - 2);
        else if (isHidden || isOf(way[i], u"ft"))
            way.resize(i + 1);
    }
    return way;
}

element_name name_of(QList<element> way, const QStringList& windows, const import::naming& rules,
                     bool withContent) {
    if (way.isEmpty())
        return {"unnamed"};
    element_name found{{}, {}, kindOf(way)};
    const QStringList titles = titlesIn(windows);
    const element last = way.takeLast();
    const bool isFolder = last.role == Toggle && isIn(way, FileChooser) && !withContent;
    const std::string shown = isFolder ? std::string() : shownName(last, titles, withContent);
    const std::string label = tidy(last.label, titles, withContent);
    const std::string id = last.id.toStdString();
    import::element_names names;
    import::name_from(names, import::Named::Aria) = shown;
    import::name_from(names, import::Named::Id) = id;
    import::name_from(names, import::Named::Title) = label;
    import::chosen_name own = import::choose_name(names, rules);
    if (own.text.empty())
        own.text = byRole(last);
    found.named = own.named;
    std::string previous;
    for (const element& around : way) {
        const std::string part = shownName(around, titles, withContent);
        if (!part.empty() && part != previous && part != own.text)
            found.key += part + ':';
        previous = part;
    }
    found.key += own.text;
    return found;
}

} // namespace desktop
