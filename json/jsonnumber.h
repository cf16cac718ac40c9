#pragma once

#include <QStringView>

namespace json {

/// The number written in `span`, which is not empty, by the rules and with the exact result of
/// `QString::toDouble`. False, with `number` unchanged, when it does not convert.
bool to_number(QStringView span, double& number);

/// Reads what most numbers of a log are: digits with at most one point between them, and perhaps a
/// minus before them. Returns the place behind the number, which is the exact result of
/// `QString::toDouble` for that much text; null, with `number` unchanged, for anything else and for
/// more digits than a double surely holds.
const QChar* read_decimal(const QChar* here, const QChar* end, double& number);

} // namespace json
