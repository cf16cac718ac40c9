#include "report/reportpagekeys.h"

#include "report/reportshortkeys.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"

#include <QJsonArray>
#include <QStringList>

#include <cmath>

namespace report {

namespace {

constexpr qsizetype LONGEST_KEY = 1000;
constexpr int SHORT_COLUMNS = 60;
constexpr QChar OMISSION = u'…'; // as short keys have it

QString shortened(const QString& key) {
    if (key.size() <= LONGEST_KEY)
        return key;
    return key.first(LONGEST_KEY / 2) + OMISSION + key.last(LONGEST_KEY / 2);
}

/// As little of the key as tells it from all others.
QString nameOf(const QString& key, const ShortKeys& shortKeys) {
    const QString name = shortKeys.shortest(key, SHORT_COLUMNS);
    return name.startsWith(OMISSION) && !key.startsWith(OMISSION) ? name.sliced(1) : name;
}

QStringList validKeys(const Findings& findings) {
    QStringList keys;
    for (const key_findings& key : findings.keys()) {
        if (key.branch->isValid())
            keys.append(key.branch->mKey);
    }
    return keys;
}

/// Whether the log tells where the leaf is.
bool hasPlace(const ui::Leaf& leaf) {
    return !leaf.mBounds.isEmpty() && std::isfinite(leaf.mBounds.right()) &&
           std::isfinite(leaf.mBounds.bottom());
}

/// A log whose leaves are all at one point does not tell where they are.
bool areApart(const ui::LeafList& leaves) {
    const ui::Leaf* first = nullptr;
    for (const ui::Leaf* leaf : leaves) {
        if (leaf->isMenu() || !hasPlace(*leaf))
            continue;
        if (first && leaf->mNorm != first->mNorm)
            return true;
        first = first ? first : leaf;
    }
    return false;
}

/// Where the leaves are among each other, as the window has them.
void insertPlaces(const Findings& findings, QJsonObject& keys) {
    ui::LeafList leaves;
    ui::LeafBuilder(leaves).from(findings.log().nest);
    ui::LeafLayout(leaves).layout();
    const bool apart = areApart(leaves) || leaves.size() - leaves.menuCount() == 1;
    QJsonArray menus;
    std::vector<QJsonValue> places(2 * findings.keys().size());
    for (const ui::Leaf* leaf : leaves) {
        if (leaf->isMenu()) {
            menus.append(leaf->mIndex);
        } else if (apart && hasPlace(*leaf)) {
            const std::size_t at = 2 * static_cast<std::size_t>(leaf->mIndex);
            places[at] = leaf->mNorm.x();
            places[at + 1] = leaf->mNorm.y();
        }
    }
    QJsonArray all;
    for (const QJsonValue& place : places)
        all.append(place);
    keys.insert(QStringLiteral("menus"), menus);
    keys.insert(QStringLiteral("places"), all);
}

} // namespace

QJsonObject page_keys(const Findings& findings) {
    const ShortKeys shortKeys(validKeys(findings));
    QJsonArray keys;
    QJsonArray names;
    QJsonArray events;
    QJsonArray recordings;
    for (const key_findings& key : findings.keys()) {
        const QString& text = key.branch->mKey;
        keys.append(shortened(text));
        names.append(key.branch->isValid() ? nameOf(text, shortKeys) : QString());
        events.append(key.figures->events);
        recordings.append(key.figures->recordings);
    }
    QJsonObject object{{QStringLiteral("keys"), keys},
                       {QStringLiteral("names"), names},
                       {QStringLiteral("keyEvents"), events},
                       {QStringLiteral("keyRecordings"), recordings}};
    insertPlaces(findings, object);
    return object;
}

} // namespace report
