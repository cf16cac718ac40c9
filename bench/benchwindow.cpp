#include "bench/benchwindow.h"

#include "bench/benchevents.h"
#include "tests/common/windowdriver.h"
#include "ui/views/uibarview.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSettings>

#include <sys/resource.h>

#include <ostream>

namespace bench {

namespace {

constexpr int QUIET = 300; // milliseconds without a paint after which nothing more is to come
constexpr int BRUSH_STEPS = 120;
constexpr int BAR_STEPS = 10;
constexpr QSize SIZES[] = {{1200, 750}, {900, 600}, {1400, 800}, {1210, 745}};

/// Sees when a view was painted last.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QObject& view) {
        view.installEventFilter(this);
        mSincePaint.start();
    }

    bool isQuiet() const { return mSincePaint.elapsed() > QUIET; }

    void restart() { mSincePaint.start(); }

protected:
    bool eventFilter(QObject* /*view*/, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            mSincePaint.start();
        return false;
    }

private:
    QElapsedTimer mSincePaint;
};

void post(QWidget& to, QEvent::Type type, const QPointF& at) {
    const bool moves = type == QEvent::MouseMove;
    QApplication::postEvent(&to, new QMouseEvent(type, at, to.mapToGlobal(at),
                                                 moves ? Qt::NoButton : Qt::LeftButton,
                                                 Qt::LeftButton, Qt::NoModifier));
}

/// Uses the window as a person would, while the gaps of its event loop are measured.
class Session {
public:
    explicit Session(std::ostream& out)
        : mOut(out) {
        mWindow.resize(SIZES[0]);
        mWindow.show();
    }

    void load(const QUrl& url) {
        QSettings().remove(QStringLiteral("last-file"));
        QMetaObject::invokeMethod(&mWindow, "requestLoad", Q_ARG(QUrl, url));
        mGaps.measure(
            "loaded",
            [&url] { return QSettings().value(QStringLiteral("last-file")).toUrl() == url; }, mOut);
        untilQuiet("shown");
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        mOut << "peak memory so far " << usage.ru_maxrss / 1000 << " MB" << std::endl;
    }

    void resize() {
        auto* size = std::begin(SIZES);
        mGaps.measure(
            "resized, while it is drawn",
            [&] {
                if (mTicks++ % 40 == 0 && ++size != std::end(SIZES))
                    mWindow.resize(*size);
                return size == std::end(SIZES);
            },
            mOut);
        untilQuiet("resized, until it is whole");
    }

    void brush() {
        const QPointF end(mView.width() - 20, mView.height() - 20);
        post(mView, QEvent::MouseButtonPress, {5, 5});
        int step = 0;
        mGaps.measure(
            "brushed",
            [&] {
                if (mTicks++ % 8 == 0)
                    post(mView, QEvent::MouseMove,
                         QPointF(5, 5) + end * (++step / double(BRUSH_STEPS)));
                return step == BRUSH_STEPS;
            },
            mOut);
        post(mView, QEvent::MouseButtonRelease, end);
        untilQuiet("brushed, until it is whole");
    }

    void selectByRank() {
        QMetaObject::invokeMethod(driver::by_rank(mWindow), "trigger", Qt::QueuedConnection);
        untilQuiet("selected by rank");
    }

    /// With the bar at `position`: the one for leaves, then the one for patterns.
    void stepBar(int position, const std::string& what) {
        QWidget* bar = mWindow.findChildren<ui::BarView*>().value(position);
        const QPointF next(bar->width() - 10, bar->height() / 2.0);
        int step = 0;
        mGaps.measure(
            what,
            [&] {
                if (mTicks++ % 30 == 0) {
                    post(*bar, QEvent::MouseButtonPress, next);
                    post(*bar, QEvent::MouseButtonRelease, next);
                    ++step;
                }
                return step > BAR_STEPS;
            },
            mOut);
        untilQuiet(what + ", until it is whole");
    }

private:
    void untilQuiet(const std::string& what) {
        mWatch.restart();
        mGaps.measure(
            what, [this] { return mWatch.isQuiet(); }, mOut);
    }

    std::ostream& mOut;
    ui::Win mWindow{nullptr};
    ui::LeafView& mView = *mWindow.findChild<ui::LeafView*>();
    PaintWatch mWatch{mView};
    EventGaps mGaps;
    int mTicks = 0;
};

} // namespace

void measure_window(const QUrl& log, std::ostream& out) {
    EventGaps::printHead(out);
    Session session(out);
    session.load(log);
    session.resize();
    session.brush();
    session.selectByRank();
    session.stepBar(0, "leaf bar stepped");
    session.stepBar(1, "pattern bar stepped");
    session.load(log);
}

} // namespace bench
