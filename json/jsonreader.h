#pragma once

#include <QString>

namespace json {

class Stack;

/// What a parse reports, in the order of the text, on the thread that parses. Every callback may
/// be left out; none can stop a parse.
///
/// Keys and values may refer to the parser's text and are valid during the callback only: a reader
/// that keeps one copies its characters (`QString(value.constData(), value.size())`), since a plain
/// copy of the string shares them.
///
/// The ends of objects and arrays are told only to readers that were pushed inside them, innermost
/// first, each of them leaving the stack right after. A reader that is pushed while an end is told
/// leaves in the place of the one that is told, which is then told again: do not push there.
class Reader {
public:
    virtual ~Reader() = default;

    /// A `{`. `key`: the name of the member, null outside an object and for array elements.
    virtual void startObject(Stack& /*stack*/, const QString& /*key*/) {}

    /// The end of the object in which this reader was pushed.
    virtual void endObject(Stack& /*stack*/) {}

    /// A `[`. `key` as for `startObject`.
    virtual void startArray(Stack& /*stack*/, const QString& /*key*/) {}

    /// The end of the array in which this reader was pushed.
    virtual void endArray(Stack& /*stack*/) {}

    /// A string: of a member (`value` is null when the text is empty), or of an array (`key` is
    /// null; empty strings are left out).
    virtual void jsonString(Stack& /*stack*/, const QString& /*key*/, const QString& /*value*/) {}

    /// A value without quotes that converts to a double, infinities and NaN included; other bare
    /// values are left out. `key` as for `jsonString`.
    virtual void jsonFloat(Stack& /*stack*/, const QString& /*key*/, double /*value*/) {}

    /// This reader leaves the stack; follows each end that it is told.
    virtual void jsonPop() {}
};

} // namespace json
