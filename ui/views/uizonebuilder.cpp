#include "ui/views/uizonebuilder.h"

#include "ui/leaves/uilook.h"

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
        zone.mImage = Look::PREVIOUS_IMAGE;
        zone.mDisabledImage = Look::PREVIOUS_DISABLED_IMAGE;
    } else if (mId == BAR_NXT) {
        zone.mImage = Look::NEXT_IMAGE;
        zone.mDisabledImage = Look::NEXT_DISABLED_IMAGE;
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
