#pragma once

#include "import/importcollector.h"
#include "import/importkeytable.h"
#include "import/importrules.h"

#include <QString>

namespace import {

/// What an import came to, for people: recordings, events, keys, how they were named, what was
/// skipped and why, and what each rule met. Lines for standard error.
QString summary(const Collector& collector, const KeyTable& keys, const Rules& rules);

/// The keys with their events and how they were named, the most frequent first, for people to
/// write rules from.
QString key_list(const KeyTable& keys);

} // namespace import
