#include "collections/managedlist.h"
#include "collections/recyclearray.h"

#include <gtest/gtest.h>

namespace {

class IntFactory : public ManagedFactory<int*> {
public:
    using ManagedFactory::ManagedFactory;

    int* nullObject() const override { return nullptr; }

    int* newObject() const override { return new int(0); }

    void deleteObject(int* object) const override { delete object; }

    void initializeObject(int* object) const override {
        if (object)
            *object = 0;
    }

    int* setObject(int* destination, int* source) const override {
        *destination = *source;
        return destination;
    }
};

TEST(ManagedList, ReusesThePoppedObjectFirst) {
    const IntFactory factory(false);
    ManagedList<int*> list(factory);
    int* first = list.pushBack();
    list.popFront();
    EXPECT_EQ(list.pushFront(), first);
    EXPECT_EQ(list.at(0), first);
    EXPECT_EQ(list.size(), 1);
}

TEST(RecycleArray, GrowsBeyondTheSizeAskedFor) {
    RecycleArray<int> array(256, nullptr);
    EXPECT_TRUE(array.add(4));
    EXPECT_EQ(array.capacity(), 257);
    const IntFactory factory(false);
    ManagedArray<int*> objects(factory);
    EXPECT_TRUE(objects.setSize(3));
    EXPECT_TRUE(objects[2]);
}

} // namespace
