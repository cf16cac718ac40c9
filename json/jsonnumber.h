#pragma once

#include <QStringView>

namespace json {

/// The number written in `span`, by the rules and with the exact result of `QString::toDouble`.
/// False, with `number` unchanged, when it does not convert.
bool toNumber(QStringView span, double& number);

} // namespace json
