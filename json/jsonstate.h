#pragma once

#include "collections/managedlist.h"

namespace json {

class Reader;

/// Kinds of brackets, one bit each, so that a mask selects either or both.
constexpr int TOKEN_OBJECT = 1;
constexpr int TOKEN_ARRAY = 2;

/// An entry of the parse stack: a reader (`token` 0), an open bracket (`reader` null), or both: a
/// bracket and the first reader pushed after it, which go together. One per open bracket, of which
/// a text may have millions: small enough for the least that the heap gives out.
struct State {
    Reader* reader = nullptr;
    short token = 0;

    // With `current`, what a walk from this entry down the stack would find first, kept here
    // because the nesting of a log has no bound and the questions come with every value.
    short group = 0;
    int arrayIdx = 0; // scalar elements reported while this entry was the top
    Reader* current = nullptr;
};

/// Makes the entries of a parse stack. Recycled entries keep their contents: every push sets them.
class StateFactory : public ManagedFactory<State*> {
public:
    explicit StateFactory(bool sort = false)
        : ManagedFactory(sort) {}

    State* nullObject() const override { return nullptr; }

    State* newObject() const override;
    void deleteObject(State* state) const override;

    void initializeObject(State* /*state*/) const override {}

    State* setObject(State* destination, State* source) const override;
};

} // namespace json
