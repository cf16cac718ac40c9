#pragma once

namespace json {

class Reader;

/// The parser's face towards the readers it calls; for use during a callback.
class Stack {
public:
    virtual ~Stack() = default;

    /// Makes `reader` the current reader until the innermost open object or array closes. It is
    /// not owned and may be on the stack already, any number of times. False, with nothing pushed,
    /// for null or without memory.
    virtual bool push(Reader* reader) = 0;

    /// While an array element is reported: its position, from 0, among the strings and numbers of
    /// the array. Counted anew from each push; nested objects and arrays, empty strings and bare
    /// words do not count.
    virtual int arrayIndex() const = 0;
};

} // namespace json
