#pragma once

#include <QBrush>
#include <QColor>
#include <QPalette>
#include <QPixmap>

class QFontMetrics;
class QPainter;
class QRect;

namespace ui {

/// Everything the views draw with: colours, brushes, paddings, font metrics, button images and
/// edge shadows; and what the toolkit draws with, as palette and style sheets. Lengths are
/// device-independent pixels, alphas run from 0 to 255.
///
/// The window owns the one look and calls `init` before it makes any view; from then on nothing
/// changes it and the views, which it outlives, only read. GUI thread only.
class Look {
public:
    /// Sets the colours, brushes and paddings; `init` adds what needs a font and a screen.
    Look();

    /// Takes the metrics of the application's font, makes the button images as high as the font, of
    /// the densest screen's pixels, and sets the alphas of the shadows. An image that cannot
    /// be loaded stays null, and its button takes no room. Always true.
    bool init(const QFontMetrics& metrics);

    /// A palette that is readable on the light backgrounds of the window and its side panel, which
    /// are the same whatever palette the desktop has.
    QPalette palette() const;

    /// Style sheets of the window and of its side panel. Their backgrounds go through to everything
    /// in them.
    static QString windowSheet();
    static QString panelSheet();

    /// A style sheet for the application, as the window's white goes through to its menus and
    /// dialogs too: without it the chosen item, the frame of a menu and the handle of a scroll bar
    /// would be white.
    static QString applicationSheet();

    /// The fill of a leaf of pattern weight `weight`, in 0 to 1: the heavier, the more opaque.
    QColor patternWeightedC(float weight) const;

    /// The image with that index in `mButtonImages`, which may be a null pixmap; null outside 0
    /// to 3, the indices that stand for no image.
    const QPixmap* buttonImage(int index) const;

    /// Draws a faint line along the top row of `rect`.
    void drawTopShadow(QPainter& painter, const QRect& rect) const;

    /// Draws ten lines along the lowest rows of `rect`, fading upward.
    void drawBottomShadow(QPainter& painter, const QRect& rect) const;

    // Indices of mButtonImages.
    static constexpr int PREVIOUS_IMAGE = 0;
    static constexpr int PREVIOUS_DISABLED_IMAGE = 1;
    static constexpr int NEXT_IMAGE = 2;
    static constexpr int NEXT_DISABLED_IMAGE = 3;
    static constexpr int BUTTON_IMAGES = 4;
    static constexpr int BOTTOM_SHADOW_ROWS = 10;

    QColor mText;
    QColor mLeafFill;
    QColor mLeafOutline;
    QColor mPrimaryFill;
    QColor mSelectedOutline;
    QColor mMenuFill;
    QColor mPatternPen;
    QColor mSelectedPatternPen;
    QColor mRubberBandFill;
    float mPatternAlphaLow; // of patternWeightedC(), as a fraction
    float mPatternAlphaHigh;
    QBrush mLeafFillBrush;
    QBrush mPrimaryFillBrush;
    QBrush mMenuFillBrush;
    QBrush mRubberBandBrush;
    float mHPadding;
    float mVPadding;
    float mMargin;
    float mFontHeight = 0;
    float mFontAscent = 0;
    float mFontDescent = 0;
    float mLeafRadius;
    QPixmap mButtonImages[BUTTON_IMAGES];
    int mTopShadowAlpha = 0;
    int mBottomShadowAlpha[BOTTOM_SHADOW_ROWS] = {}; // from the bottom edge upward
};

} // namespace ui
