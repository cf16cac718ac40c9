#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

namespace import {

enum class Format { Log, Csv, JsonLines, Rrweb, Playwright, Xes, Recorder, Side };

/// As `--from` names them; tables of either kind are "table".
QString name_of(Format format);

/// The format called so; `head` decides which kind of table. Empty for an unknown name.
std::optional<Format> format_named(const QString& name, std::string_view head);

QStringList format_names();

/// The format of a file that begins with `head`, some kilobytes of it, told by its content. Text
/// that is nothing else is a table.
std::optional<Format> tell_format(std::string_view head);

/// What a file that no format fits looks like, for a message; empty when that is not easy to tell.
QString guess(std::string_view head);

} // namespace import
