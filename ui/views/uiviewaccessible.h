#pragma once

#include <QAccessibleWidget>

#include <functional>

namespace ui {

class Shared;

/// The leaf view or the selection view as assistive technology sees it: a picture or a text whose
/// description tells what it shows at the moment. GUI thread only.
class ViewAccessible : public QAccessibleWidget {
public:
    /// `describe` puts into words what `view` shows, and is called while there is a view.
    ViewAccessible(QWidget& view, QAccessible::Role role, const QString& name,
                   std::function<QString()> describe);

    QString text(QAccessible::Text kind) const override;

private:
    std::function<QString()> mDescribe;
};

/// How many leaves there are, how many of them are selected, and the key of the one in focus.
QString describe_leaves(const Shared& shared);

/// Makes Qt ask for a `ViewAccessible` wherever it needs the interface of one of the views. To be
/// called before the first view is made; once is enough, more does no harm.
void install_view_accessible();

} // namespace ui
