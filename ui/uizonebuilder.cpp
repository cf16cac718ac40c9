#include "ui/uizonebuilder.h"

namespace ui {

ButtonBuilder::ButtonBuilder(int id, int flags, const QString& name)
    : mId(id)
    , mFlags(flags)
    , mName(name) {}

bool ButtonBuilder::build(BarView::Zone& zone, const Look& /*look*/) const {
    zone.mId = mId;
    zone.mFlags = mFlags;
    zone.mName = mName;
    if (mId == BAR_PRV) {
        zone.mImage = 0;
        zone.mDisabledImage = 1;
    } else if (mId == BAR_NXT) {
        zone.mImage = 2;
        zone.mDisabledImage = 3;
    }
    return true;
}

LabelBuilder::LabelBuilder(int id, const QString& text, int flags)
    : mId(id)
    , mLabel(text)
    , mFlags(flags) {}

bool LabelBuilder::build(BarView::Zone& zone, const Look& /*look*/) const {
    zone.mId = mId;
    zone.mLabel = mLabel;
    zone.mFlags = mFlags;
    zone.mEnabled = true;
    return true;
}

} // namespace ui
