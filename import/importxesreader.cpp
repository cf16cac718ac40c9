#include "import/importxesreader.h"

#include "import/importtext.h"

#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

namespace import {

namespace {

const QString NAME = QStringLiteral("concept:name");
const QString TIME = QStringLiteral("time:timestamp");
const QString TRANSITION = QStringLiteral("lifecycle:transition");
constexpr int DEEPEST = 1000; // elements within each other
constexpr qsizetype LONGEST_VALUE = 4096;

/// What is read of an event, and no more of it than a key can hold.
QSet<QString> wantedBy(const table& table) {
    QSet<QString> wanted{NAME, TIME, TRANSITION, table.gesture, table.x, table.y};
    for (const QString& name : table.key)
        wanted.insert(name);
    return wanted;
}

/// Follows the elements of a log; holds the attributes of one event.
class XesEvents {
public:
    XesEvents(const table& table, const QString& lifecycle, Collector& into)
        : mTable(table)
        , mLifecycle(lifecycle)
        , mWanted(wantedBy(table))
        , mInto(into) {}

    /// Empty, or why it ended before the log did.
    QString follow(QXmlStreamReader& xml) {
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement())
                start(xml);
            else if (xml.isEndElement())
                end(xml.name());
            if (mDepth > DEEPEST)
                return QStringLiteral("line %1: elements stand too deep within each other")
                    .arg(xml.lineNumber());
        }
        mInto.endRecording();
        return xml.hasError()
                   ? QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString())
                   : QString();
    }

private:
    void start(const QXmlStreamReader& xml) {
        ++mDepth;
        if (xml.name() == u"trace") {
            mInto.beginRecording();
        } else if (xml.name() == u"event") {
            mEventAt = mDepth;
            mAttributes.clear();
        } else if (mEventAt > 0 && mDepth == mEventAt + 1) {
            takeAttribute(xml.attributes());
        }
    }

    void takeAttribute(const QXmlStreamAttributes& attribute) {
        const QString key = attribute.value(QLatin1String("key")).left(LONGEST_VALUE).toString();
        if (mWanted.contains(key))
            mAttributes.insert(
                key, attribute.value(QLatin1String("value")).left(LONGEST_VALUE).toString());
    }

    void end(QStringView name) {
        if (name == u"trace")
            mInto.endRecording();
        if (mDepth == mEventAt) {
            addEvent();
            mEventAt = 0;
        }
        --mDepth;
    }

    QString attribute(const QString& key) const { return mAttributes.value(key); }

    void addEvent() {
        const QString transition = attribute(TRANSITION);
        if (!transition.isEmpty() && transition.compare(mLifecycle, Qt::CaseInsensitive) != 0)
            return mInto.skip(transition.toStdString());
        const auto gesture = mTable.gesture.isEmpty()
                                 ? Gesture::Down
                                 : mTable.map.gestureOf(attribute(mTable.gesture));
        if (!gesture)
            return mInto.skip(attribute(mTable.gesture).toStdString());
        const std::string key = keyOfEvent();
        event event{*gesture, key, Named::Given, 0, placeOfEvent()};
        event.time = to_time(attribute(TIME).toStdString()).value_or(0);
        mInto.add(event);
    }

    std::string keyOfEvent() const {
        if (mTable.key.empty())
            return cleaned(attribute(NAME).toStdString());
        std::string key;
        for (const QString& name : mTable.key) {
            const std::string part = cleaned(attribute(name).toStdString());
            if (!part.empty())
                key += (key.empty() ? "" : ":") + part;
        }
        return key;
    }

    std::optional<place> placeOfEvent() {
        if (mTable.x.isEmpty())
            return std::nullopt;
        const QString x = attribute(mTable.x);
        const QString y = attribute(mTable.y);
        const auto left = to_number(x.toStdString());
        const auto top = to_number(y.toStdString());
        if (left && top)
            return place{*left, *top};
        if (!x.isEmpty() || !y.isEmpty())
            mInto.report("bad position");
        return std::nullopt;
    }

    const table& mTable;
    const QString& mLifecycle;
    const QSet<QString> mWanted;
    Collector& mInto;
    QHash<QString, QString> mAttributes;
    int mDepth = 0;
    int mEventAt = 0; // the depth of the event at hand; 0 outside of events
};

} // namespace

outcome XesReader::read(QIODevice& source, Collector& into) {
    QXmlStreamReader xml(&source);
    return outcome_of(XesEvents(mTable, mLifecycle, into).follow(xml));
}

} // namespace import
