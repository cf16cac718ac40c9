#include "ui/views/uibaraccessible.h"

#include <QAccessibleActionInterface>
#include <QRect>
#include <QStringList>

namespace ui {

namespace {

/// One zone; the bar's interface, which owns it, answers for the bar.
class ZoneAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ZoneAccessible(const BarAccessible& parent, BarView::Zone& zone)
        : mParent(parent)
        , mZone(zone) {}

    bool isValid() const override { return mParent.bar(); }

    QObject* object() const override { return nullptr; }

    QWindow* window() const override { return mParent.window(); }

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(mParent.bar());
    }

    int childCount() const override { return 0; }

    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    QAccessible::Role role() const override {
        return isButton() ? QAccessible::Button : QAccessible::StaticText;
    }

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name || !isValid())
            return {};
        return isButton() ? mZone.mName : mZone.mLabel;
    }

    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    /// On the screen.
    QRect rect() const override {
        BarView* bar = mParent.bar();
        if (!bar)
            return {};
        bar->layout();
        const QRect place = mZone.mRect.toRect();
        return {bar->mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (state.invalid)
            return state;
        state.disabled = !mZone.mEnabled;
        state.invisible = !mParent.bar()->isVisible() || rect().isEmpty();
        state.readOnly = !isButton();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        const bool acts = type == QAccessible::ActionInterface && isButton();
        return acts ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override {
        return isValid() && mZone.mEnabled ? QStringList(pressAction()) : QStringList();
    }

    void doAction(const QString& name) override {
        if (actionNames().contains(name))
            mParent.bar()->zonePressed(mZone);
    }

    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

private:
    bool isButton() const { return isValid() && mZone.mImage >= 0; }

    const BarAccessible& mParent;
    BarView::Zone& mZone; // lives as long as the bar
};

QAccessibleInterface* newBarAccessible(const QString& /*className*/, QObject* object) {
    auto* bar = qobject_cast<BarView*>(object);
    return bar ? new BarAccessible(*bar) : nullptr;
}

} // namespace

BarAccessible::BarAccessible(BarView& bar)
    : QAccessibleWidget(&bar, QAccessible::ToolBar) {}

BarAccessible::~BarAccessible() {
    for (const QAccessible::Id child : mChildren)
        QAccessible::deleteAccessibleInterface(child);
}

BarView* BarAccessible::bar() const {
    return qobject_cast<BarView*>(object());
}

QString BarAccessible::text(QAccessible::Text kind) const {
    const BarView* shown = bar();
    if (kind != QAccessible::Description || !shown)
        return QAccessibleWidget::text(kind);
    QStringList labels;
    for (const BarView::Zone* zone : shown->zones()) {
        if (!zone->mLabel.isEmpty())
            labels.append(zone->mLabel);
    }
    return labels.join(u' ');
}

int BarAccessible::childCount() const {
    const BarView* shown = bar();
    return shown ? shown->zones().size() : 0;
}

QAccessibleInterface* BarAccessible::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    while (static_cast<int>(mChildren.size()) <= index) {
        BarView::Zone* zone = bar()->zones().at(static_cast<int>(mChildren.size()));
        // Qt's register takes the interface over, which the analyser can't see.
        auto* made = new ZoneAccessible(*this, *zone);
        mChildren.push_back( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
            QAccessible::registerAccessibleInterface(made));
    }
    return QAccessible::accessibleInterface(mChildren[static_cast<std::size_t>(index)]);
}

QAccessibleInterface* BarAccessible::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i) {
        if (child(i)->rect().contains(x, y))
            return child(i);
    }
    return nullptr;
}

int BarAccessible::indexOfChild(const QAccessibleInterface* wanted) const {
    for (int i = 0; i < childCount(); ++i) {
        if (child(i) == wanted)
            return i;
    }
    return -1;
}

void install_bar_accessible() {
    QAccessible::installFactory(newBarAccessible);
}

} // namespace ui
