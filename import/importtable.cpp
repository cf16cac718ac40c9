#include "import/importtable.h"

#include "import/importglob.h"

#include <QStringList>

namespace import {

namespace {

struct known_table {
    const char* name;
    const char* key;
    const char* recording;
    const char* gesture;
    const char* map;
};

constexpr known_table KNOWN[] = {
    // Without target.innerText, which of an editable element is what people typed.
    {"action-logger",
     "targetApp,target.sheetName,target.id,target.name,target.title,target.tagName", "",
     "eventType", "select*=menu"},
    // Without _dd.action.position, a place within the element.
    {"datadog", "action.target.name", "session.id", "action.type", "click=down,tap=down,*=skip"},
    {"openreplay", "label", "sessionId", "type", "CLICK=down,*=skip"},
    {"sentry", "message", "", "category", "ui.click=down,*=skip"},
    {"process", "concept:name", "case:concept:name", "", ""},
};

} // namespace

QString GestureMap::set(const QString& text) {
    mMappings.clear();
    for (const QString& pair : text.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.lastIndexOf(u'=');
        const QString kind = pair.mid(equals + 1);
        const auto gesture = gesture_called(kind);
        if (equals < 1 || (!gesture && kind != u"skip"))
            return QStringLiteral("'%1' is not GLOB=down, up, menu or skip").arg(pair);
        mMappings.push_back({glob_expression(pair.left(equals)), gesture});
    }
    return {};
}

std::optional<Gesture> GestureMap::gestureOf(const QString& value) const {
    for (const mapping& each : mMappings) {
        if (each.glob.match(value).hasMatch())
            return each.gesture;
    }
    return Gesture::Down;
}

std::optional<table> preset(const QString& name) {
    for (const known_table& known : KNOWN) {
        if (name != QLatin1String(known.name))
            continue;
        table table;
        for (const QString& column : QString::fromLatin1(known.key).split(u','))
            table.key.push_back(column);
        table.recording = QString::fromLatin1(known.recording);
        table.gesture = QString::fromLatin1(known.gesture);
        table.map.set(QString::fromLatin1(known.map));
        return table;
    }
    return std::nullopt;
}

QStringList presets() {
    QStringList names;
    for (const known_table& known : KNOWN)
        names.append(QString::fromLatin1(known.name));
    return names;
}

} // namespace import
