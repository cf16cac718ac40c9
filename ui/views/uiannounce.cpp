#include "ui/views/uiannounce.h"

#include <QAccessible>
#include <QWidget>

namespace ui {

void announce_label(QWidget& widget, int child) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent name(&widget, QAccessible::NameChanged);
    name.setChild(child);
    QAccessible::updateAccessibility(&name);
    announce_description(widget);
}

void announce_enabled(QWidget& widget, int child) {
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(&widget, changed);
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

void announce_description(QWidget& widget) {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(&widget, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace ui
