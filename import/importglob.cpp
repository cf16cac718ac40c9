#include "import/importglob.h"

namespace import {

namespace {

/// The set that begins at `from`, as an expression has it; empty when it has no end.
QString setAt(const QString& glob, qsizetype from) {
    const qsizetype end = glob.indexOf(u']', from + 2);
    if (end < 0)
        return {};
    QString set = glob.mid(from + 1, end - from - 1);
    set.replace(u'\\', QStringLiteral("\\\\")).replace(u'[', QStringLiteral("\\["));
    if (set.startsWith(u'!'))
        set.replace(0, 1, u'^');
    return u'[' + set + u']';
}

} // namespace

QRegularExpression glob_expression(const QString& glob) {
    QString expression;
    for (qsizetype at = 0; at < glob.size(); ++at) {
        const QChar c = glob[at];
        const QString set = c == u'[' ? setAt(glob, at) : QString();
        if (!set.isEmpty()) {
            expression += set;
            at = glob.indexOf(u']', at + 2);
        } else if (c == u'*') {
            expression += QStringLiteral(".*");
        } else {
            expression += c == u'?' ? QStringLiteral(".") : QRegularExpression::escape(QString(c));
        }
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(expression),
                              QRegularExpression::DotMatchesEverythingOption);
}

} // namespace import
