#include "report/reportpicture.h"

#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uileafrank.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uileafpainter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

namespace report {

namespace {

/// On the white of the window.
void paint(QPaintDevice& device, const QSize& size, const ui::LeafPainter& leaves) {
    QPainter painter(&device);
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    leaves.paintOn(painter);
}

void writeSvg(QIODevice& file, const QSize& size, const ui::LeafPainter& leaves) {
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    svg.setTitle(QStringLiteral("Quillon"));
    paint(svg, size, leaves);
}

bool writePng(QIODevice& file, const QSize& size, const ui::LeafPainter& leaves) {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return false;
    paint(image, size, leaves);
    return image.save(&file, "PNG");
}

} // namespace

QString draw_picture(const domain::Nest& nest, const QString& path, const QSize& size, bool rank) {
    ui::Look look;
    look.init(QFontMetrics(QGuiApplication::font()));
    ui::Shared shared(nullptr);
    ui::LeafBuilder(shared.mLeaves).from(nest);
    ui::LeafLayout(shared.mLeaves).layout();
    if (rank)
        ui::select_by_rank(shared);
    ui::LeafPainter leaves(look, shared);
    leaves.layout(size);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive))
        writeSvg(file, size, leaves);
    else if (!writePng(file, size, leaves))
        return QStringLiteral("the picture could not be encoded");
    return file.commit() ? QString() : file.errorString();
}

} // namespace report
