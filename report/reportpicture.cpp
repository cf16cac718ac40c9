#include "report/reportpicture.h"

#include "report/reportnames.h"
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

#include <new>

namespace report {

namespace {

using Paint = std::function<void(QPainter& painter)>;

/// On the white of the window.
void paint(QPaintDevice& device, const QSize& size, const Paint& leaves) {
    QPainter painter(&device);
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    leaves(painter);
}

bool drawSvg(const Paint& leaves, const QSize& size, QIODevice& device) {
    QSvgGenerator svg;
    svg.setOutputDevice(&device);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    svg.setTitle(QStringLiteral("Quillon"));
    paint(svg, size, leaves);
    return true;
}

bool drawPng(const Paint& leaves, const QSize& size, QIODevice& device) {
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return false;
    paint(image, size, leaves);
    return image.save(&device, "PNG");
}

/// The keys with those of their patterns that are reported.
void copyFindings(const Findings& findings, domain::Nest& nest) {
    for (const key_findings& key : findings.keys()) {
        domain::Branch branch;
        branch.mKey = key.branch->mKey;
        branch.mGesture = key.branch->mGesture;
        branch.mBounds = key.branch->mBounds;
        for (const found_pattern& found : key.patterns)
            branch.addPattern(*found.pattern);
        if (!nest.set(key.index, branch))
            throw std::bad_alloc();
    }
}

void select(const found_pattern& found, const Findings& findings, ui::Shared& shared) {
    const int key = found.pattern->mSequence[0];
    ui::LeafSelection selection;
    selection.mPrimary = key;
    selection.mAlternates.add(key);
    shared.setLeafSelection(selection);
    const Patterns& patterns = findings.keys()[static_cast<std::size_t>(key)].patterns;
    shared.setPatternSelection(static_cast<int>(&found - patterns.data()));
}

} // namespace

bool draw_picture(const Findings& findings, const picture& picture, QIODevice& device) {
    domain::Nest nest;
    if (is_asked(findings.asked()))
        copyFindings(findings, nest);
    ui::Look look;
    look.init(QFontMetrics(QGuiApplication::font()));
    ui::Shared shared(nullptr);
    ui::LeafBuilder(shared.mLeaves).from(is_asked(findings.asked()) ? nest : findings.log().nest);
    ui::LeafLayout(shared.mLeaves).layout();
    if (picture.rank)
        ui::select_by_rank(shared);
    if (const found_pattern* pattern = find_pattern(findings, picture.pattern))
        select(*pattern, findings, shared);
    ui::LeafPainter leaves(look, shared);
    leaves.layout(picture.size);
    const auto paintAll = [&](QPainter& painter) {
        leaves.paintOn(painter);
        if (picture.names)
            write_names(painter, findings, shared, look.mLeafRadius, picture.size);
    };
    return picture.vectors ? drawSvg(paintAll, picture.size, device)
                           : drawPng(paintAll, picture.size, device);
}

} // namespace report
