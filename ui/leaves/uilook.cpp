#include "ui/leaves/uilook.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

// Outside every namespace, as the macro asks. Without a reference to them the linker drops the
// images from a static library.
static void initResources() {
    Q_INIT_RESOURCE(quillon);
}

namespace {

constexpr qreal DISABLED_OPACITY = 0.35;
constexpr QColor BUTTON_FACE(239, 239, 239);
constexpr QColor WINDOW_FACE(255, 255, 255);
constexpr QColor PANEL_FACE(200, 200, 200);
constexpr QColor FAINT_TEXT(120, 120, 120);

QString background(const QColor& colour) {
    return QStringLiteral("background-color: rgb(%1, %2, %3);")
        .arg(colour.red())
        .arg(colour.green())
        .arg(colour.blue());
}

void setupBrush(QBrush& brush, const QColor& colour) {
    brush.setColor(colour);
    brush.setStyle(Qt::SolidPattern);
}

/// The image fits a square of `size`, `disabled` fills it. Both are made of the pixels of the
/// densest screen. Where its ratio does not make whole pixels of the square, the images have the
/// nearest number and a ratio of their own, so that bars are laid out alike on every screen.
void newButton(int size, const char* resource, QPixmap& image, QPixmap& disabled) {
    const QPixmap loaded((QString(QLatin1String(resource))));
    if (loaded.isNull())
        return;
    const int pixels = qRound(size * qApp->devicePixelRatio());
    image = loaded.scaled(QSize(pixels, pixels), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (image.isNull())
        return;
    disabled = QPixmap(pixels, pixels);
    if (!disabled.isNull()) {
        disabled.fill(Qt::transparent);
        QPainter painter(&disabled);
        painter.setOpacity(DISABLED_OPACITY);
        painter.drawPixmap(QPointF(0, 0), image);
    }
    const qreal ratio = static_cast<qreal>(pixels) / size;
    image.setDevicePixelRatio(ratio);
    disabled.setDevicePixelRatio(ratio);
}

/// Blends one row over what is there, once: an outline of no height would be blended twice.
void fillRow(QPainter& painter, const QRect& rect, int row, int alpha) {
    painter.fillRect(QRect(rect.left(), row, rect.width(), 1), QColor(0, 0, 0, alpha));
}

} // namespace

namespace ui {

Look::Look()
    : mText(0, 0, 0, 255)
    , mLeafFill(0, 0, 0, 50)
    , mLeafOutline(0, 0, 0, 75)
    , mPrimaryFill(0, 255, 0, 255)
    , mSelectedOutline(0, 0, 0, 250)
    , mMenuFill(255, 0, 0, 50)
    , mPatternPen(175, 175, 175, 255)
    , mSelectedPatternPen(0, 0, 0, 255)
    , mRubberBandFill(255, 255, 0, 100)
    , mPatternAlphaLow(0.5F)
    , mPatternAlphaHigh(0.75F)
    , mHPadding(4)
    , mVPadding(4)
    , mMargin(2)
    , mLeafRadius(8) {
    setupBrush(mLeafFillBrush, mLeafFill);
    setupBrush(mPrimaryFillBrush, mPrimaryFill);
    setupBrush(mMenuFillBrush, mMenuFill);
    setupBrush(mRubberBandBrush, mRubberBandFill);
}

bool Look::init(const QFontMetrics& metrics) {
    initResources();
    mFontHeight = static_cast<float>(metrics.height());
    mFontAscent = static_cast<float>(metrics.ascent());
    mFontDescent = static_cast<float>(metrics.descent());
    newButton(metrics.height(), ":/prv.png", mButtonImages[PREVIOUS_IMAGE],
              mButtonImages[PREVIOUS_DISABLED_IMAGE]);
    newButton(metrics.height(), ":/nxt.png", mButtonImages[NEXT_IMAGE],
              mButtonImages[NEXT_DISABLED_IMAGE]);
    mBottomShadowAlpha[0] = 40;
    float alpha = 30;
    for (int i = 1; i < BOTTOM_SHADOW_ROWS; ++i, alpha *= 0.75F)
        mBottomShadowAlpha[i] = static_cast<int>(alpha);
    mTopShadowAlpha = 10;
    return true;
}

QPalette Look::palette() const {
    QPalette light(BUTTON_FACE, WINDOW_FACE); // with dark texts
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        light.setColor(QPalette::Disabled, role, FAINT_TEXT);
    light.setColor(QPalette::PlaceholderText, FAINT_TEXT);
    light.setColor(QPalette::AlternateBase, BUTTON_FACE);
    light.setColor(QPalette::ToolTipBase, WINDOW_FACE);
    light.setColor(QPalette::ToolTipText, mText);
    return light;
}

QString Look::windowSheet() {
    return background(WINDOW_FACE);
}

QString Look::panelSheet() {
    return background(PANEL_FACE);
}

QString Look::applicationSheet() {
    return QStringLiteral(
        "QMenu { border: 1px solid palette(mid); }"
        "QMenu::item:selected, QComboBox::item:selected"
        "{ background-color: palette(highlight); color: palette(highlighted-text); }"
        "QScrollBar::handle { background-color: palette(mid); }");
}

QColor Look::patternWeightedC(float weight) const {
    QColor colour = mLeafFill;
    colour.setAlphaF((1 - weight) * mPatternAlphaLow + weight * mPatternAlphaHigh);
    return colour;
}

const QPixmap* Look::buttonImage(int index) const {
    return index >= 0 && index < BUTTON_IMAGES ? &mButtonImages[index] : nullptr;
}

void Look::drawTopShadow(QPainter& painter, const QRect& rect) const {
    fillRow(painter, rect, rect.top(), mTopShadowAlpha);
}

void Look::drawBottomShadow(QPainter& painter, const QRect& rect) const {
    for (int i = 0; i < BOTTOM_SHADOW_ROWS; ++i) {
        fillRow(painter, rect, rect.bottom() - i, mBottomShadowAlpha[i]);
        if (mBottomShadowAlpha[i] <= 1)
            break;
    }
}

} // namespace ui
