#pragma once

#include "collections/managedlist.h"
#include "json/jsonstack.h"
#include "json/jsonstate.h"

#include <QString>
#include <QStringView>

class QIODevice;

namespace json {

class Reader;
class Text;

/// A streaming reader of JSON-like text: walks it once and reports to the current reader what it
/// meets. It builds no tree and checks only what its stack depends on. A parser serves any number
/// of texts, one after the other, on one thread.
///
/// Strings have no escapes: the first quote ends them. A bare value ends at whitespace, a comma or
/// a closing bracket only; other structure inside it acts as structure all the same. A closing
/// bracket also closes the open brackets of the other kind above its own. A NUL ends the text, and
/// a value still pending at the end is not reported.
///
/// A member's value takes its name with it, whether it is a string, a number or another bare word:
/// in `[{"t": 1}, "s"]` the name "t" never turns up as an element of the array.
class Parser : public Stack {
public:
    Parser();
    ~Parser() override;

    /// Reads all of `device`, in UTF-8 or, by their byte order marks, in UTF-16 or UTF-32, and
    /// reports it to `reader`. Neither is owned. False for a null argument, for a string that is
    /// not closed, for a closing bracket that finds none to close, and when memory is exhausted
    /// here or in a reader (`std::bad_alloc`); what was reported before stays reported.
    bool parse(QIODevice* device, Reader* reader);

    bool push(Reader* reader) override;
    int arrayIndex() const override;

    /// Empties the stack; called by a reader, it ends the parse.
    void clear();

private:
    bool pushToken(int token);
    bool pushState(Reader* reader, int token);
    int groupToken() const;
    void incArrayIdx();
    bool removeTo(int mask);
    bool popTo(int mask);
    bool getCurrentReader();
    void forgetText();

    bool handle(Text& text);
    const QChar* handleCharacter(const QChar* here, Text& text);
    const QChar* handleString(const QChar* start, Text& text);
    bool readOn(Text& text, const QChar*& here);
    bool startObject();
    bool startArray();
    void reportString(QStringView text);
    const QChar* handleBare(const QChar* here, const QChar* end);
    const QChar* skipSpaces(const QChar* here, const QChar* end) const;
    bool hasPending() const;
    bool takeNumber(const QChar* here, double& number);
    void flushValue(const QChar* here);
    void flushArrayValue(const QChar* here);

    ManagedList<State*> mStates; // the front is the top
    Reader* mCurrent = nullptr;
    QString mKey; // refers to the text's piece or is a copy: the last string outside value position
    QString mValue;
    bool mIsValue = false;              // a member's value is due
    const QChar* mValueStart = nullptr; // of the pending bare value
    const QChar* mNumberEnd = nullptr;  // of the number that the bare value begins with
    double mNumber = 0;
};

} // namespace json
