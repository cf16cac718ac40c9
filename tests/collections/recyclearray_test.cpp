#include "collections/recyclearray.h"
#include "tests/common/countingfactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Ints = RecycleArray<int>;
using Objects = RecycleArray<Counted*>;

constexpr int MAX_SIZE = std::numeric_limits<int>::max();

TEST(RecycleArray, GrowsByItsIncrementBeyondTheSizeAskedFor) {
    Ints trace(256, nullptr);
    EXPECT_TRUE(trace.setSize(0));
    EXPECT_EQ(trace.data(), nullptr);
    for (int i = 0; i < 257; ++i) {
        EXPECT_TRUE(trace.add(i));
        EXPECT_EQ(trace.capacity(), 257);
    }
    EXPECT_TRUE(trace.add(257));
    EXPECT_EQ(trace.capacity(), 514);
    EXPECT_EQ(trace.size(), 258);
}

TEST(RecycleArray, KeepsStorageAndValuesWhenItShrinks) {
    Ints array(1, nullptr);
    EXPECT_TRUE(array.setSize(3));
    array[2] = 5;
    const int* data = array.data();
    EXPECT_TRUE(array.setSize(2));
    EXPECT_TRUE(array.setSize(4));
    EXPECT_EQ(array.data(), data);
    EXPECT_EQ(array.capacity(), 4);
    EXPECT_EQ(array[2], 5);
}

TEST(RecycleArray, AddsAnElementOfItself) {
    Ints array(0, nullptr);
    array.add(1);
    for (int i = 1; i < 1000; ++i)
        array.add(array[0]);
    EXPECT_THAT(std::vector<int>(array.data(), array.data() + 1000),
                ElementsAreArray(std::vector<int>(1000, 1)));
}

TEST(RecycleArray, ComparesBytes) {
    RecycleArray<double> zero(1, nullptr);
    RecycleArray<double> negative(7, nullptr);
    EXPECT_TRUE(zero == negative);
    zero.add(0.0);
    negative.add(-0.0);
    EXPECT_FALSE(zero == negative);
}

TEST(RecycleArray, IsUnchangedWithoutStorage) {
    struct Page {
        std::array<char, 1 << 20> bytes;
    };

    RecycleArray<Page> array(1, nullptr);
    ASSERT_TRUE(array.setSize(1));
    array[0].bytes[0] = 'x';
    for (const int size : {MAX_SIZE, MAX_SIZE - 1, -1}) {
        SCOPED_TRACE(size);
        EXPECT_FALSE(array.setSize(size));
        EXPECT_EQ(array.size(), 1);
        EXPECT_EQ(array.capacity(), 2);
        EXPECT_EQ(array[0].bytes[0], 'x');
    }
}

TEST(RecycleArrayDeathTest, ValuesAreForbiddenWithAFactory) {
    const CountingFactory factory;
    Objects objects(1, &factory);
    Objects others(1, &factory);
    EXPECT_DEATH(objects.add(nullptr), "Quillon/collections/recyclearray.*add.*!mFactory");
    EXPECT_DEATH(objects.setTo(others), "Quillon/collections/recyclearray.*setTo.*!mFactory");
    EXPECT_DEATH(objects = others, "Quillon/collections/recyclearray.*setTo.*!mFactory");
    EXPECT_DEATH(static_cast<void>(objects == others),
                 "Quillon/collections/recyclearray.*operator==.*!mFactory");
}

TEST(ManagedArray, LosesNoObjectToAnExceptionThatPasses) {
    CountingFactory factory;
    factory.beforeNew = [](int id) {
        if (id == 2)
            throw 2;
    };
    {
        ManagedArray<Counted*> array(factory);
        EXPECT_THROW(array.setSize(3), int);
        EXPECT_EQ(array.size(), 0);
    }
    EXPECT_THAT(factory.deleted, UnorderedElementsAre(0, 1));
}

} // namespace
