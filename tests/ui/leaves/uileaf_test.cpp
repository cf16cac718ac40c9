#include "ui/leaves/uileaf.h"
#include "ui/leaves/uileafselection.h"
#include "ui/leaves/uilook.h"

#include <QImage>

#include <gtest/gtest.h>

namespace {

constexpr int ME = 7;
constexpr int OTHER = 8;

template <typename Draw>
QImage imageOf(int ratio, Draw draw) {
    QImage image(QSize(40, 30) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return image;
}

TEST(Leaf, PenAndBrushTellFocusSelectionWeightAndMenu) {
    const QColor faint(0, 0, 0, 75), strong(0, 0, 0, 250);
    const QColor plain(0, 0, 0, 50), menu(255, 0, 0, 50), focus(0, 255, 0);
    const QColor full = QColor::fromRgbF(0, 0, 0, 0.75F), half = QColor::fromRgbF(0, 0, 0, 0.625F);

    const struct {
        const char* rule;
        int gesture, weight, maxWeight, primary, alternate;
        QColor pen, brush;
    } rows[] = {
        {"plain", 1, 0, 9, OTHER, OTHER, faint, plain},
        {"menu", 3, 0, 9, OTHER, OTHER, faint, menu},
        {"selected", 1, 0, 9, OTHER, ME, strong, plain},
        {"heaviest", 1, 9, 9, OTHER, OTHER, faint, full},
        {"half as heavy, menu, selected", 3, 1, 2, OTHER, ME, strong, half},
        {"no largest weight", 1, 9, 0, OTHER, OTHER, faint, plain},
        {"focus hides the weight", 1, 9, 9, ME, ME, strong, focus},
        {"focus outside the selection", 3, 0, 9, ME, OTHER, strong, focus},
    };

    const ui::Look look;
    for (const auto& row : rows) {
        ui::Leaf leaf;
        leaf.mIndex = ME;
        leaf.mGesture = row.gesture;
        leaf.mWeight = row.weight;
        leaf.mPos = QPointF(17.5, 12.0);
        ui::LeafSelection selection;
        selection.mPrimary = row.primary;
        selection.mAlternates.add(row.alternate);
        ui::leaf_draw draw(look);
        draw.maxWeight = row.maxWeight;
        const auto expect = [&row](QPainter& painter) {
            painter.setPen(row.pen);
            painter.setBrush(row.brush);
            painter.drawEllipse(QPointF(17.5, 12.0), 8.0, 8.0);
        };
        for (const int ratio : {1, 2})
            EXPECT_EQ(imageOf(ratio, [&](auto& p) { leaf.drawOn(p, selection, draw); }),
                      imageOf(ratio, expect))
                << row.rule << " at ratio " << ratio;
    }
}

} // namespace
