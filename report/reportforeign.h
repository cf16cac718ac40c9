#pragma once

#include <QByteArrayView>
#include <QString>

namespace report {

/// What a text that is no log looks like by its first bytes, as in "it looks like XML", and whether
/// quillon-import makes a log of it; empty where that is not easy to tell.
QString foreign_form(QByteArrayView beginning);

} // namespace report
