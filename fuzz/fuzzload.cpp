// Takes any bytes the whole way: decoding, parser and reader into a nest, which must be that of the
// plain rules, then leaves, layout and pictures, which must be the same drawn anew or step by step.

#include "domain/domainblackboard.h"
#include "domain/domainlog.h"
#include "domain/domainnestreader.h"
#include "fuzz/fuzztarget.h"
#include "fuzz/plain/plainnestreader.h"
#include "fuzz/plain/plainparser.h"
#include "fuzz/plain/plaintext.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uileafrank.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uileafpainter.h"
#include "ui/picture/uileafpicture.h"

#include <QBuffer>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace {

const QSize VIEW(200, 150);
constexpr int TOLERANCE = 4; // of 255, as the leaf picture promises

std::string numberText(double value) {
    return std::isnan(value) ? "nan" : std::to_string(value);
}

std::string text(const QString& key, int gesture, const QRectF& bounds) {
    return key.toUtf8().toHex().toStdString() + " " + std::to_string(gesture) + " " +
           numberText(bounds.x()) + " " + numberText(bounds.y()) + " " +
           numberText(bounds.width()) + " " + numberText(bounds.height());
}

template <typename Sequence>
std::string text(const Sequence& sequence, int count) {
    std::string text = " " + std::to_string(count) + ":";
    for (const int index : sequence)
        text += std::to_string(index) + ",";
    return text;
}

std::string text(const domain::Nest& nest) {
    std::string text;
    for (int i = 0; i < nest.size(); ++i) {
        const domain::Branch& branch = *nest.branchAt(i);
        text += ::text(branch.mKey, branch.mGesture, branch.mBounds);
        for (const domain::Pattern* pattern : branch.mPatterns.reading())
            text += ::text(pattern->run(), pattern->mCount);
        text += '\n';
    }
    return text;
}

std::string text(const std::vector<PlainNestReader::branch>& branches) {
    std::string text;
    for (const PlainNestReader::branch& branch : branches) {
        text += ::text(branch.key, branch.gesture, branch.bounds);
        for (const PlainCycleBuilder::found& pattern : branch.patterns)
            text += ::text(pattern.sequence, pattern.count);
        text += '\n';
    }
    return text;
}

void read(domain::NestReader& reader, domain::Nest& nest, QByteArray log) {
    QBuffer device(&log);
    device.open(QIODevice::ReadOnly);
    reader.begin(nest);
    domain::read_log(device, reader);
}

QImage drawn(ui::LeafPicture& picture) {
    QImage image(VIEW, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    fuzz::require(picture.drawOn(painter, VIEW, QDeadlineTimer(QDeadlineTimer::Forever)),
                  "a picture is drawn");
    return image;
}

QImage drawnAnew(const ui::Look& look, ui::Shared& shared) {
    ui::LeafPainter leaves(look, shared);
    leaves.placeLeaves(VIEW);
    ui::LeafPicture picture(leaves);
    return drawn(picture);
}

bool alike(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) <= TOLERANCE &&
           std::abs(qGreen(a) - qGreen(b)) <= TOLERANCE &&
           std::abs(qBlue(a) - qBlue(b)) <= TOLERANCE;
}

bool alike(const QImage& a, const QImage& b) {
    for (int y = 0; y < a.height(); ++y) {
        const auto* left = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* right = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        if (!std::equal(left, left + a.width(), right, [](QRgb l, QRgb r) { return alike(l, r); }))
            return false;
    }
    return true;
}

void draw(const domain::Nest& nest) {
    static ui::Look look;
    [[maybe_unused]] static const bool initialized =
        look.init(QFontMetrics(QGuiApplication::font()));
    ui::Shared shared(nullptr);
    ui::LeafBuilder(shared.mLeaves).from(nest);
    fuzz::require(shared.mLeaves.size() == nest.size(), "every branch has a leaf");
    ui::LeafLayout(shared.mLeaves).layout();
    ui::LeafPainter leaves(look, shared);
    leaves.placeLeaves(VIEW);
    for (const ui::Leaf* leaf : shared.mLeaves)
        fuzz::require(std::isfinite(leaf->mPos.x()) && std::isfinite(leaf->mPos.y()),
                      "every leaf is somewhere");
    ui::LeafPicture stepped(leaves);
    drawn(stepped);
    ui::select_by_rank(shared);
    fuzz::require(alike(drawn(stepped), drawnAnew(look, shared)),
                  "a selection shows as if drawn anew");
    shared.setPatternSelection(1);
    fuzz::require(alike(drawn(stepped), drawnAnew(look, shared)),
                  "another pattern shows as if drawn anew");
}

/// Never destroyed: what is static in the toolkit ends before or after it, in no known order.
void startApplication() {
    static int argc = 1;
    static char name[] = "fuzz-load";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const auto* const APPLICATION = new QGuiApplication(argc, argv);
    Q_UNUSED(APPLICATION)
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    startApplication();
    domain::Blackboard analysis;
    domain::NestReader reader(analysis);
    PlainNestReader plain;
    const QByteArray logs(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const QByteArray& log : logs.split('\x1e')) {
        domain::Nest nest;
        read(reader, nest, log);
        plain.begin();
        PlainParser(plain_text(log)).parse(&plain);
        fuzz::requireSame(text(nest), text(plain.branches()));
        if (nest.size() > 0)
            draw(nest);
    }
    return 0;
}
