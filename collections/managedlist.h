#pragma once

#include <cassert>
#include <exception>
#include <iterator>
#include <memory>
#include <type_traits>

/// Makes, resets, copies, orders and destroys the objects of lists and arrays.
/// One static instance serves every container of an element type; it holds no state that changes,
/// so any thread may use it. `T` is a pointer type.
template <typename T>
class ManagedFactory {
public:
    /// `sort`: the factory's lists order their elements by `sortObject`, and the unordered
    /// insertions of `ManagedList` are forbidden on them.
    explicit ManagedFactory(bool sort)
        : mSort(sort) {}

    ManagedFactory(const ManagedFactory&) = delete;
    ManagedFactory& operator=(const ManagedFactory&) = delete;
    virtual ~ManagedFactory() = default;

    /// The value that stands for no object.
    virtual T nullObject() const = 0;

    /// A new object in its initial state, owned by the caller. Throws `std::exception` when none
    /// can be made.
    virtual T newObject() const = 0;

    /// Destroys an object of `newObject`; nothing for null.
    virtual void deleteObject(T object) const = 0;

    /// Returns a recycled object to its initial state; nothing for null.
    virtual void initializeObject(T object) const = 0;

    /// Makes `destination` a copy of `source`; returns `destination`.
    virtual T setObject(T destination, T source) const = 0;

    /// Three-way comparison for ordered lists: negative when `a` comes first.
    virtual int sortObject(T /*a*/, T /*b*/) const { return -1; }

    const bool mSort;
};

namespace prvlist {

/// A link of a chain. Its object is set when the node is made and stays with it for life.
template <typename T>
struct _node {
    _node* next = nullptr;
    T value = nullptr;
};

/// Nodes in a row, with the end and the length at hand, so that no operation walks them.
template <typename T>
struct _chain {
    _node<T>* head = nullptr;
    _node<T>* tail = nullptr;
    int size = 0;
    unsigned changes = 0; ///< Of what hangs on the chain, counted.

    void linkFront(_node<T>* node) {
        node->next = head;
        head = node;
        if (!tail)
            tail = node;
        ++size;
        ++changes;
    }

    void linkBack(_node<T>* node) {
        node->next = nullptr;
        (tail ? tail->next : head) = node;
        tail = node;
        ++size;
        ++changes;
    }

    _node<T>* unlinkFront() {
        _node<T>* node = head;
        head = node->next;
        if (!head)
            tail = nullptr;
        node->next = nullptr;
        --size;
        ++changes;
        return node;
    }

    void takeAll(_chain& other) {
        if (!other.head)
            return;
        (tail ? tail->next : head) = other.head;
        tail = other.tail;
        size += other.size;
        ++changes;
        other = {nullptr, nullptr, 0, other.changes + 1};
    }
};

} // namespace prvlist

template <typename T>
class ManagedListIterator;

template <typename T>
class ManagedListReader;

/// A singly linked list that recycles instead of freeing: removed elements wait, with their
/// objects, on a retired chain of the same list and come back, reset by the factory, with the next
/// insertions. Objects are destroyed with the list only; callers never delete one.
///
/// Invariant: every node is on exactly one chain of exactly one list. Lists exchange nodes only
/// with lists of the same factory. Not thread-safe. `T` is a pointer type.
template <typename T>
class ManagedList {
public:
    /// Thrown by `front` and `popFront` of an empty list.
    class is_empty : public std::exception {};

    /// Thrown by `at` for a position outside the list.
    class bad_index : public std::exception {};

    /// An empty list; `factory` is not owned and outlives the list.
    explicit ManagedList(const ManagedFactory<T>& factory)
        : mFactory(factory) {}

    ManagedList(const ManagedList&) = delete;
    ManagedList& operator=(const ManagedList&) = delete;

    virtual ~ManagedList() {
        deleteAll(mActive.head);
        deleteAll(mRetired.head);
    }

    /// Retires every element, in order, behind those already waiting. No object is touched.
    virtual void clear() {
        mRetired.takeAll(mActive);
        mIsLent = false;
    }

    bool isEmpty() const { return !mActive.head; }

    int size() const { return mActive.size; }

    /// The first node, null when the list is empty; for the iterator.
    prvlist::_node<T>* getHead() const {
        mIsLent = true;
        return mActive.head;
    }

    ManagedListIterator<T> begin() const { return ManagedListIterator<T>(*this); }

    /// What an iterator past the end equals: `for (T object : list)` walks from front to back.
    std::default_sentinel_t end() const { return {}; }

    /// The elements, front to back, for who does not change them: `for (const T* object :
    /// list.reading())`.
    ManagedListReader<T> reading() const { return ManagedListReader<T>(mActive.head); }

    /// Inserts an element at the front and returns its object in its initial state. An exception
    /// of the factory's `newObject` passes and leaves the list unchanged.
    T pushFront() {
        assert(!mFactory.mSort);
        mIsLent = true;
        return insertFront();
    }

    /// As `pushFront`, at the back.
    T pushBack() {
        assert(!mFactory.mSort);
        mIsLent = true;
        prvlist::_node<T>* node = newNode();
        mActive.linkBack(node);
        mFactory.initializeObject(node->value);
        return node->value;
    }

    /// The first element's object. Throws `is_empty`.
    T front() {
        if (isEmpty())
            throw is_empty();
        return getHead()->value;
    }

    /// Retires the first element, to be the first that is reused. Throws `is_empty`.
    void popFront() {
        if (isEmpty())
            throw is_empty();
        mRetired.linkFront(mActive.unlinkFront());
    }

    /// The object at position `index`, from 0, found by walking. Throws `bad_index`.
    T at(int index) const {
        if (index < 0 || index >= size())
            throw bad_index();
        const prvlist::_node<T>* node = getHead();
        while (index-- > 0)
            node = node->next;
        return node->value;
    }

    /// Appends all elements to `other`'s elements; nothing when `other` is this list.
    void moveTo(ManagedList& other) {
        if (&other == this)
            return;
        other.mActive.takeAll(mActive);
        other.mIsLent = other.mIsLent || mIsLent;
    }

    /// Appends all elements to those waiting in `other`; nothing when `other` is this list.
    void moveToRetired(ManagedList& other) {
        if (&other != this)
            other.mRetired.takeAll(mActive);
    }

    /// Moves the first element, if there is one, to the front of `other`.
    void moveFrontTo(ManagedList& other) {
        if (&other == this || isEmpty())
            return;
        other.mActive.linkFront(mActive.unlinkFront());
        other.mIsLent = other.mIsLent || mIsLent;
    }

    /// Hands the elements that wait here to `other`, behind those waiting there.
    void moveWaitingTo(ManagedList& other) {
        if (&other != this)
            other.mRetired.takeAll(mRetired);
    }

protected:
    /// Whether elements were handed out, since the list was cleared last, to somebody who may
    /// change them at any time. The list that they move to has lent them too.
    bool isLent() const { return mIsLent; }

    /// The first node, null when the list is empty; lends nothing.
    prvlist::_node<T>* firstNode() const { return mActive.head; }

    /// As `pushFront`; lends nothing.
    T insertFront() {
        prvlist::_node<T>* node = newNode();
        mActive.linkFront(node);
        mFactory.initializeObject(node->value);
        return node->value;
    }

    /// Another number whenever the list has got or lost elements, whoever did it.
    unsigned changes() const { return mActive.changes; }

    /// Deletes the chain that begins at `chain`, each object before its node.
    void deleteAll(prvlist::_node<T>* chain) {
        while (chain) {
            const std::unique_ptr<prvlist::_node<T>> node(chain);
            chain = node->next;
            mFactory.deleteObject(node->value);
        }
    }

private:
    /// The node that waited first, else a new one with a new object. A node whose object cannot be
    /// made is released at once.
    prvlist::_node<T>* newNode() {
        if (mRetired.head)
            return mRetired.unlinkFront();
        auto node = std::make_unique<prvlist::_node<T>>();
        node->value = mFactory.newObject();
        return node.release();
    }

    const ManagedFactory<T>& mFactory;
    prvlist::_chain<T> mActive;
    prvlist::_chain<T> mRetired;
    mutable bool mIsLent = false;
};

/// Walks a list from front to back. Valid until the element under it leaves the list.
template <typename T>
class ManagedListIterator {
public:
    explicit ManagedListIterator(const ManagedList<T>& list)
        : mNode(list.getHead()) {}

    bool hasValue() const { return mNode; }

    bool operator==(std::default_sentinel_t) const { return !mNode; }

    /// The object under the iterator, null past the end.
    T operator*() const { return mNode ? mNode->value : nullptr; }

    /// Moves on, and stays past the end once there; returns the new node.
    prvlist::_node<T>* operator++() {
        if (mNode)
            mNode = mNode->next;
        return mNode;
    }

private:
    prvlist::_node<T>* mNode;
};

/// Walks a list from front to back as the iterator does, without leave to change its objects.
template <typename T>
class ManagedListReader {
public:
    explicit ManagedListReader(const prvlist::_node<T>* node)
        : mNode(node) {}

    ManagedListReader begin() const { return *this; }

    std::default_sentinel_t end() const { return {}; }

    bool hasValue() const { return mNode; }

    bool operator==(std::default_sentinel_t) const { return !mNode; }

    /// The object under the reader, null past the end.
    const std::remove_pointer_t<T>* operator*() const { return mNode ? mNode->value : nullptr; }

    /// Moves on, and stays past the end once there.
    void operator++() {
        if (mNode)
            mNode = mNode->next;
    }

private:
    const prvlist::_node<T>* mNode;
};
