#pragma once

class QString;
class QUrl;

namespace ui {

/// Takes the URL under `key` out of the program's settings: an empty one stands there, on the disk
/// too, when this returns. Empty when there is none, or something else. A lock that a killed
/// program left on the settings is dropped. Main thread only.
QUrl take_url(const QString& key);

} // namespace ui
