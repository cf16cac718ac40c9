#pragma once

#include "report/reportfindings.h"

#include <QJsonObject>

namespace report {

/// What the page that explores a log tells of its keys: names, figures and where the window shows
/// their leaves. Keys of more than 1,000 characters come without their middle.
QJsonObject page_keys(const Findings& findings);

} // namespace report
