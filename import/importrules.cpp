#include "import/importrules.h"

#include "import/importglob.h"

#include <QFile>

#include <algorithm>

namespace import {

namespace {

constexpr int HIGHEST_UP = 100;

/// The source of names called so; empty for any other text, and for keys as given.
std::optional<Named> toNamed(const QString& name) {
    const auto found =
        std::find(NAMED_BY.begin(), NAMED_BY.end() - 1, name.trimmed().toStdString());
    if (found == NAMED_BY.end() - 1)
        return std::nullopt;
    return static_cast<Named>(found - NAMED_BY.begin());
}

QString unknownName(const QString& name) {
    return QStringLiteral("no name is made of '%1'; known are test, aria, id, name, title, text "
                          "and path")
        .arg(name.trimmed());
}

/// Takes the pattern off the front of `rest`. Empty when there is none, or its end is missing.
QString takePattern(QString& rest) {
    const QChar first = rest.isEmpty() ? QChar() : rest.front();
    if (first == u'"' || first == u'/') {
        const qsizetype end =
            rest.indexOf(QRegularExpression(QString(first) + QStringLiteral("(\\s|$)")), 1);
        const QString pattern = end < 0 ? QString() : rest.left(end + 1);
        rest = rest.mid(pattern.size()).trimmed();
        return first == u'"' ? pattern.mid(1, std::max<qsizetype>(pattern.size() - 2, 0)) : pattern;
    }
    const qsizetype equals = rest.indexOf(QStringLiteral(" = "));
    QString pattern = equals < 0 ? rest : rest.left(equals).trimmed();
    rest = equals < 0 ? QString() : rest.mid(equals + 1);
    return pattern;
}

QRegularExpression toExpression(const QString& pattern) {
    if (pattern.size() > 1 && pattern.startsWith(u'/') && pattern.endsWith(u'/'))
        return QRegularExpression(pattern.mid(1, pattern.size() - 2));
    return glob_expression(pattern);
}

/// `target` with what the groups of the match hold in the place of `\1` and on.
QString filled(const QString& target, const QRegularExpressionMatch& match) {
    QString key = target;
    for (int group = match.lastCapturedIndex(); group > 0; --group)
        key.replace(QStringLiteral("\\%1").arg(group), match.captured(group));
    return key;
}

QString renamed(const QString& key, const QRegularExpression& pattern, const QString& name) {
    QStringList parts = key.split(u':');
    for (QString& part : parts) {
        if (pattern.match(part).hasMatch())
            part = name;
    }
    return parts.join(u':');
}

} // namespace

QString Rules::add(const QString& line) {
    const QString text = line.trimmed();
    if (text.isEmpty() || text.startsWith(u'#'))
        return {};
    if (text.startsWith(u'/'))
        return addPattern(Verb::Merge, text, text);
    const QString verb = text.section(u' ', 0, 0);
    const QString rest = text.section(u' ', 1).trimmed();
    if (verb == u"names")
        return addNames(rest);
    if (verb == u"test-id") {
        mNaming.testIds.push_back(rest.toStdString());
        return rest.isEmpty() ? QStringLiteral("no attribute is named") : QString();
    }
    if (verb == u"omit")
        return addOmission(rest);
    if (verb == u"up")
        return addUp(rest);
    if (verb == u"digits")
        return addDigits(rest, text);
    if (verb == u"ignore")
        return addPattern(Verb::Ignore, rest, text);
    if (verb == u"merge")
        return addPattern(Verb::Merge, rest, text);
    if (verb == u"rename")
        return addPattern(Verb::Rename, rest, text);
    return QStringLiteral("no rule is called '%1'").arg(verb);
}

QString Rules::addFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    for (int line = 1; !file.atEnd(); ++line) {
        const QString fault = add(QString::fromUtf8(file.readLine()));
        if (!fault.isEmpty())
            return QStringLiteral("%1:%2: %3").arg(path).arg(line).arg(fault);
    }
    return {};
}

QString Rules::addNames(const QString& rest) {
    std::vector<Named> order;
    for (const QString& name : rest.split(u',')) {
        const auto named = toNamed(name);
        if (!named)
            return unknownName(name);
        order.push_back(*named);
    }
    mNaming.order = order;
    return {};
}

QString Rules::addOmission(const QString& rest) {
    const auto named = toNamed(rest);
    if (!named)
        return unknownName(rest);
    std::erase(mNaming.order, *named);
    return {};
}

QString Rules::addUp(const QString& rest) {
    bool isNumber = false;
    const int up = rest.toInt(&isNumber);
    if (!isNumber || up < 0 || up > HIGHEST_UP)
        return QStringLiteral("'%1' is no number from 0 to %2").arg(rest).arg(HIGHEST_UP);
    mNaming.up = up;
    return {};
}

QString Rules::addDigits(const QString& rest, const QString& line) {
    mNaming.keepsDigits = rest == u"keep";
    if (rest == u"#")
        keep(Verb::Digits, QRegularExpression(QStringLiteral("[0-9]+")), QStringLiteral("#"), line);
    else if (!mNaming.keepsDigits)
        return QStringLiteral("digits become # or are kept: 'digits #', 'digits keep'");
    return {};
}

QString Rules::addPattern(Verb verb, const QString& rest, const QString& line) {
    QString target = rest;
    const QString pattern = takePattern(target);
    if (pattern.isEmpty())
        return QStringLiteral("no pattern is given, or its end is missing");
    const QRegularExpression expression = toExpression(pattern);
    if (!expression.isValid())
        return QStringLiteral("'%1' is no regular expression: %2")
            .arg(pattern, expression.errorString());
    const bool hasTarget = target.startsWith(u'=');
    target = target.mid(1).trimmed();
    if (verb == Verb::Ignore && hasTarget)
        return QStringLiteral("a key that is ignored becomes nothing");
    if (verb != Verb::Ignore && target.isEmpty())
        return QStringLiteral("what the key becomes is missing: '... = KEY'");
    if (target.contains(u'"'))
        return QStringLiteral("a key cannot hold a quote");
    keep(verb, expression, target, line);
    return {};
}

/// Behind those of its verb, as verbs take turns.
void Rules::keep(Verb verb, const QRegularExpression& pattern, const QString& target,
                 const QString& line) {
    const auto behind = std::find_if(mRules.begin(), mRules.end(),
                                     [verb](const rule& known) { return known.verb > verb; });
    mRules.insert(behind, {verb, pattern, target, static_cast<int>(mLines.size())});
    mLines.append(line);
}

/// What the rule makes of a key that it does not ignore; the key itself when it says nothing of it.
QString Rules::changed(const rule& by, const QString& key) {
    if (by.verb == Verb::Rename)
        return renamed(key, by.pattern, by.target);
    if (by.verb == Verb::Digits)
        return QString(key).replace(by.pattern, by.target);
    const QRegularExpressionMatch match = by.pattern.match(key);
    return match.hasMatch() ? filled(by.target, match) : key;
}

Rules::outcome Rules::apply(const QString& key) const {
    outcome result{key, {}};
    for (const rule& each : mRules) {
        const bool ignores =
            each.verb == Verb::Ignore && each.pattern.match(*result.key).hasMatch();
        const QString next = each.verb == Verb::Ignore ? *result.key : changed(each, *result.key);
        if (!ignores && next == *result.key)
            continue;
        result.matched.push_back(each.line);
        result.key = next;
        if (ignores) {
            result.key.reset();
            break;
        }
    }
    return result;
}

} // namespace import
