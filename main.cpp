#include "ui/uiwin.h"

#include <QApplication>
#include <QIcon>

namespace {

QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icon/%1.png").arg(size));
    return icon;
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("velmorix.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    QGuiApplication::setDesktopFileName(QStringLiteral(QUILLON_ID));
    QGuiApplication::setWindowIcon(windowIcon());
    ui::Win window(nullptr);
    window.show();
    return QApplication::exec();
}
