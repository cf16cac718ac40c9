#include "bench/benchpainting.h"

#include "bench/benchtrace.h"
#include "domain/domaincyclebuilderiterative.h"
#include "domain/domainnest.h"
#include "tests/common/processortime.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uileafrank.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uistroke.h"
#include "ui/views/uileafview.h"

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <sched.h>

#include <algorithm>
#include <functional>
#include <iomanip>
#include <ostream>
#include <vector>

namespace bench {

namespace {

constexpr QSize VIEW(1000, 700);
constexpr int EVENTS = 54000;
constexpr int AT_HUB = 3000;
constexpr int STEPS = 41;           // of a selection
constexpr int REPETITIONS = 5;      // of a first picture
constexpr int ONE_PATTERN_IN = 128; // is painted where painting all would take minutes

double secondsOf(const std::function<void()>& doIt) {
    const double start = processor_time(CLOCK_PROCESS_CPUTIME_ID);
    doIt();
    return processor_time(CLOCK_PROCESS_CPUTIME_ID) - start;
}

/// Of the busier one of two processors, as other work on the machine lets the clock run on.
double secondsOnTwo(const std::function<void()>& doIt) {
    const double start = processor_time(CLOCK_THREAD_CPUTIME_ID);
    const double all = secondsOf(doIt);
    const double ours = processor_time(CLOCK_THREAD_CPUTIME_ID) - start;
    return std::max(ours, all - ours);
}

/// What the thread and those that it starts take on one processor.
double onOneProcessor(const std::function<double()>& measure) {
    cpu_set_t all;
    cpu_set_t one;
    sched_getaffinity(0, sizeof all, &all);
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    sched_setaffinity(0, sizeof one, &one);
    const double seconds = measure();
    sched_setaffinity(0, sizeof all, &all);
    return seconds;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + std::ssize(values) / 2, values.end());
    return values[values.size() / 2];
}

/// Of one recording of a log of 5 MB, skewed and with some time at a hub, which repeats every
/// stroke a hundred times. All distances are searched, whatever the time, so that the patterns are
/// the same on every machine.
void fill(domain::Nest& nest) {
    for (int key = 0; key < KEYS; ++key) {
        domain::Branch branch;
        branch.mKey = QString::number(key);
        branch.mGesture = key % 16 == 15 ? domain::GESTURE_MENU : domain::GESTURE_DOWN;
        branch.mBounds = QRectF(key * 37 % 1200, key * 53 % 800, 9, 9);
        nest.set(key, branch);
    }
    domain::Trace events;
    for (const int key : trace(Shape::Skewed, EVENTS - AT_HUB, 1))
        events.mIndices.add(key);
    for (const int key : trace(Shape::Hub, AT_HUB, 2))
        events.mIndices.add(key);
    domain::CycleBuilderIterative builder;
    builder.begin(nest, events);
    for (int distance = 2; distance <= EVENTS / 8; ++distance)
        builder.run(distance);
}

void copyWithoutPatterns(const domain::Nest& from, domain::Nest& to) {
    for (int i = 0; i < from.size(); ++i) {
        domain::Branch branch;
        const domain::Branch& other = *from.branchAt(i);
        branch.mKey = other.mKey;
        branch.mGesture = other.mGesture;
        branch.mBounds = other.mBounds;
        to.set(i, branch);
    }
}

/// A leaf view of a nest, and the pictures that are taken of it.
class Canvas {
public:
    Canvas(const domain::Nest& nest, double ratio)
        : mImage(VIEW * ratio, QImage::Format_ARGB32_Premultiplied) {
        mImage.setDevicePixelRatio(ratio);
        ui::LeafBuilder(mShared.mLeaves).from(nest);
        ui::LeafLayout(mShared.mLeaves).layout();
        mView.resize(VIEW);
        mView.onModelChanged();
    }

    /// `seconds` measures it.
    double firstPicture(double (*seconds)(const std::function<void()>&) = secondsOf) {
        std::vector<double> times;
        for (int i = 0; i < REPETITIONS; ++i) {
            mView.onModelChanged();
            times.push_back(seconds([this] { render(); }));
        }
        return median(times);
    }

    double bandSteps() {
        send(QEvent::MouseButtonPress, {5, 5});
        repaint();
        std::vector<double> times;
        for (int i = 1; i <= STEPS; ++i) {
            const double way = static_cast<double>(i) / STEPS;
            times.push_back(secondsOf([&] {
                send(QEvent::MouseMove, {5 + 950 * way, 5 + 650 * way});
                render();
            }));
        }
        send(QEvent::MouseButtonRelease, {955, 655});
        return median(times);
    }

    /// The focus through all leaves.
    double leafSteps() {
        ui::LeafSelection selection;
        for (const ui::Leaf* leaf : mShared.mLeaves)
            selection.mAlternates.add(leaf->mIndex);
        std::vector<double> times;
        for (int i = 0; i < std::min(STEPS, mShared.mLeaves.size()); ++i) {
            selection.mPrimary = selection.mAlternates[i];
            mShared.setLeafSelection(selection);
            times.push_back(repaint());
        }
        return median(times);
    }

    /// Through patterns of the branch that has most; far in they are long.
    double patternSteps(int first) {
        select_by_rank(mShared);
        repaint();
        std::vector<double> times;
        for (int i = 0; i < STEPS; ++i) {
            mShared.setPatternSelection(first + i);
            times.push_back(repaint());
        }
        return median(times);
    }

    /// Painting every stroke of every pattern, reckoned from every `ONE_PATTERN_IN`th. The leaves
    /// are where the last repaint placed them.
    double everyStroke(std::ostream& out) {
        qint64 all = 0;
        qint64 painted = 0;
        int number = 0;
        const double seconds = secondsOf([&] {
            QPainter painter(&mImage);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(mLook.mPatternPen);
            for (const ui::Leaf* leaf : mShared.mLeaves) {
                for (const domain::Pattern* pattern : leaf->mBranch->mPatterns) {
                    all += pattern->mSequence.size() - 1;
                    if (number++ % ONE_PATTERN_IN == 0) {
                        paint(painter, *pattern);
                        painted += pattern->mSequence.size() - 1;
                    }
                }
            }
        });
        out << number << " patterns, " << all << " strokes, " << painted << " of them painted in "
            << seconds / static_cast<double>(painted) * 1e6 << " us each\n";
        return seconds / static_cast<double>(painted) * static_cast<double>(all);
    }

private:
    double repaint() {
        return secondsOf([this] { render(); });
    }

    void render() { mView.render(&mImage, QPoint(), QRegion(), QWidget::RenderFlags()); }

    void send(QEvent::Type type, const QPointF& at) {
        QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&mView, &event);
    }

    void paint(QPainter& painter, const domain::Pattern& pattern) const {
        for (int i = 1; i < pattern.mSequence.size(); ++i) {
            const ui::Leaf* from = mShared.mLeaves.leafAt(pattern.mSequence[i - 1]);
            const ui::Leaf* to = mShared.mLeaves.leafAt(pattern.mSequence[i]);
            if (const auto curve = ui::stroke_between(from->mPos, to->mPos, mLook.mLeafRadius))
                painter.drawPath(curve->path());
        }
    }

    const ui::Look mLook;
    ui::Shared mShared{nullptr};
    ui::LeafView mView{mLook, mShared, nullptr};
    QImage mImage;
};

class Lines {
public:
    Lines(double ratio, std::ostream& out)
        : mRatio(ratio)
        , mOut(out) {}

    /// `target`: how many times as fast as `other` ours is to be.
    void print(const std::string& what, double ours, const std::string& beside, double other,
               double target) {
        mOut << std::left << std::setw(26) << what << " @" << mRatio << std::right << std::fixed
             << std::setprecision(2) << std::setw(10) << ours * 1e3 << " ms   " << std::left
             << std::setw(18) << beside << std::right << std::setw(11) << other * 1e3 << " ms"
             << std::setw(11) << other / ours << std::setw(10) << target << std::endl;
        mOut.unsetf(std::ios::fixed);
    }

private:
    double mRatio;
    std::ostream& mOut;
};

} // namespace

void measure_painting(std::ostream& out) {
    domain::Nest nest;
    fill(nest);
    domain::Nest bare;
    copyWithoutPatterns(nest, bare);
    for (const double ratio : {1.0, 2.0}) {
        Canvas canvas(nest, ratio);
        Canvas leaves(bare, ratio);
        const double first = canvas.firstPicture();
        const double every = canvas.everyStroke(out);
        leaves.firstPicture();
        Lines lines(ratio, out);
        const std::string all = "every stroke";
        const std::string without = "without patterns";
        lines.print("first picture", first, all, every, 100);
        lines.print("first picture, two cores", canvas.firstPicture(secondsOnTwo), "one core",
                    onOneProcessor([&canvas] { return canvas.firstPicture(); }), 2);
        const double band = canvas.bandSteps();
        lines.print("repaint, band step", band, all, every, 1000);
        lines.print("repaint, band step", band, without, leaves.bandSteps(), 1 / 3.0);
        const double step = canvas.leafSteps();
        lines.print("repaint, leaf step", step, all, every, 1000);
        lines.print("repaint, leaf step", step, without, leaves.leafSteps(), 1 / 3.0);
        lines.print("repaint, short patterns", canvas.patternSteps(0), all, every, 1000);
        lines.print("repaint, long patterns", canvas.patternSteps(9000), all, every, 1000);
    }
}

} // namespace bench
