#pragma once

#include "import/importevent.h"

#include <QRegularExpression>
#include <QString>

#include <optional>
#include <vector>

namespace import {

/// What the values of a column say of events: the first glob that matches decides.
class GestureMap {
public:
    /// Takes `GLOB=down|up|menu|skip,...`. Empty, or what is wrong with it.
    QString set(const QString& text);

    /// Empty for what is to be skipped. What no glob matches is a press.
    std::optional<Gesture> gestureOf(const QString& value) const;

private:
    struct mapping {
        QRegularExpression glob;
        std::optional<Gesture> gesture;
    };

    std::vector<mapping> mMappings;
};

/// How the columns of a table become events; a column without a name is not used.
struct table {
    std::vector<QString> key; ///< Joined by `:`, empty cells left out.
    QString recording;        ///< One recording for each value.
    QString gesture;          ///< Told by `map`; without it every row is a press.
    GestureMap map;
    QString x;
    QString y;
    QString xy;   ///< Both, as "x,y".
    QString sort; ///< A number or a time, by which the rows of a recording go.
};

/// The table of a known kind; empty for an unknown name.
std::optional<table> preset(const QString& name);

/// The names that `preset` knows.
QStringList presets();

} // namespace import
