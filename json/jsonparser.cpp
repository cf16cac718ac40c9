#include "json/jsonparser.h"

#include "json/jsonkind.h"
#include "json/jsonnumber.h"
#include "json/jsonreader.h"

#include <QIODevice>
#include <QTextStream>

#include <exception>
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
        out.setRawData(text, length);
}

QStringView beforeNul(QStringView text) {
    const qsizetype nul = text.indexOf(u'\0');
    return nul < 0 ? text : text.first(nul);
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
    const QString text = QTextStream(device).readAll();
    const bool done = handle(text);
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
    const State below = mStates.isEmpty() ? State() : *mStates.front();
    try {
        *mStates.pushFront() = {reader, token, 0, reader ? reader : below.current,
                                token ? token : below.group};
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
}

bool Parser::handle(const QString& text) {
    if (text.isEmpty())
        return true;
    if (!mCurrent)
        return false;
    const QStringView scanned = beforeNul(text);
    const QChar* const end = scanned.end();
    const QChar* here = scanned.begin();
    while (here != end) {
        if (!mCurrent)
            return false;
        here = handleCharacter(here, end);
        if (!here)
            return false;
    }
    return true;
}

const QChar* Parser::handleCharacter(const QChar* here, const QChar* end) {
    const QChar* const next = here + 1;
    switch (kindOf(*here)) {
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
        return next;
    case Kind::Comma:
        flushValue(here);
        mIsValue = false;
        return next;
    case Kind::Quote:
        return handleString(next, end);
    case Kind::Space:
        flushValue(here);
        return next;
    case Kind::Bare:
        if (!mValueStart)
            mValueStart = here;
        return next;
    }
    return nullptr;
}

/// The place after the closing quote of the string that begins at `start`, null without one.
const QChar* Parser::handleString(const QChar* start, const QChar* end) {
    const QStringView rest(start, end);
    const qsizetype length = rest.indexOf(u'"');
    if (length < 0)
        return nullptr;
    if (mIsValue)
        reportString(rest.first(length));
    else
        getReference(start, length, mKey);
    return start + length + 1;
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

bool Parser::reportNumber(const QString& key, QStringView text) {
    double number = 0;
    if (!mCurrent || !toNumber(text, number))
        return false;
    mCurrent->jsonFloat(*this, key, number);
    return true;
}

/// The pending bare value, which ends before `here`; empty when there is none.
QStringView Parser::takeValue(const QChar* here) {
    const QChar* start = std::exchange(mValueStart, nullptr);
    return start ? QStringView(start, here) : QStringView();
}

void Parser::flushValue(const QChar* here) {
    if (groupToken() == TOKEN_ARRAY)
        return flushArrayValue(here);
    const QStringView value = takeValue(here);
    if (value.isEmpty() || !mIsValue)
        return;
    reportNumber(mKey, value);
    mKey.clear();
}

void Parser::flushArrayValue(const QChar* here) {
    if (!mKey.isEmpty()) {
        mCurrent->jsonString(*this, EMPTY_KEY, mKey);
        incArrayIdx();
        mKey.clear();
    }
    if (reportNumber(EMPTY_KEY, takeValue(here)))
        incArrayIdx();
}

} // namespace json
