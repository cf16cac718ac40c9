#pragma once

class QIODevice;

namespace domain {

class NestReader;

/// Reads the log in `device`, which is open and not owned, into the nest that `reader` has begun.
/// False when the text is damaged as `json::Parser::parse` tells; the recordings that were closed
/// before stand in the nest.
bool read_log(QIODevice& device, NestReader& reader);

} // namespace domain
