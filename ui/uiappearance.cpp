#include "ui/uiappearance.h"

#include "ui/leaves/uilook.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>

namespace ui {

namespace {

const QString FILE_PREFIX = QStringLiteral("file:///"); // before a path, relative or not

QString textOf(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

/// The toolkit keeps what it is to read from a file as the file's name.
QString applicationSheet() {
    const QString sheet = qApp->styleSheet();
    return sheet.startsWith(FILE_PREFIX) ? textOf(sheet.mid(FILE_PREFIX.size())) : sheet;
}

} // namespace

void set_appearance(const Look& look) {
    QApplication::setPalette(look.palette());
    const QString own = Look::applicationSheet();
    const QString others = applicationSheet();
    if (!others.startsWith(own))
        qApp->setStyleSheet(own + others); // the later of two rules wins
}

} // namespace ui
