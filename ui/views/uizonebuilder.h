#pragma once

#include "ui/views/uibarview.h"

#include <QString>

namespace ui {

/// Describes a zone of a bar: fills in the zone that the bar has made for it.
class ZoneBuilder {
public:
    virtual ~ZoneBuilder() = default;

    /// Sets up a cleared zone; true when it is complete.
    virtual bool build(BarView::Zone& zone, const Look& look) const = 0;
};

/// An image button. Its images follow from the id, `BAR_PRV` or `BAR_NXT`; with any other id it
/// has none and takes no room. Its name is what a screen reader says. Whether it is enabled is left
/// to the bar's owner.
class ButtonBuilder : public ZoneBuilder {
public:
    ButtonBuilder(int id, int flags, const QString& name = QString());

    bool build(BarView::Zone& zone, const Look& look) const override;

private:
    int mId;
    int mFlags;
    QString mName;
};

/// An enabled text.
class LabelBuilder : public ZoneBuilder {
public:
    LabelBuilder(int id, const QString& text, int flags);

    bool build(BarView::Zone& zone, const Look& look) const override;

private:
    int mId;
    QString mLabel;
    int mFlags;
};

} // namespace ui
