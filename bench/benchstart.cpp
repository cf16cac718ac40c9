#include "bench/benchpainting.h"
#include "ui/uiwin.h"

#include <QApplication>
#include <QMainWindow>
#include <QProcess>

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>

namespace bench {

namespace {

constexpr int STARTS = 15;
constexpr double TARGET = 1.3; // times the empty window's
constexpr QSize SIZE(1000, 700);

/// Ends the event loop with the first paint of a widget below it.
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* /*window*/, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return false;
    }
};

/// Of all processes waited for, in milliseconds.
double childrensTime() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

double start(const QString& program, const QString& window) {
    const double before = childrensTime();
    QProcess::execute(program, {QStringLiteral("--first-paint"), window});
    return childrensTime() - before;
}

} // namespace

void paint_first(bool empty) {
    FirstPaint watch;
    qApp->installEventFilter(&watch);
    QMainWindow* window = empty ? new QMainWindow : new ui::Win(nullptr);
    window->resize(SIZE);
    window->show();
    QApplication::exec();
    delete window;
}

void measure_start(const char* program, std::ostream& out) {
    std::array<double, STARTS> ours{};
    std::array<double, STARTS> empty{};
    for (std::size_t i = 0; i < STARTS; ++i) {
        ours.at(i) = start(QString::fromLocal8Bit(program), QStringLiteral("ours"));
        empty.at(i) = start(QString::fromLocal8Bit(program), QStringLiteral("empty"));
    }
    std::nth_element(ours.begin(), ours.begin() + STARTS / 2, ours.end());
    std::nth_element(empty.begin(), empty.begin() + STARTS / 2, empty.end());
    const double a = ours.at(STARTS / 2);
    const double b = empty.at(STARTS / 2);
    out << std::fixed << std::setprecision(1) << "start to first paint " << a
        << " ms, an empty main window " << b << " ms: " << std::setprecision(2) << a / b
        << " times, target " << TARGET << std::endl;
}

} // namespace bench
