#include "bench/benchpainting.h"
#include "bench/benchwindow.h"

#include <QApplication>
#include <QTemporaryDir>

#include <iostream>

/// Without arguments: the start and the painting. With logs: a session in the window with each.
int main(int argc, char** argv) {
    const QTemporaryDir settings; // the user's own are left alone
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon bench"));
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) == QStringLiteral("--first-paint")) {
        bench::paint_first(arguments.value(1) == QStringLiteral("empty"));
        return 0;
    }
    if (arguments.isEmpty()) {
        bench::measure_start(argv[0], std::cout);
        bench::measure_painting(std::cout);
    }
    for (const QString& log : arguments) {
        std::cout << log.toStdString() << " at device pixel ratio " << qApp->devicePixelRatio()
                  << std::endl;
        bench::measure_window(QUrl::fromLocalFile(log), std::cout);
    }
}
