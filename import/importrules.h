#pragma once

#include "import/importevent.h"

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>
#include <vector>

namespace import {

/// What the rules say of how a key is made, before it is one.
struct naming {
    /// Sources of names in the order in which they are tried.
    std::vector<Named> order{Named::Test,  Named::Aria, Named::Id,  Named::Name,
                             Named::Title, Named::Text, Named::Path};
    /// Attributes that hold a test id, besides the well-known ones; tried before them.
    std::vector<std::string> testIds;
    /// How many parents up an element that does nothing itself gives way to one that does.
    int up = 4;
    /// Whether runs of digits in ids, names and paths stay as they are instead of becoming `#`.
    bool keepsDigits = false;
};

/// The rules by which people make keys fit their question. Text, one rule a line:
///
///     names test,aria,id,name,title,text,path
///     test-id ATTRIBUTE
///     omit NAME
///     up N
///     digits # | digits keep
///     ignore PATTERN
///     merge PATTERN = KEY
///     rename PATTERN = NAME
///
/// A pattern is a glob (`*`, `?`, `[...]`) that the whole key must match, or a regular expression
/// between slashes that must match somewhere in it; either may stand in double quotes. Blank lines
/// and lines that begin with `#` are passed over, and `/EXPRESSION/ = KEY` is a `merge`. However
/// the lines stand: first keys are ignored, then merged (KEY may hold `\1` and on for the groups of
/// an expression), then parts of keys, what stands between colons, are renamed, and last digits
/// become `#`; of the same kind, in the order of the lines.
class Rules {
public:
    /// Takes one line. Empty when it is a rule or nothing; else what is wrong with it.
    QString add(const QString& line);

    /// Takes the lines of a file. Empty, or what is wrong with it or with a line of it.
    QString addFile(const QString& path);

    const import::naming& naming() const { return mNaming; }

    /// What becomes of a key.
    struct outcome {
        std::optional<QString> key; ///< Empty when the key is ignored.
        std::vector<int> matched;   ///< The rules that had a part in it, by their place in `lines`.
    };

    outcome apply(const QString& key) const;

    /// The lines of rules about finished keys, as written.
    const QStringList& lines() const { return mLines; }

    /// Whether no rule is about finished keys, so that `apply` changes none.
    bool isIdle() const { return mLines.isEmpty(); }

private:
    enum class Verb { Ignore, Merge, Rename, Digits };

    struct rule {
        Verb verb;
        QRegularExpression pattern;
        QString target;
        int line = 0;
    };

    static QString changed(const rule& by, const QString& key);
    QString addNames(const QString& rest);
    QString addOmission(const QString& rest);
    QString addUp(const QString& rest);
    QString addDigits(const QString& rest, const QString& line);
    QString addPattern(Verb verb, const QString& rest, const QString& line);
    void keep(Verb verb, const QRegularExpression& pattern, const QString& target,
              const QString& line);

    import::naming mNaming;
    std::vector<rule> mRules; // by verb, then in the order of the lines
    QStringList mLines;
};

} // namespace import
