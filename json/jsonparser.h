#pragma once

#include "collections/managedlist.h"
#include "json/jsonstack.h"
#include "json/jsonstate.h"

#include <QString>

class QIODevice;

namespace json {

class Reader;

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
    bool joinBracket(Reader* reader);
    bool pushToken(int token);
    bool pushState(Reader* reader, int token);
    int groupToken() const;
    void incArrayIdx();
    bool removeTo(int mask);
    bool popTo(int mask);
    bool getCurrentReader();
    void forgetText();

    struct Scan;

    bool handle(Scan& scan);
    const char* handleMark(Scan& scan, const char* here);
    const char* handleElements(Scan& scan, const char* here);
    const char* handleString(Scan& scan, const char* start);
    const char* handleWide(Scan& scan, const char* here);
    const char* handleColon(const Scan& scan, const char* next);
    void handleBare(const char* here);
    bool readOn(Scan& scan, const char*& keep);
    bool hasPending() const;
    bool isEnd(Scan& scan, const char* here);
    bool startObject();
    bool startArray();
    void reportString(Scan& scan, const char* begin, const char* end);
    void reportElement(Scan& scan, const char* begin, const char* end);
    void reportNumber(const char* begin, const char* end);
    void flushValue(const char* here);
    void flushArrayValue(const char* here);

    ManagedList<State*> mStates; // the front is the top
    Reader* mCurrent = nullptr;
    const QString* mKey; // the last string outside value position, owned by the text's strings
    QString mValue;
    bool mIsValue = false;             // a member's value is due
    const char* mValueStart = nullptr; // of the pending bare value
};

} // namespace json
