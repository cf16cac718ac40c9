#pragma once

#include "collections/managedlist.h"

#include <functional>
#include <vector>

struct Counted {
    int id = 0;    // from 0, in the order of making
    int value = 0; // 0 in the initial state
};

/// Keeps the ids of its objects in the order of the calls they came in.
class CountingFactory : public ManagedFactory<Counted*> {
public:
    explicit CountingFactory(bool sort = false)
        : ManagedFactory(sort) {}

    Counted* nullObject() const override { return nullptr; }

    Counted* newObject() const override {
        if (beforeNew)
            beforeNew(made);
        return new Counted{made++};
    }

    void deleteObject(Counted* object) const override {
        if (object)
            deleted.push_back(object->id);
        delete object;
    }

    void initializeObject(Counted* object) const override {
        if (!object)
            return;
        initialized.push_back(object->id);
        object->value = 0;
    }

    Counted* setObject(Counted* destination, Counted* /*source*/) const override {
        return destination;
    }

    /// Called with the id of the object that is due; may throw.
    std::function<void(int)> beforeNew;

    mutable int made = 0;
    mutable std::vector<int> initialized;
    mutable std::vector<int> deleted;
};
