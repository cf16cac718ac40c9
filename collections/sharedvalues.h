#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>
#include <span>
#include <type_traits>

/// Values that any number of arrays refer to instead of copying them, see `RecycleArray::referTo`.
/// What an array refers to does not change, and is freed with the last reference, by whichever
/// thread drops it. Otherwise not thread-safe. `T` is trivially copyable.
template <typename T>
class SharedValues {
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= alignof(std::size_t));

public:
    SharedValues() = default;
    SharedValues(const SharedValues&) = delete;
    SharedValues& operator=(const SharedValues&) = delete;

    ~SharedValues() { release(mValues); }

    int size() const { return mSize; }

    const T* data() const { return mValues; }

    /// Makes `values` the values. Values that go on from the present ones join them, so that many
    /// beginnings of one sequence take no more memory than twice the whole; otherwise what arrays
    /// refer to is left to them. False, with nothing changed, when storage is exhausted.
    bool setTo(std::span<const T> values) {
        const int size = static_cast<int>(values.size());
        const bool goesOn = goesOnIn(values);
        if (!(goesOn && size <= mCapacity) && !canHold(size) && !makeRoom(goesOn, size))
            return false;
        if (!goesOn)
            mSize = 0;
        std::copy(values.begin() + mSize, values.end(), mValues + mSize);
        mSize = size;
        return true;
    }

private:
    template <typename>
    friend class RecycleArray;

    /// What stands in front of the values.
    struct alignas(std::size_t) Header {
        std::atomic<int> references{1};
    };

    static Header* headerOf(T* values) { return reinterpret_cast<Header*>(values) - 1; }

    static T* retain(T* values) {
        headerOf(values)->references.fetch_add(1, std::memory_order_relaxed);
        return values;
    }

    static void release(T* values) {
        if (values && headerOf(values)->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            std::free(headerOf(values));
    }

    bool goesOnIn(std::span<const T> values) const {
        return mSize > 0 && values.size() >= static_cast<std::size_t>(mSize) &&
               std::equal(mValues, mValues + mSize, values.begin());
    }

    /// Whether the storage is nobody else's and not too large for so few values.
    bool canHold(int size) const {
        return mValues && size <= mCapacity && mCapacity / 2 <= size &&
               headerOf(mValues)->references.load(std::memory_order_acquire) == 1;
    }

    bool makeRoom(bool forMore, int size) {
        const bool doubled = forMore && size <= std::numeric_limits<int>::max() / 2;
        const int capacity = doubled ? 2 * size : size;
        void* storage =
            std::malloc(sizeof(Header) + static_cast<std::size_t>(capacity) * sizeof(T));
        if (!storage)
            return false;
        auto* header = new (storage) Header;
        T* values = reinterpret_cast<T*>(header + 1);
        std::copy_n(mValues, forMore ? mSize : 0, values);
        release(mValues);
        mValues = values;
        mCapacity = capacity;
        return true;
    }

    T* mValues = nullptr;
    int mSize = 0;
    int mCapacity = 0;
};
