#pragma once

#include "ui/views/uibarview.h"

#include <QAccessibleWidget>

#include <vector>

namespace ui {

/// A bar as assistive technology sees it: a tool bar, described by the labels it shows, with a
/// child for every zone in the order of the zones. A zone with an image is a button that can be
/// pressed as by a click while it is enabled; any other zone is a text.
///
/// Made by Qt when it is first asked for and gone with the bar; it owns its children. GUI thread
/// only.
class BarAccessible : public QAccessibleWidget {
public:
    explicit BarAccessible(BarView& bar);
    BarAccessible(const BarAccessible&) = delete;
    BarAccessible& operator=(const BarAccessible&) = delete;
    ~BarAccessible() override;

    /// Null once the bar's destruction has begun.
    BarView* bar() const;

    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* wanted) const override;

private:
    mutable std::vector<QAccessible::Id> mChildren; // by zone, as far as they were asked for
};

/// Makes Qt ask for a `BarAccessible` wherever it needs the interface of a bar. To be called before
/// the first bar is made; once is enough, more does no harm.
void install_bar_accessible();

} // namespace ui
