// Holds the containers against those of the standard library over any string of operations.
//
// The first byte of an input chooses the container, the others the operations.

#include "collections/managedlist.h"
#include "collections/recyclearray.h"
#include "domain/domainnest.h"
#include "domain/domainpatternindex.h"
#include "domain/domainpatternlist.h"
#include "domain/domainrunhash.h"
#include "fuzz/fuzzinput.h"
#include "fuzz/fuzztarget.h"
#include "tests/common/countingfactory.h"
#include "tests/common/describe.h"

#include <algorithm>
#include <array>
#include <deque>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using fuzz::Input;
using fuzz::require;

/// Any of three objects, for operations on two.
template <typename T>
T& pick(std::array<T, 3>& objects, Input& input) {
    return objects[static_cast<std::size_t>(input.below(3))];
}

/// A factory whose next making of an object fails when it is told so.
class FailingFactory : public CountingFactory {
public:
    FailingFactory() {
        beforeNew = [this](int) {
            if (fails-- == 0)
                throw std::exception();
        };
    }

    int fails = -1; ///< How many more objects can be made; without an end when negative.
};

/// A list and what it must hold: the ids of its elements and of the objects waiting for reuse.
struct CheckedList {
    explicit CheckedList(FailingFactory& objects)
        : factory(objects)
        , list(objects) {}

    void push(bool front) {
        const bool fails = retired.empty() && factory.fails == 0;
        const int id = retired.empty() ? factory.made : retired.front();
        try {
            Counted* object = front ? list.pushFront() : list.pushBack();
            require(!fails && object->id == id && object->value == 0, "a pushed object");
            object->value = 1;
        } catch (const std::exception&) {
            require(fails, "a push throws only without an object");
            return;
        }
        if (!retired.empty())
            retired.pop_front();
        active.insert(front ? active.begin() : active.end(), id);
    }

    void pop() {
        try {
            list.popFront();
            require(!active.empty(), "an empty list has nothing to pop");
        } catch (const ManagedList<Counted*>::is_empty&) {
            require(active.empty(), "a list with elements can be popped");
            return;
        }
        retired.push_front(active.front());
        active.pop_front();
    }

    void append(std::deque<int>& destination) {
        destination.insert(destination.end(), active.begin(), active.end());
        active.clear();
    }

    void clear() {
        list.clear();
        append(retired);
    }

    void moveTo(CheckedList& other) {
        list.moveTo(other.list);
        if (&other != this)
            append(other.active);
    }

    void moveToRetired(CheckedList& other) {
        list.moveToRetired(other.list);
        if (&other != this)
            append(other.retired);
    }

    void moveFrontTo(CheckedList& other) {
        list.moveFrontTo(other.list);
        if (&other == this || active.empty())
            return;
        other.active.push_front(active.front());
        active.pop_front();
    }

    void check() const {
        auto it = list.begin();
        for (const int id : active) {
            require(it.hasValue() && (*it)->id == id, "the elements of a list");
            ++it;
        }
        require(!it.hasValue() && list.size() == int(active.size()), "the size of a list");
    }

    FailingFactory& factory;
    ManagedList<Counted*> list;
    std::deque<int> active;
    std::deque<int> retired;
};

void step(CheckedList& one, CheckedList& other, Input& input) {
    switch (input.below(9)) {
    case 0:
        return one.clear();
    case 1:
        return one.moveTo(other);
    case 2:
        return one.moveToRetired(other);
    case 3:
        return one.moveFrontTo(other);
    case 4:
        return one.pop();
    case 5:
        one.factory.fails = input.below(4);
        return;
    default:
        return one.push(input.below(2) == 0);
    }
}

void tryLists(Input& input) {
    FailingFactory factory;
    std::size_t held = 0;
    {
        std::array<CheckedList, 3> lists{CheckedList(factory), CheckedList(factory),
                                         CheckedList(factory)};
        while (!input.isUsedUp()) {
            CheckedList& one = pick(lists, input);
            step(one, pick(lists, input), input);
            for (const CheckedList& list : lists)
                list.check();
        }
        for (const CheckedList& list : lists)
            held += list.active.size() + list.retired.size();
        require(factory.deleted.empty(), "nothing is deleted while its list lives");
    }
    require(factory.deleted.size() == held && held == std::size_t(factory.made),
            "every object is deleted once");
}

void tryValues(Input& input) {
    using Ints = RecycleArray<int>;
    std::array<Ints, 3> arrays{Ints(1, nullptr), Ints(256, nullptr), Ints(3, nullptr)};
    std::map<const Ints*, std::vector<int>> models;
    std::array<SharedValues<int>, 3> shared;
    std::map<const SharedValues<int>*, std::vector<int>> sharedModels;
    while (!input.isUsedUp()) {
        Ints& one = pick(arrays, input);
        Ints& other = pick(arrays, input);
        std::vector<int>& model = models[&one];
        SharedValues<int>& values = pick(shared, input);
        std::vector<int>& sharedModel = sharedModels[&values];
        const int operation = input.below(12);
        if (operation == 0) {
            require(one.setTo(other), "a copy");
            model = models[&other];
        } else if (operation == 1) { // shrinks only: new values are unspecified
            model.resize(model.size() - std::min(model.size(), std::size_t(input.byte())));
            require(one.setSize(int(model.size())), "a shrinking");
        } else if (operation == 2) {
            one.swap(other);
            std::swap(model, models[&other]);
        } else if (operation == 3) {
            require(values.setTo(model), "shared values");
            sharedModel = model;
        } else if (operation == 4 && !sharedModel.empty()) {
            const int first = input.below(int(std::min(sharedModel.size(), std::size_t(256))));
            const int size = input.below(3) == 0 ? 0 : int(sharedModel.size()) - first;
            one.referTo(values, first, size);
            model.assign(sharedModel.begin() + first, sharedModel.begin() + first + size);
        } else if (operation == 5 && !model.empty()) {
            one[0] = model[0] = input.below(4);
        } else {
            const int value = input.below(4);
            require(one.add(value), "an addition");
            model.push_back(value);
        }
        for (const Ints& array : arrays) // one that is not const would make every piece a copy
            require(std::ranges::equal(array, models[&array]), "the values of an array");
        require((one == other) == (model == models[&other]), "the equality of arrays");
    }
}

/// What an array of objects holds: every slot's id, none where no object could be made.
struct ObjectsModel {
    /// Whether the array's `setSize` is to succeed.
    bool setSize(int to, FailingFactory& factory) {
        const int capacity = int(slots.size());
        for (int slot = size; slot < (to > capacity ? capacity : to); ++slot)
            if (slots[std::size_t(slot)])
                initialized.push_back(*slots[std::size_t(slot)]);
        size = to;
        if (to <= capacity)
            return true;
        bool filled = true;
        int id = factory.made;
        for (int fails = factory.fails; int(slots.size()) <= to; --fails) {
            const bool made = fails != 0;
            slots.push_back(made ? std::optional(id++) : std::nullopt);
            filled = filled && made;
        }
        return filled;
    }

    int size = 0;
    std::vector<std::optional<int>> slots;
    std::vector<int> initialized;
};

void tryObjects(Input& input) {
    FailingFactory factory;
    {
        ManagedArray<Counted*> array(factory);
        ObjectsModel model;
        while (!input.isUsedUp()) {
            if (input.below(4) == 0)
                factory.fails = input.below(8);
            const int size = input.below(40);
            const bool succeeds = model.setSize(size, factory);
            require(array.setSize(size) == succeeds, "the result of a growth");
            require(array.size() == size, "the size of an array");
            require(factory.initialized == model.initialized, "which objects are reset");
            factory.initialized.clear();
            model.initialized.clear();
            for (int i = 0; i < size; ++i) {
                const std::optional<int> id = model.slots[std::size_t(i)];
                require(id ? array[i] && array[i]->id == *id : !array[i], "an object of an array");
            }
        }
    }
    require(int(factory.deleted.size()) == factory.made, "every object is deleted once");
}

using Sequence = std::vector<int>;

/// Few differing ones, so that they meet again.
Sequence sequenceFrom(Input& input) {
    Sequence sequence;
    for (int left = input.below(4); left > 0; --left)
        sequence.push_back(input.below(4));
    return sequence;
}

/// A list of patterns and the rule that it follows: the first equal sequence counts, else a copy
/// goes to the back.
struct CheckedPatterns {
    using Entries = std::vector<std::pair<Sequence, int>>;

    void merge(const Sequence& sequence, int count) {
        const auto known = std::find_if(entries.begin(), entries.end(),
                                        [&](const auto& e) { return e.first == sequence; });
        if (known == entries.end())
            entries.emplace_back(sequence, count);
        else
            ++known->second;
    }

    void mergeAll(const Entries& others) {
        for (const auto& [sequence, count] : others)
            merge(sequence, count);
    }

    void check() const {
        auto it = list.reading();
        int most = 0;
        int weight = 0;
        for (const auto& [sequence, count] : entries) {
            require(it.hasValue() && std::ranges::equal((*it)->run(), sequence) &&
                        (*it)->mCount == count,
                    "the patterns of a list");
            ++it;
            most = std::max(most, count);
            weight += count + 1;
        }
        require(!it.hasValue() && list.size() == int(entries.size()), "the length of a list");
        require(list.maxCount() == most && list.weight() == weight, "the counts of a list");
    }

    /// What somebody can do who was handed an element.
    void changeByHand(Input& input) {
        const std::size_t at = std::size_t(input.byte()) % entries.size();
        domain::Pattern* pattern = list.at(int(at));
        auto& [sequence, count] = entries[at];
        pattern->mCount = count = input.below(5);
        if (input.below(2) == 0)
            return;
        sequence.push_back(input.below(4));
        pattern->mSequence.add(sequence.back());
    }

    static inline int byHand = 0; ///< Pushed back by hand, in all lists.

    domain::PatternList list;
    Entries entries;
    SharedValues<int> trace; ///< What the patterns are pieces of.
};

/// `lends`: patterns are pushed and changed by hand too.
void step(CheckedPatterns& one, CheckedPatterns& other, bool lends, Input& input) {
    const int operation = input.below(48);
    if (operation == 0) {
        one.list.clear();
        one.entries.clear();
    } else if (operation == 1) {
        one.list = other.list;
        one.entries = other.entries;
    } else if (operation == 2 && &one != &other) {
        one.list.take(other.list);
        if (one.entries.empty()) // as they are, even if some are the same
            one.entries.swap(other.entries);
        else
            one.mergeAll(std::exchange(other.entries, {}));
    } else if (operation == 3) {
        one.list.merge(other.list);
        one.mergeAll(CheckedPatterns::Entries(other.entries));
    } else if (operation == 4 && !one.entries.empty()) {
        one.list.popFront();
        one.entries.erase(one.entries.begin());
    } else if (operation == 7 && &one != &other) {
        one.list.moveFrontTo(other.list);
        if (!one.entries.empty()) {
            other.entries.insert(other.entries.begin(), one.entries.front());
            one.entries.erase(one.entries.begin());
        }
    } else if (operation == 8 && &one != &other) {
        one.list.moveTo(other.list);
        const auto moved = std::exchange(one.entries, {});
        other.entries.insert(other.entries.end(), moved.begin(), moved.end());
    } else if (operation == 5 && lends && !one.entries.empty()) {
        one.changeByHand(input);
    } else if (operation == 6 && lends) {
        const Sequence sequence{CheckedPatterns::byHand++, 100, 0}; // a new one
        model::fill(*one.list.pushBack(), sequence);
        one.merge(sequence, 0);
    } else if (operation < 16) {
        domain::Pattern pattern;
        model::fill(pattern, sequenceFrom(input), input.below(3));
        require(one.list.add(pattern), "a pattern is stored");
        one.merge({pattern.run().begin(), pattern.run().end()}, pattern.mCount);
    } else {
        const Sequence sequence = sequenceFrom(input);
        domain::Pattern pattern;
        require(one.trace.setTo(sequence), "a trace");
        if (!sequence.empty())
            pattern.mSequence.referTo(one.trace, 0, one.trace.size());
        require(one.list.add(pattern, domain::RunHash::of(sequence)), "a run is stored");
        one.merge(sequence, 0);
    }
}

void tryPatterns(Input& input) {
    CheckedPatterns::byHand = 0;
    std::array<CheckedPatterns, 3> lists;
    const bool lends = input.below(2) == 0;
    while (!input.isUsedUp()) {
        CheckedPatterns& one = pick(lists, input);
        CheckedPatterns& other = pick(lists, input);
        step(one, other, lends, input);
        one.check();
        other.check();
    }
}

/// With hashes of which many are the same.
void tryIndex(Input& input) {
    domain::PatternIndex index;
    std::map<Sequence, domain::Pattern*> model;
    std::deque<domain::Pattern> patterns;
    while (!input.isUsedUp()) {
        const Sequence sequence = sequenceFrom(input);
        const quint32 hash = sequence.empty() ? 31 : quint32(sequence[0]);
        domain::Pattern wanted;
        model::fill(wanted, sequence);
        const auto known = model.find(sequence);
        require(index.find(hash, wanted) == (known == model.end() ? nullptr : known->second),
                "a pattern is found if it is there");
        if (input.below(64) == 0) {
            index.clear();
            model.clear();
        } else if (known == model.end()) {
            model::fill(patterns.emplace_back(), sequence);
            index.insert(hash, &patterns.back());
            model[sequence] = &patterns.back();
        }
        require(index.size() == int(model.size()), "the size of an index");
    }
}

/// A nest and the texts of its branches.
struct CheckedNest {
    void resize(std::size_t size) { texts.resize(size, " -1 (0 0 0 0): "); }

    void set(int index, const domain::Branch& branch) {
        require(nest.set(index, branch), "a branch is set");
        resize(std::max(texts.size(), std::size_t(index) + 1));
        texts[std::size_t(index)] = model::describe(branch);
    }

    void merge(int index, domain::Branch& branch, bool takes) {
        const domain::Branch* known = std::as_const(nest).branchAt(index);
        const bool isFree = !known || !known->isValid();
        if (!isFree && known->mKey == branch.mKey)
            return;
        const std::string text = model::describe(branch);
        require((takes ? nest.take(index, branch) : nest.merge(index, branch)) == isFree,
                "a free slot takes a branch, one of another key does not");
        if (isFree) {
            resize(std::max(texts.size(), std::size_t(index) + 1));
            texts[std::size_t(index)] = text;
        }
    }

    void check() const {
        require(nest.size() == int(texts.size()), "the size of a nest");
        for (int i = 0; i < nest.size(); ++i)
            require(model::describe(*nest.branchAt(i)) == texts[std::size_t(i)],
                    "the branches of a nest");
    }

    domain::Nest nest;
    std::vector<std::string> texts;
};

domain::Branch& fillFrom(domain::Branch& branch, Input& input) {
    model::fill(branch, QString(QChar(u'a' + input.below(3))), 1 + input.below(3),
                QRectF(input.below(9), 0, 1, 1));
    if (input.below(2) == 0)
        model::fill(*branch.mPatterns.pushBack(), {input.below(9), 1});
    return branch;
}

void step(CheckedNest& one, CheckedNest& other, Input& input) {
    domain::Branch branch;
    const int index = input.below(30);
    switch (input.below(10)) {
    case 0:
        one.nest.clear();
        one.texts.clear();
        return;
    case 1:
        one.nest.swap(other.nest);
        one.texts.swap(other.texts);
        return;
    case 2:
        require(one.nest.setTo(other.nest), "a copy of a nest");
        one.texts = other.texts;
        return;
    case 3:
        require(one.nest.addSlot(), "a slot is added");
        return one.resize(one.texts.size() + 1);
    case 4:
        if (domain::Branch* known = one.nest.branchAt(index)) {
            known->mGesture = domain::GESTURE_MENU;
            one.texts[std::size_t(index)] = model::describe(*known);
        }
        return;
    case 5:
    case 6:
        return one.merge(index, fillFrom(branch, input), input.below(2) == 0);
    default:
        return one.set(index, fillFrom(branch, input));
    }
}

void tryNests(Input& input) {
    std::array<CheckedNest, 3> nests;
    while (!input.isUsedUp()) {
        CheckedNest& one = pick(nests, input);
        CheckedNest& other = pick(nests, input);
        step(one, other, input);
        if (input.isUsedUp() || input.below(8) == 0) { // describing branches takes time
            one.check();
            other.check();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array CONTAINERS{tryLists,    tryValues, tryObjects,
                                           tryPatterns, tryIndex,  tryNests};
    Input input(data, size);
    CONTAINERS[std::size_t(input.below(int(CONTAINERS.size())))](input);
    return 0;
}
