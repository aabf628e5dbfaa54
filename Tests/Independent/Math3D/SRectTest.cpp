#include "Independent/Math3D/SRect.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/Wrap.h"

using namespace mathtest;
using math3d::S2DI;
using math3d::SRect;

namespace
{

/// The lower limit first, then the upper one.
int LimitOneAxis(int value, int start, int length)
{
    const int end = Wrap(std::int64_t(start) + length);
    int limited = value;
    if (limited < start)
        limited = start;
    if (limited >= end)
        limited = Wrap(std::int64_t(end) - 1);
    return limited;
}

template <typename Value, typename = void>
struct HasEqual : std::false_type
{
};

template <typename Value>
struct HasEqual<Value, std::void_t<decltype(std::declval<Value>() == std::declval<Value>())>>
    : std::true_type
{
};

} // namespace

TEST(SRect, IsFourIntsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<SRect>);
    static_assert(!std::has_virtual_destructor_v<SRect>);
    static_assert(std::is_standard_layout_v<SRect>);
    static_assert(sizeof(SRect) == 4 * sizeof(int));
    static_assert(offsetof(SRect, x) == 0);
    static_assert(offsetof(SRect, y) == 4);
    static_assert(offsetof(SRect, width) == 8);
    static_assert(offsetof(SRect, height) == 12);
    static_assert(std::is_same_v<decltype(SRect::x), std::int32_t>);
}

TEST(SRect, DefaultIsAllZero)
{
    const SRect rect;
    EXPECT_EQ(0, rect.x);
    EXPECT_EQ(0, rect.y);
    EXPECT_EQ(0, rect.width);
    EXPECT_EQ(0, rect.height);
}

TEST(SRect, ConstructorAndSetTakeTheFieldsInOrder)
{
    SRect rect(1, 2, 3, 4);
    EXPECT_EQ(1, rect.x);
    EXPECT_EQ(2, rect.y);
    EXPECT_EQ(3, rect.width);
    EXPECT_EQ(4, rect.height);
    rect.Set(5, 6, 7, 8);
    EXPECT_EQ(5, rect.x);
    EXPECT_EQ(6, rect.y);
    EXPECT_EQ(7, rect.width);
    EXPECT_EQ(8, rect.height);
}

TEST(SRect, UnequalMeansAnyFieldDiffers)
{
    const SRect rect(1, 2, 3, 4);
    EXPECT_FALSE(rect != SRect(1, 2, 3, 4));
    EXPECT_TRUE(rect != SRect(9, 2, 3, 4));
    EXPECT_TRUE(rect != SRect(1, 9, 3, 4));
    EXPECT_TRUE(rect != SRect(1, 2, 9, 4));
    EXPECT_TRUE(rect != SRect(1, 2, 3, 9));
}

TEST(SRect, HasNoEqualOperator)
{
    static_assert(HasEqual<S2DI>::value);
    static_assert(!HasEqual<SRect>::value);
}

TEST(SRect, PositionAndSizeAreItsTwoHalves)
{
    const SRect rect(1, 2, 3, 4);
    EXPECT_EQ(S2DI(1, 2), rect.GetPos());
    EXPECT_EQ(S2DI(3, 4), rect.GetSize());
}

TEST(SRect, LimitMovesAPointToTheNearestOneInside)
{
    const SRect rect(0, 0, 10, 10);
    EXPECT_EQ(S2DI(9, 0), rect.Limit(S2DI(15, -3)));
    EXPECT_EQ(S2DI(0, 9), rect.Limit(S2DI(-1, 10)));
    EXPECT_EQ(S2DI(4, 5), rect.Limit(S2DI(4, 5)));
    EXPECT_EQ(S2DI(9, 9), rect.Limit(S2DI(9, 9)));
    EXPECT_EQ(S2DI(-5, 23), SRect(-5, 20, 3, 4).Limit(S2DI(-9, 99)));
    EXPECT_EQ(S2DI(-3, 20), SRect(-5, 20, 3, 4).Limit(S2DI(0, 0)));
}

TEST(SRect, LimitOfAZeroWidthIsOneLeftOfTheRectangle)
{
    for (const int x : {IntMin, -1, 4, 5, 6, IntMax})
        EXPECT_EQ(S2DI(4, 7), SRect(5, 0, 0, 10).Limit(S2DI(x, 7))) << x;
}

TEST(SRect, LimitOfAZeroHeightIsOneAboveTheRectangle)
{
    for (const int y : {IntMin, -1, 4, 5, 6, IntMax})
        EXPECT_EQ(S2DI(7, 4), SRect(0, 5, 10, 0).Limit(S2DI(7, y))) << y;
}

TEST(SRect, LimitLetsTheUpperEdgeHaveTheLastWord)
{
    // A width of -3 ends left of where it starts.
    EXPECT_EQ(S2DI(1, 1), SRect(5, 5, -3, -3).Limit(S2DI(5, 5)));
    EXPECT_EQ(S2DI(1, 1), SRect(5, 5, -3, -3).Limit(S2DI(-9, 9)));
}

TEST(SRect, LimitWrapsAroundBeyond32Bits)
{
    EXPECT_EQ(S2DI(IntMin + 8, 0), SRect(IntMax, 0, 10, 1).Limit(S2DI(0, 0)));
    EXPECT_EQ(S2DI(IntMax, 0), SRect(IntMin, 0, 0, 1).Limit(S2DI(0, 0)));
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SRect rect{random.Int(), random.Int(), random.Int(), random.Int()};
        const S2DI point{random.Int(), random.Int()};
        const S2DI expected(
            LimitOneAxis(point.x, rect.x, rect.width), LimitOneAxis(point.y, rect.y, rect.height));
        ASSERT_EQ(expected, rect.Limit(point))
            << Print(rect.GetPos()) << Print(rect.GetSize()) << Print(point);
    }
}
