#pragma once

namespace json {

/// The number written in the UTF-8 from `begin` to `end`, not nothing, by the rules and with the
/// exact result of `QString::toDouble`. False, with `number` unchanged, when it does not convert.
/// Eight bytes can be read from `begin` on.
bool to_number(const char* begin, const char* end, double& number);

} // namespace json
