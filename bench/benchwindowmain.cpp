#include "bench/benchwindow.h"

#include <QApplication>
#include <QTemporaryDir>

#include <iostream>

/// quillon-bench-window LOG...
int main(int argc, char** argv) {
    const QTemporaryDir settings; // the user's own are left alone
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon bench"));
    for (const QString& log : QCoreApplication::arguments().mid(1)) {
        std::cout << log.toStdString() << " at device pixel ratio " << qApp->devicePixelRatio()
                  << std::endl;
        bench::measure_window(QUrl::fromLocalFile(log), std::cout);
    }
}
