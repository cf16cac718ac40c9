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
    const char* x;
    const char* y;
    const char* xy;
    const char* sort;
};

constexpr known_table KNOWN[] = {
    // Without target.innerText, which of an editable element is what people typed.
    {"action-logger",
     "targetApp,target.sheetName,target.id,target.name,target.title,target.tagName", "",
     "eventType", "select*=menu", "", "", "", ""},
    {"datadog", "action.target.name", "session.id", "action.type", "click=down,tap=down,*=skip",
     "_dd.action.position.x", "_dd.action.position.y", "", ""},
    {"openreplay", "label", "sessionId", "type", "CLICK=down,*=skip", "", "", "", ""},
    {"sentry", "message", "", "category", "ui.click=down,*=skip", "", "", "", ""},
    {"process", "concept:name", "case:concept:name", "", "", "", "", "", ""},
};

std::optional<std::optional<Gesture>> toGesture(const QString& name) {
    if (name == u"down")
        return Gesture::Down;
    if (name == u"up")
        return Gesture::Up;
    if (name == u"menu")
        return Gesture::Menu;
    if (name == u"skip")
        return std::optional<Gesture>();
    return std::nullopt;
}

} // namespace

QString GestureMap::set(const QString& text) {
    mMappings.clear();
    for (const QString& pair : text.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype equals = pair.lastIndexOf(u'=');
        const auto gesture = toGesture(pair.mid(equals + 1));
        if (equals < 1 || !gesture)
            return QStringLiteral("'%1' is not GLOB=down, up, menu or skip").arg(pair);
        mMappings.push_back({glob_expression(pair.left(equals)), *gesture});
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
        table.x = QString::fromLatin1(known.x);
        table.y = QString::fromLatin1(known.y);
        table.xy = QString::fromLatin1(known.xy);
        table.sort = QString::fromLatin1(known.sort);
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
