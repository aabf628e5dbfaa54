#include "Independent/Math3D/SUV.h"

#include <cstddef>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using namespace mathtest;

TEST(SUV, IsTwoFloatsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<SUV>);
    static_assert(std::is_standard_layout_v<SUV>);
    static_assert(std::is_trivially_copyable_v<SUV>);
    static_assert(sizeof(SUV) == 2 * sizeof(float));
    static_assert(offsetof(SUV, u) == 0);
    static_assert(offsetof(SUV, v) == 4);
}

TEST(SUV, DefaultIsZero)
{
    EXPECT_SAME_BITS(SUV(0.0f, 0.0f), SUV());
}

TEST(SUV, ConstructorAndSetTakeTheFieldsInOrder)
{
    const SUV constructed(1.0f, 2.0f);
    EXPECT_EQ(1.0f, constructed.u);
    EXPECT_EQ(2.0f, constructed.v);
    SUV assigned;
    assigned.Set(3.0f, 4.0f);
    EXPECT_EQ(3.0f, assigned.u);
    EXPECT_EQ(4.0f, assigned.v);
}

TEST(SUV, GettersGiveTheFields)
{
    const SUV coordinate(1.0f, 2.0f);
    EXPECT_EQ(1.0f, coordinate.GetU());
    EXPECT_EQ(2.0f, coordinate.GetV());
}

TEST(SUV, EqualMeansBothComponentsExactlyEqual)
{
    const SUV coordinate(1.0f, 2.0f);
    EXPECT_TRUE(coordinate == SUV(1.0f, 2.0f));
    EXPECT_FALSE(coordinate != SUV(1.0f, 2.0f));
    for (const SUV& other :
         {SUV(9.0f, 2.0f), SUV(1.0f, 9.0f), SUV(std::nextafter(1.0f, 2.0f), 2.0f)})
    {
        EXPECT_FALSE(coordinate == other) << Print(other);
        EXPECT_TRUE(coordinate != other) << Print(other);
    }
    EXPECT_TRUE(SUV(NaN, 0.0f) != SUV(NaN, 0.0f));
    EXPECT_FALSE(SUV(NaN, 0.0f) == SUV(NaN, 0.0f));
}

TEST(SUV, SumInPlaceIsFormedByComponent)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SUV a = random.TextureCoordinate();
        const SUV b = random.TextureCoordinate();
        SUV sum = a;
        EXPECT_EQ(&sum, &(sum += b));
        ASSERT_SAME_BITS(SUV(a.u + b.u, a.v + b.v), sum) << PrintInput(a, b);
    }
}

TEST(SUV, DivisionInPlaceDividesEachComponent)
{
    // The product with the reciprocal would be 0x1.aaaaacp+0.
    SUV exact(5.0f, -5.0f);
    exact /= 3.0f;
    EXPECT_SAME_BITS(SUV(0x1.aaaaaap+0f, -0x1.aaaaaap+0f), exact);
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SUV coordinate = random.TextureCoordinate();
        const float divisor = random.Float();
        SUV quotient = coordinate;
        EXPECT_EQ(&quotient, &(quotient /= divisor));
        ASSERT_SAME_BITS(SUV(coordinate.u / divisor, coordinate.v / divisor), quotient)
            << PrintInput(coordinate, divisor);
    }
}

TEST(SUV, DivisionByZeroGivesInfinityAndNaN)
{
    SUV coordinate(-1.0f, 0.0f);
    coordinate /= 0.0f;
    EXPECT_SAME_BITS(SUV(-Infinity, NaN), coordinate);
}
