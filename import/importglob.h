#pragma once

#include <QRegularExpression>
#include <QString>

namespace import {

/// The expression that matches what the whole glob does: `*` any text, `?` any character, `[...]`
/// one of some, `[!...]` none of them; everything else is itself, slashes and colons too.
QRegularExpression glob_expression(const QString& glob);

} // namespace import
