#include "ui/views/uiviewaccessible.h"

#include "domain/domainbranch.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uileafview.h"
#include "ui/views/uiselectionview.h"

#include <utility>

namespace ui {

namespace {

QAccessibleInterface* newViewAccessible(const QString& /*className*/, QObject* object) {
    if (auto* leaves = qobject_cast<LeafView*>(object))
        return new ViewAccessible(*leaves, QAccessible::Canvas, LeafView::tr("Leaves"),
                                  [leaves] { return describe_leaves(leaves->shared()); });
    if (auto* keys = qobject_cast<SelectionView*>(object))
        return new ViewAccessible(*keys, QAccessible::StaticText,
                                  SelectionView::tr("Keys of the selected pattern"),
                                  [keys] { return keys->text(); });
    return nullptr;
}

} // namespace

ViewAccessible::ViewAccessible(QWidget& view, QAccessible::Role role, const QString& name,
                               std::function<QString()> describe)
    : QAccessibleWidget(&view, role, name)
    , mDescribe(std::move(describe)) {}

QString ViewAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Description || !isValid())
        return QAccessibleWidget::text(kind);
    return mDescribe();
}

QString describe_leaves(const Shared& shared) {
    const LeafSelection& selection = shared.leafSelection();
    int selected = 0;
    for (const Leaf* leaf : shared.mLeaves)
        selected += selection.hasAlternate(leaf->mIndex) ? 1 : 0;
    const QString counts =
        LeafView::tr("leaves: %1, selected: %2").arg(shared.mLeaves.size()).arg(selected);
    const domain::Branch* inFocus = shared.branchInFocus();
    return inFocus ? LeafView::tr("%1, in focus: %2").arg(counts, inFocus->mKey) : counts;
}

void install_view_accessible() {
    QAccessible::installFactory(newViewAccessible);
}

} // namespace ui
