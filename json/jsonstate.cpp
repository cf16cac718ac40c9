#include "json/jsonstate.h"

namespace json {

State* StateFactory::newObject() const {
    return new State;
}

void StateFactory::deleteObject(State* state) const {
    delete state;
}

State* StateFactory::setObject(State* destination, State* source) const {
    if (source)
        *destination = *source;
    return destination;
}

} // namespace json
