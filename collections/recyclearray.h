#pragma once

#include "collections/managedlist.h"
#include "collections/sharedvalues.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

/// A growable array that never gives capacity back. Without a factory it holds plain values; with
/// one it holds the factory's objects: new slots are filled with new objects, and slots that the
/// size grows over again are reset. The objects of the slots are not destroyed with the array.
///
/// An array of plain values may be a piece of shared ones. It copies its piece when it is about to
/// change, to which every access counts that is not const; such an access throws `std::bad_alloc`
/// when there is no storage for the copy.
///
/// Invariant: 0 <= size() <= capacity(); with a factory every slot below `capacity()` holds an
/// object of the factory, or its `nullObject()` where none could be made. Indices are not checked.
/// Not thread-safe.
template <typename T>
class RecycleArray {
    static_assert(std::is_trivially_copyable_v<T>, "slots are moved by realloc");

public:
    /// `grow`: how many slots beyond the size asked for each growth makes. `factory`: null for
    /// plain values; not owned, outlives the array.
    RecycleArray(int grow, const ManagedFactory<T>* factory)
        : mGrow(grow)
        , mFactory(factory) {}

    RecycleArray(const RecycleArray&) = delete;

    virtual ~RecycleArray() { dropStorage(); }

    int size() const { return mSize; }

    /// Number of slots that exist, in use or kept.
    int capacity() const { return mCapacity; }

    T& operator[](int index) { return data()[index]; }

    const T& operator[](int index) const { return mData[index]; }

    /// The first slot; null before the first growth, and moved by every growth.
    T* data() {
        if (isPiece() && !copyPiece(mSize))
            throw std::bad_alloc();
        return mData;
    }

    const T* data() const { return mData; }

    T* begin() { return data(); }

    T* end() { return data() + mSize; }

    const T* begin() const { return mData; }

    const T* end() const { return mData + mSize; }

    /// Sets the number of slots in use. New slots of plain values are unspecified; objects come
    /// back in their initial state. False, with nothing changed, for a negative size or when
    /// storage is exhausted; false, with the size changed, when an object could not be made.
    bool setSize(int size) {
        if (size < 0)
            return false;
        if (isPiece())
            return copyPiece(size);
        if (size > mCapacity)
            return growTo(size);
        if (mFactory)
            initialize(mSize, size);
        mSize = size;
        return true;
    }

    /// Appends a value; plain values only. False, with nothing changed, when storage is exhausted.
    bool add(const T& value) {
        assert(!mFactory);
        const T copy = value; // growing may move the slot that `value` refers to
        const int last = mSize;
        if (last < mCapacity)
            ++mSize;
        else if (last == std::numeric_limits<int>::max() || !setSize(last + 1))
            return false;
        mData[last] = copy;
        return true;
    }

    /// Makes this array a copy of `other`, of a piece the same piece; plain values only. False,
    /// with nothing changed, when storage is exhausted.
    bool setTo(const RecycleArray& other) {
        assert(!mFactory);
        if (&other == this)
            return true;
        if (other.isPiece()) {
            referTo(other.mData - other.mFirst, other.mFirst, other.mSize);
            return true;
        }
        if (!setSize(other.mSize))
            return false;
        std::copy_n(other.mData, other.mSize, mData);
        return true;
    }

    /// `setTo` without its result.
    RecycleArray& operator=(const RecycleArray& other) {
        setTo(other);
        return *this;
    }

    /// Makes this array the `size` values from place `first` on, without a copy, as long as it is
    /// not changed; plain values only.
    void referTo(const SharedValues<T>& values, int first, int size) {
        assert(!mFactory && first >= 0 && size >= 0 && size <= values.size() - first);
        if (size > 0)
            referTo(values.mValues, first, size);
        else
            setSize(0);
    }

    /// Whether the values are a piece of shared ones.
    bool isPiece() const { return mFirst != OWN; }

    /// Exchanges contents and storage with an array of the same factory.
    void swap(RecycleArray& other) {
        assert(mFactory == other.mFactory);
        std::swap(mFirst, other.mFirst);
        std::swap(mData, other.mData);
        std::swap(mSize, other.mSize);
        std::swap(mCapacity, other.mCapacity);
    }

    /// Same size and bytewise the same values; plain values only.
    bool operator==(const RecycleArray& other) const {
        assert(!mFactory);
        if (mSize != other.mSize)
            return false;
        if (mData == other.mData) // the same piece
            return true;
        return mSize == 0 || std::memcmp(mData, other.mData, bytes(mSize)) == 0;
    }

private:
    static constexpr int OWN = -1;

    static std::size_t bytes(int count) { return static_cast<std::size_t>(count) * sizeof(T); }

    void dropStorage() {
        if (isPiece())
            SharedValues<T>::release(mData - mFirst);
        else
            std::free(mData);
    }

    void referTo(T* values, int first, int size) {
        if (!isPiece() || mData - mFirst != values) {
            SharedValues<T>::retain(values);
            dropStorage();
        }
        mData = values + first;
        mFirst = first;
        mSize = size;
        mCapacity = size;
    }

    /// Makes a piece an array of `size` values, the first of them those of the piece.
    bool copyPiece(int size) {
        RecycleArray copy(mGrow, nullptr);
        if (!copy.setSize(size))
            return false;
        std::copy_n(mData, std::min(size, mSize), copy.mData);
        swap(copy);
        return true;
    }

    bool growTo(int size) {
        if (size > std::numeric_limits<int>::max() - mGrow)
            return false;
        const int capacity = size + mGrow;
        void* data = std::realloc(mData, bytes(capacity));
        if (!data)
            return false;
        mData = static_cast<T*>(data);
        bool filled = true;
        if (mFactory) {
            initialize(mSize, mCapacity);
            filled = fill(capacity);
        }
        mSize = size;
        mCapacity = capacity;
        return filled;
    }

    void initialize(int from, int to) {
        for (int slot = from; slot < to; ++slot)
            mFactory->initializeObject(mData[slot]);
    }

    // Counts every slot as it is filled, so that no object is lost to an exception that passes.
    bool fill(int capacity) {
        bool filled = true;
        for (; mCapacity < capacity; ++mCapacity) {
            mData[mCapacity] = mFactory->nullObject();
            try {
                mData[mCapacity] = mFactory->newObject();
            } catch (const std::exception&) {
                filled = false;
            }
        }
        return filled;
    }

    const int mGrow;
    int mFirst = OWN; ///< Of a piece: where it begins in the shared values.
    const ManagedFactory<T>* const mFactory;
    T* mData = nullptr;
    int mSize = 0;
    int mCapacity = 0;
};

/// The owning array of a factory's objects: those in use and those kept for reuse are deleted with
/// it. A slot whose object could not be made holds null, so users test each slot. `T` is a pointer
/// type.
template <typename T>
class ManagedArray {
public:
    explicit ManagedArray(const ManagedFactory<T>& factory)
        : mFactory(factory)
        , mArray(1, &factory) {}

    ManagedArray(const ManagedArray&) = delete;
    ManagedArray& operator=(const ManagedArray&) = delete;

    virtual ~ManagedArray() {
        for (int slot = 0; slot < mArray.capacity(); ++slot)
            mFactory.deleteObject(mArray[slot]);
    }

    /// As `RecycleArray::setSize`.
    bool setSize(int size) { return mArray.setSize(size); }

    /// Makes the objects that could not be made when the array grew. False while one still cannot.
    bool fillGaps() {
        bool filled = true;
        for (int slot = 0; slot < mArray.capacity(); ++slot) {
            if (mArray[slot] != mFactory.nullObject())
                continue;
            try {
                mArray[slot] = mFactory.newObject();
            } catch (const std::exception&) {
                filled = false;
            }
        }
        return filled;
    }

    /// Exchanges objects and storage with an array of the same factory.
    void swap(ManagedArray& other) { mArray.swap(other.mArray); }

    int size() const { return mArray.size(); }

    /// The object in slot `index`, null where none could be made. The index is not checked.
    T operator[](int index) const { return mArray[index]; }

private:
    const ManagedFactory<T>& mFactory;
    RecycleArray<T> mArray;
};
