#include "json/jsonparser.h"

#include "json/jsonkind.h"
#include "json/jsonnumber.h"
#include "json/jsonquote.h"
#include "json/jsonreader.h"
#include "json/jsontext.h"

#include <exception>
#include <new>
#include <utility>

namespace json {

namespace {

const StateFactory STATE_FACTORY;
const QString EMPTY_KEY;

/// Makes `out` refer to the text instead of copying it.
void getReference(const QChar* text, qsizetype length, QString& out) {
    if (length < 1)
        out.clear();
    else
        out = QString::fromRawData(text, length);
}

/// The first character from `here` on that is of another kind.
const QChar* skip(Kind kind, const QChar* here, const QChar* end) {
    while (here != end && kind_of(*here) == kind)
        ++here;
    return here;
}

} // namespace

Parser::Parser()
    : mStates(STATE_FACTORY) {}

Parser::~Parser() {
    clear();
}

bool Parser::parse(QIODevice* device, Reader* reader) {
    if (!device || !reader)
        return false;
    clear();
    forgetText();
    if (!push(reader))
        return false;
    bool done = false;
    try {
        Text text(*device);
        done = handle(text);
    } catch (const std::bad_alloc&) {
        done = false;
    }
    forgetText();
    return done;
}

bool Parser::push(Reader* reader) {
    if (!reader || !pushState(reader, 0))
        return false;
    mCurrent = reader;
    return true;
}

int Parser::arrayIndex() const {
    return mStates.isEmpty() ? 0 : (*mStates.begin())->arrayIdx;
}

void Parser::clear() {
    mStates.clear();
    mCurrent = nullptr;
}

bool Parser::pushToken(int token) {
    mIsValue = false;
    return pushState(nullptr, token);
}

bool Parser::pushState(Reader* reader, int token) {
    const State* below = mStates.isEmpty() ? nullptr : mStates.front();
    Reader* const current = reader || !below ? reader : below->current;
    const int group = token || !below ? token : below->group;
    try {
        *mStates.pushFront() = {reader, token, 0, current, group};
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

int Parser::groupToken() const {
    return mStates.isEmpty() ? 0 : (*mStates.begin())->group;
}

void Parser::incArrayIdx() {
    if (!mStates.isEmpty())
        ++mStates.front()->arrayIdx;
}

bool Parser::removeTo(int mask) {
    while (!mStates.isEmpty()) {
        if (Reader* reader = mStates.front()->reader) {
            if (mask & TOKEN_OBJECT)
                reader->endObject(*this);
            if (mask & TOKEN_ARRAY)
                reader->endArray(*this);
            reader->jsonPop();
            if (mStates.isEmpty()) // cleared by the reader
                return false;
        }
        const int token = mStates.front()->token;
        mStates.popFront();
        if (token & mask)
            return true;
    }
    return false;
}

bool Parser::popTo(int mask) {
    mCurrent = nullptr;
    mIsValue = false;
    return removeTo(mask) && getCurrentReader();
}

bool Parser::getCurrentReader() {
    mCurrent = mStates.isEmpty() ? nullptr : mStates.front()->current;
    return mCurrent;
}

void Parser::forgetText() {
    mKey.clear();
    mValue.clear();
    mIsValue = false;
    mValueStart = nullptr;
    mNumberEnd = nullptr;
}

/// Goes on to the next piece of the text. What is still referred to is kept: `here` moves with its
/// place in the text.
bool Parser::readOn(Text& text, const QChar*& here) {
    const QChar* const keep = mValueStart ? mValueStart : here;
    const qsizetype kept = here - keep;
    if (!mKey.isEmpty())
        mKey.detach(); // no longer a reference to the text
    const bool more = text.readOn(keep);
    if (mValueStart)
        mValueStart = text.begin();
    mNumberEnd = nullptr; // the number may go on
    here = text.begin() + kept;
    return more;
}

/// Whether a flush would do something. If not, whitespace does nothing.
inline bool Parser::hasPending() const {
    return mValueStart || (!mKey.isEmpty() && groupToken() == TOKEN_ARRAY);
}

/// The place after the whitespace at `here`, as far as it does nothing.
inline const QChar* Parser::skipSpaces(const QChar* here, const QChar* end) const {
    return hasPending() ? here : skip(Kind::Space, here, end);
}

/// The place after the characters of a bare value that begin at `here`, perhaps not all of them.
inline const QChar* Parser::handleBare(const QChar* here, const QChar* end) {
    if (!mValueStart) {
        mValueStart = here;
        mNumberEnd = read_decimal(here, end, mNumber);
        if (mNumberEnd)
            return mNumberEnd;
    }
    return skip(Kind::Bare, here + 1, end);
}

/// The place to go on from; null when the parse has failed.
inline const QChar* Parser::handleCharacter(const QChar* here, Text& text) {
    const QChar* const next = here + 1;
    switch (kind_of(*here)) {
    case Kind::OpenObject:
        return startObject() ? next : nullptr;
    case Kind::CloseObject:
        flushValue(here);
        return popTo(TOKEN_OBJECT) ? next : nullptr;
    case Kind::OpenArray:
        return startArray() ? next : nullptr;
    case Kind::CloseArray:
        flushArrayValue(here);
        return popTo(TOKEN_ARRAY) ? next : nullptr;
    case Kind::Colon:
        mIsValue = true;
        return skipSpaces(next, text.end());
    case Kind::Comma:
        flushValue(here);
        mIsValue = false;
        return skipSpaces(next, text.end());
    case Kind::Quote:
        return handleString(next, text);
    case Kind::Space:
        flushValue(here);
        return skipSpaces(next, text.end());
    case Kind::Bare:
        return handleBare(here, text.end());
    }
    return nullptr;
}

bool Parser::handle(Text& text) {
    const QChar* here = text.end();
    while (here != text.end() || readOn(text, here)) {
        if (!mCurrent)
            return false;
        here = handleCharacter(here, text);
        if (!here)
            return false;
    }
    return true;
}

/// The place after the closing quote of the string that begins at `start`, null without one.
const QChar* Parser::handleString(const QChar* start, Text& text) {
    const QChar* quote = find_quote(start, text.end());
    while (quote == text.end()) {
        const qsizetype searched = quote - start;
        if (!readOn(text, start))
            return nullptr;
        quote = find_quote(start + searched, text.end());
    }
    if (mIsValue)
        reportString({start, quote});
    else
        getReference(start, quote - start, mKey);
    return quote + 1;
}

bool Parser::startObject() {
    if (!pushToken(TOKEN_OBJECT))
        return false;
    mCurrent->startObject(*this, mKey);
    mKey.clear();
    return true;
}

bool Parser::startArray() {
    if (!pushToken(TOKEN_ARRAY))
        return false;
    mCurrent->startArray(*this, mKey);
    mKey.clear();
    return true;
}

void Parser::reportString(QStringView text) {
    mIsValue = false;
    if (text.isEmpty())
        mValue.clear();
    else
        mValue.setUnicode(text.data(), text.size()); // into the storage of the value before
    mCurrent->jsonString(*this, mKey, mValue);
    mKey.clear();
}

/// Takes the pending bare value, which ends before `here`. False when there is none, or no number.
bool Parser::takeNumber(const QChar* here, double& number) {
    const QChar* const start = std::exchange(mValueStart, nullptr);
    if (!start)
        return false;
    if (mNumberEnd != here)
        return to_number({start, here}, number);
    number = mNumber;
    return true;
}

void Parser::flushValue(const QChar* here) {
    if (groupToken() == TOKEN_ARRAY)
        return flushArrayValue(here);
    if (!mValueStart)
        return;
    double number = 0;
    const bool isNumber = takeNumber(here, number);
    if (!mIsValue)
        return;
    if (isNumber && mCurrent)
        mCurrent->jsonFloat(*this, mKey, number);
    mKey.clear();
}

void Parser::flushArrayValue(const QChar* here) {
    if (!mKey.isEmpty()) {
        mCurrent->jsonString(*this, EMPTY_KEY, mKey);
        incArrayIdx();
        mKey.clear();
    }
    double number = 0;
    if (takeNumber(here, number) && mCurrent) {
        mCurrent->jsonFloat(*this, EMPTY_KEY, number);
        incArrayIdx();
    }
}

} // namespace json
