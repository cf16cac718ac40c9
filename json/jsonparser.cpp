#include "json/jsonparser.h"

#include "json/jsonkind.h"
#include "json/jsonmarks.h"
#include "json/jsonnumber.h"
#include "json/jsonreader.h"
#include "json/jsonstrings.h"
#include "json/jsontext.h"

#include <array>
#include <exception>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

namespace json {

namespace {

const StateFactory STATE_FACTORY;
const QString EMPTY_KEY;

/// The length of the whitespace that `here` begins, which is not ASCII; 0 when it is none.
int spaceAt(const char* here, const char* end) {
    using namespace std::string_view_literals;
    constexpr std::array SPACES{"\xc2\x85"sv,     "\xc2\xa0"sv,     "\xe1\x9a\x80"sv,
                                "\xe2\x80\xa8"sv, "\xe2\x80\xa9"sv, "\xe2\x80\xaf"sv,
                                "\xe2\x81\x9f"sv, "\xe3\x80\x80"sv};
    const std::string_view text(here, static_cast<std::size_t>(end - here));
    for (const std::string_view space : SPACES) {
        if (text.starts_with(space))
            return static_cast<int>(space.size());
    }
    constexpr std::string_view WIDTHS = "\xe2\x80"; // the spaces of different widths
    const bool isOfAWidth = text.starts_with(WIDTHS) && text.size() > WIDTHS.size() &&
                            static_cast<uchar>(text[WIDTHS.size()]) - 0x80U <= 0x0aU;
    return isOfAWidth ? 3 : 0;
}

} // namespace

/// A text and how far it is read.
struct Parser::Scan {
    explicit Scan(QIODevice& device)
        : text(device) {}

    Text text;
    Marks marks;
    std::optional<Strings> strings; ///< None before the first piece, which tells the encoding.
};

Parser::Parser()
    : mStates(STATE_FACTORY)
    , mKey(&EMPTY_KEY) {}

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
        Scan scan(*device);
        done = handle(scan);
    } catch (const std::bad_alloc&) {
        done = false;
    }
    forgetText();
    return done;
}

bool Parser::push(Reader* reader) {
    if (!reader || !(joinBracket(reader) || pushState(reader, 0)))
        return false;
    mCurrent = reader;
    return true;
}

/// Gives the bracket on top its first reader. False when the top is no bracket or has one.
bool Parser::joinBracket(Reader* reader) {
    State* top = mStates.isEmpty() ? nullptr : mStates.front();
    if (!top || top->reader)
        return false;
    top->reader = top->current = reader;
    top->arrayIdx = 0;
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
        *mStates.pushFront() = {reader, static_cast<short>(token), static_cast<short>(group), 0,
                                current};
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
    mKey = &EMPTY_KEY;
    mValue.clear();
    mIsValue = false;
    mValueStart = nullptr;
}

/// Goes on to the next piece of the text, which begins with what is still needed: the bytes from
/// `keep` on, or from the pending bare value's first. Both move with their place in the text.
bool Parser::readOn(Scan& scan, const char*& keep) {
    const char* const first = mValueStart ? mValueStart : keep;
    const qsizetype kept = scan.text.end() - first;
    const qsizetype offset = keep - first;
    const bool more = scan.text.readOn(first);
    const char* const begin = scan.text.begin();
    if (mValueStart)
        mValueStart = begin;
    keep = begin + offset;
    scan.marks.goOn(begin + kept, scan.text.end());
    if (!scan.strings)
        scan.strings.emplace(scan.text.isRecoded());
    return more;
}

/// Whether a flush would do something.
inline bool Parser::hasPending() const {
    return mValueStart || (!mKey->isEmpty() && groupToken() == TOKEN_ARRAY);
}

/// Whether the text ends at `here`, a place of this piece.
bool Parser::isEnd(Scan& scan, const char* here) {
    return here == scan.text.end() && !readOn(scan, here);
}

bool Parser::handle(Scan& scan) {
    while (true) {
        const char* here = scan.marks.next();
        if (here == scan.text.end()) {
            if (!readOn(scan, here))
                return true;
            continue;
        }
        here = handleMark(scan, here);
        if (!here)
            return false;
        if (!mCurrent) // cleared by the reader
            return isEnd(scan, here);
    }
}

/// The place to go on from; null when the parse has failed.
inline const char* Parser::handleMark(Scan& scan, const char* here) {
    const char* const next = here + 1;
    switch (kind_of(*here)) {
    case Kind::OpenObject:
        return startObject() ? next : nullptr;
    case Kind::CloseObject:
        flushValue(here);
        return popTo(TOKEN_OBJECT) ? next : nullptr;
    case Kind::OpenArray:
        if (!startArray())
            return nullptr;
        return mValueStart ? next : handleElements(scan, next);
    case Kind::CloseArray:
        flushArrayValue(here);
        return popTo(TOKEN_ARRAY) ? next : nullptr;
    case Kind::Colon:
        return handleColon(scan, next);
    case Kind::Comma:
        flushValue(here);
        mIsValue = false;
        return groupToken() == TOKEN_ARRAY ? handleElements(scan, next) : next;
    case Kind::Quote:
        return handleString(scan, next);
    case Kind::Space:
        flushValue(here);
        return next;
    case Kind::Bare:
        handleBare(here);
        return next;
    case Kind::Wide:
        return handleWide(scan, here);
    }
    return nullptr;
}

/// Takes the next elements of an array as far as they are what nearly all are: a bare value or a
/// string with a comma or the closing bracket right behind it. Nothing is pending. The place after
/// the last comma, `here` without one.
inline const char* Parser::handleElements(Scan& scan, const char* here) {
    constexpr int MOST_MARKS = 3;
    Marks& marks = scan.marks;
    while (mCurrent && marks.known() >= MOST_MARKS) {
        const char* const begin = marks.peek(0);
        const bool isString = *begin == '"';
        if (!isString && kind_of(*begin) != Kind::Bare)
            return here;
        const int size = isString ? 2 : 1;
        const char* const end = marks.peek(size);
        if (*end != ',' && *end != ']')
            return here;
        if (isString)
            reportElement(scan, begin + 1, marks.peek(1));
        else
            reportNumber(begin, end);
        marks.skip(size);
        if (*end == ']')
            return here;
        marks.skip(1);
        here = end + 1;
    }
    return here;
}

/// Takes a colon and, should it do something, whitespace right behind it, which is no mark there.
inline const char* Parser::handleColon(const Scan& scan, const char* next) {
    mIsValue = true;
    if (!hasPending() || next == scan.text.end() || kind_of(*next) != Kind::Space)
        return next;
    flushValue(next);
    return next + 1;
}

inline void Parser::handleBare(const char* here) {
    if (!mValueStart)
        mValueStart = here;
}

/// Takes a byte that is not ASCII. Decoding never makes one character of bytes on both sides of one
/// that begins a character, so whitespace is known by its bytes, whatever is before them.
const char* Parser::handleWide(Scan& scan, const char* here) {
    const int space = spaceAt(here, scan.text.end());
    if (space == 0) {
        handleBare(here);
        return here + 1;
    }
    flushValue(here);
    for (int i = 1; i < space; ++i)
        scan.marks.next();
    return here + space;
}

/// The place after the closing quote of the string that begins at `start`, null without one.
inline const char* Parser::handleString(Scan& scan, const char* start) {
    const char* quote = scan.marks.next();
    while (quote == scan.text.end()) {
        if (!readOn(scan, start))
            return nullptr;
        quote = scan.marks.next();
    }
    if (mIsValue)
        reportString(scan, start, quote);
    else
        mKey = start == quote ? &EMPTY_KEY : &scan.strings->find(start, quote);
    return quote + 1;
}

bool Parser::startObject() {
    if (!pushToken(TOKEN_OBJECT))
        return false;
    mCurrent->startObject(*this, *mKey);
    mKey = &EMPTY_KEY;
    return true;
}

bool Parser::startArray() {
    if (!pushToken(TOKEN_ARRAY))
        return false;
    mCurrent->startArray(*this, *mKey);
    mKey = &EMPTY_KEY;
    return true;
}

void Parser::reportString(Scan& scan, const char* begin, const char* end) {
    mIsValue = false;
    if (begin == end)
        mValue.clear();
    else
        scan.strings->decode(begin, end, mValue);
    mCurrent->jsonString(*this, *mKey, mValue);
    mKey = &EMPTY_KEY;
}

void Parser::flushValue(const char* here) {
    if (groupToken() == TOKEN_ARRAY)
        return flushArrayValue(here);
    const char* const start = std::exchange(mValueStart, nullptr);
    if (!start || !mIsValue)
        return;
    double number = 0;
    if (to_number(start, here, number) && mCurrent)
        mCurrent->jsonFloat(*this, *mKey, number);
    mKey = &EMPTY_KEY;
}

void Parser::flushArrayValue(const char* here) {
    if (!mKey->isEmpty()) {
        mCurrent->jsonString(*this, EMPTY_KEY, *mKey);
        incArrayIdx();
        mKey = &EMPTY_KEY;
    }
    const char* const start = std::exchange(mValueStart, nullptr);
    if (start && mCurrent)
        reportNumber(start, here);
}

/// Reports a bare value of an array, if it is a number.
inline void Parser::reportNumber(const char* begin, const char* end) {
    double number = 0;
    if (!to_number(begin, end, number))
        return;
    mCurrent->jsonFloat(*this, EMPTY_KEY, number);
    incArrayIdx();
}

/// Reports a string of an array, unless it is empty.
inline void Parser::reportElement(Scan& scan, const char* begin, const char* end) {
    if (begin == end)
        return;
    mCurrent->jsonString(*this, EMPTY_KEY, scan.strings->find(begin, end));
    incArrayIdx();
}

} // namespace json
