#include "ui/uiwin.h"

#include <QApplication>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorix"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("velmorix.example"));
    QCoreApplication::setApplicationName(QStringLiteral("Quillon"));
    ui::Win window(nullptr);
    window.show();
    return QApplication::exec();
}
