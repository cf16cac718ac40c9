#include "report/reportpicture.h"

#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uileafrank.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uileafpainter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QIODevice>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

namespace report {

namespace {

/// On the white of the window.
void paint(QPaintDevice& device, const QSize& size, const ui::LeafPainter& leaves) {
    QPainter painter(&device);
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    leaves.paintOn(painter);
}

bool drawSvg(const ui::LeafPainter& leaves, const QSize& size, QIODevice& device) {
    QSvgGenerator svg;
    svg.setOutputDevice(&device);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    svg.setTitle(QStringLiteral("Quillon"));
    paint(svg, size, leaves);
    return true;
}

bool drawPng(const ui::LeafPainter& leaves, const QSize& size, QIODevice& device) {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return false;
    paint(image, size, leaves);
    return image.save(&device, "PNG");
}

} // namespace

bool draw_picture(const domain::Nest& nest, const picture& picture, QIODevice& device) {
    ui::Look look;
    look.init(QFontMetrics(QGuiApplication::font()));
    ui::Shared shared(nullptr);
    ui::LeafBuilder(shared.mLeaves).from(nest);
    ui::LeafLayout(shared.mLeaves).layout();
    if (picture.rank)
        ui::select_by_rank(shared);
    ui::LeafPainter leaves(look, shared);
    leaves.layout(picture.size);
    return picture.vectors ? drawSvg(leaves, picture.size, device)
                           : drawPng(leaves, picture.size, device);
}

} // namespace report
