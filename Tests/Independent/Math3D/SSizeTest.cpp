#include "Independent/Math3D/SSize.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using namespace mathtest;

TEST(SSize, IsTwoFloatsInOrderBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<SSize>);
    static_assert(sizeof(SSize) == sizeof(void*) + 2 * sizeof(float));
    const SSize size;
    EXPECT_EQ(&size.width + 1, &size.height);
}

TEST(SSize, DefaultIsZero)
{
    const SSize size;
    EXPECT_SAME_BITS(0.0f, size.width);
    EXPECT_SAME_BITS(0.0f, size.height);
}

TEST(SSize, ConstructorTakesTheFieldsInOrder)
{
    const SSize size(1.0f, 2.0f);
    EXPECT_EQ(1.0f, size.width);
    EXPECT_EQ(2.0f, size.height);
}

TEST(SSize, SumAndDifferenceAreFormedByComponent)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SSize a{random.Float(), random.Float()};
        const SSize b{random.Float(), random.Float()};
        const SSize sum = a + b;
        const SSize difference = a - b;
        ASSERT_SAME_BITS(a.width + b.width, sum.width) << PrintInput(a.width, b.width);
        ASSERT_SAME_BITS(a.height + b.height, sum.height) << PrintInput(a.height, b.height);
        ASSERT_SAME_BITS(a.width - b.width, difference.width) << PrintInput(a.width, b.width);
        ASSERT_SAME_BITS(a.height - b.height, difference.height) << PrintInput(a.height, b.height);
    }
}
