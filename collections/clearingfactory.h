#pragma once

#include "collections/managedlist.h"

/// The factory of objects that are made by their default constructor and reset by their `clear()`;
/// no object is null. How one is copied is the subclass's.
template <typename T>
class ClearingFactory : public ManagedFactory<T*> {
public:
    using ManagedFactory<T*>::ManagedFactory;

    T* nullObject() const override { return nullptr; }

    T* newObject() const override { return new T; }

    void deleteObject(T* object) const override { delete object; }

    void initializeObject(T* object) const override {
        if (object)
            object->clear();
    }
};
