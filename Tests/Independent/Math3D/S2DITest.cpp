#include "Independent/Math3D/S2DI.h"

#include <cmath>
#include <cstdint>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/S2D.h"
#include "Independent/Math3D/Wrap.h"

using namespace mathtest;
using math3d::S2DI;

namespace
{

S2DI WrapBoth(std::int64_t x, std::int64_t y)
{
    return S2DI(Wrap(x), Wrap(y));
}

/// The number truncated toward zero, or the int that is nearest to it.
int TruncateToNearestInt(float value)
{
    if (std::isnan(value))
        return 0;
    const double truncated = std::trunc(static_cast<double>(value));
    return static_cast<int>(
        std::fmin(std::fmax(truncated, static_cast<double>(IntMin)), static_cast<double>(IntMax)));
}

S2DI RandomPoint(CRandom& random)
{
    return S2DI{random.Int(), random.Int()};
}

} // namespace

TEST(S2DI, IsTwoIntsInOrderBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<S2DI>);
    static_assert(sizeof(S2DI) == sizeof(void*) + 2 * sizeof(int));
    static_assert(std::is_same_v<decltype(S2DI::x), std::int32_t>);
    const S2DI point;
    EXPECT_EQ(&point.x + 1, &point.y);
}

TEST(S2DI, DefaultIsZero)
{
    EXPECT_EQ(0, S2DI().x);
    EXPECT_EQ(0, S2DI().y);
}

TEST(S2DI, ConstructorAndSetTakeTheFieldsInOrder)
{
    const S2DI constructed(1, 2);
    EXPECT_EQ(1, constructed.x);
    EXPECT_EQ(2, constructed.y);
    S2DI assigned;
    assigned.Set(3, 4);
    EXPECT_EQ(3, assigned.x);
    EXPECT_EQ(4, assigned.y);
}

TEST(S2DI, CopyHasTheSameFields)
{
    static_assert(std::is_copy_constructible_v<S2DI>);
    const S2DI point(1, 2);
    const S2DI copy(point);
    EXPECT_EQ(1, copy.x);
    EXPECT_EQ(2, copy.y);
    S2DI assigned;
    assigned = point;
    EXPECT_EQ(1, assigned.x);
    EXPECT_EQ(2, assigned.y);
}

TEST(S2DI, EqualMeansBothComponentsEqual)
{
    EXPECT_TRUE(S2DI(1, 2) == S2DI(1, 2));
    EXPECT_FALSE(S2DI(1, 2) != S2DI(1, 2));
    for (const S2DI& other : {S2DI(9, 2), S2DI(1, 9), S2DI(2, 1)})
    {
        EXPECT_FALSE(S2DI(1, 2) == other) << Print(other);
        EXPECT_TRUE(S2DI(1, 2) != other) << Print(other);
    }
}

TEST(S2DI, SumAndDifferenceAreFormedByComponent)
{
    EXPECT_EQ(S2DI(11, 22), S2DI(1, 2) + S2DI(10, 20));
    EXPECT_EQ(S2DI(-9, -18), S2DI(1, 2) - S2DI(10, 20));
    S2DI sum(1, 2);
    EXPECT_EQ(&sum, &(sum += S2DI(10, 20)));
    EXPECT_EQ(S2DI(11, 22), sum);
}

TEST(S2DI, FactorMultipliesEachComponent)
{
    EXPECT_EQ(S2DI(-3, 6), S2DI(1, -2) * -3);
}

TEST(S2DI, DivisionByAnIntTruncatesTowardZero)
{
    EXPECT_EQ(S2DI(-3, 3), S2DI(-7, 7) / 2);
    EXPECT_EQ(S2DI(3, -3), S2DI(-7, 7) / -2);
    EXPECT_EQ(S2DI(0, 0), S2DI(-1, 1) / 2);
}

TEST(S2DI, DivisionByAFloatTruncatesTowardZero)
{
    EXPECT_EQ(S2DI(-2, 2), S2DI(-7, 7) / 2.5f);
    EXPECT_EQ(S2DI(2, -2), S2DI(-7, 7) / -2.5f);
    EXPECT_EQ(S2DI(-14, 14), S2DI(-7, 7) / 0.5f);
}

TEST(S2DI, DivisionByAFloatIsDoneInFloats)
{
    // As floats 2^24 + 1 is 2^24 and -(2^24 + 3) is -(2^24 + 4).
    EXPECT_EQ(S2DI(16777216, -16777220), S2DI(16777217, -16777219) / 1.0f);
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2DI point = RandomPoint(random);
        const float divisor = i % 2 == 0 ? random.Float() : random.AnyFloat();
        const float x = static_cast<float>(point.x) / divisor;
        const float y = static_cast<float>(point.y) / divisor;
        const S2DI expected(TruncateToNearestInt(x), TruncateToNearestInt(y));
        ASSERT_EQ(expected, point / divisor) << PrintInput(point, divisor);
    }
}

TEST(S2DI, QuotientBeyondTheRangeOfIntIsTheNearestInt)
{
    EXPECT_EQ(S2DI(IntMax, IntMin), S2DI(1, -1) / 0.0f);
    EXPECT_EQ(S2DI(IntMax, IntMin), S2DI(IntMax, IntMin) / 0.5f);
    EXPECT_EQ(S2DI(IntMin, IntMax), S2DI(IntMax, IntMin) / -1e-38f);
    EXPECT_EQ(S2DI(IntMax, IntMin), S2DI(IntMax, IntMin) / 1.0f);
}

TEST(S2DI, QuotientNaNIsZero)
{
    EXPECT_EQ(S2DI(0, 0), S2DI(0, 0) / 0.0f);
    EXPECT_EQ(S2DI(0, 0), S2DI(5, -5) / NaN);
}

TEST(S2DI, ArithmeticBeyond32BitsWrapsAround)
{
    EXPECT_EQ(S2DI(IntMin, IntMax), S2DI(IntMax, IntMin) + S2DI(1, -1));
    EXPECT_EQ(S2DI(IntMax, IntMin), S2DI(IntMin, IntMax) - S2DI(1, -1));
    EXPECT_EQ(S2DI(-2, 0), S2DI(IntMax, IntMin) * 2);
    EXPECT_EQ(S2DI(IntMin, -IntMax), S2DI(IntMin, IntMax) / -1);
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2DI a = RandomPoint(random);
        const S2DI b = RandomPoint(random);
        const std::int64_t ax = a.x;
        const std::int64_t ay = a.y;
        ASSERT_EQ(WrapBoth(ax + b.x, ay + b.y), a + b) << PrintInput(a, b);
        ASSERT_EQ(WrapBoth(ax - b.x, ay - b.y), a - b) << PrintInput(a, b);
        ASSERT_EQ(WrapBoth(ax * b.x, ay * b.x), a * b.x) << PrintInput(a, b);
        S2DI sum = a;
        sum += b;
        ASSERT_EQ(WrapBoth(ax + b.x, ay + b.y), sum) << PrintInput(a, b);
        if (b.x != 0)
        {
            ASSERT_EQ(WrapBoth(ax / b.x, ay / b.x), a / b.x) << PrintInput(a, b);
        }
    }
}

TEST(S2DI, GetS2DConvertsToTheNearestFloats)
{
    EXPECT_SAME_BITS(S2D(-1.0f, 2.0f), S2DI(-1, 2).GetS2D());
    EXPECT_SAME_BITS(S2D(2147483648.0f, -2147483648.0f), S2DI(IntMax, IntMin).GetS2D());
    EXPECT_SAME_BITS(S2D(16777216.0f, 16777220.0f), S2DI(16777217, 16777219).GetS2D());
}

TEST(S2DI, DistanceOfThreeAndFourIsFive)
{
    EXPECT_EQ(5.0f, S2DI::Distance(S2DI(0, 0), S2DI(3, 4)));
    EXPECT_EQ(13.0f, S2DI::Distance(S2DI(-2, 7), S2DI(3, -5)));
}

TEST(S2DI, DistanceIsSummedUpIn32BitInts)
{
    // 46340 squared is the last square that fits, 46341 squared wraps around to a negative number,
    // and 65536 squared to 0.
    EXPECT_FLOAT_EQ(46340.0f, S2DI::Distance(S2DI(0, 0), S2DI(46340, 0)));
    EXPECT_TRUE(std::isnan(S2DI::Distance(S2DI(0, 0), S2DI(46341, 0))));
    EXPECT_EQ(0.0f, S2DI::Distance(S2DI(0, 0), S2DI(65536, 0)));
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2DI a = RandomPoint(random);
        const S2DI b = RandomPoint(random);
        const std::int64_t dx = Wrap(std::int64_t(a.x) - b.x);
        const std::int64_t dy = Wrap(std::int64_t(a.y) - b.y);
        const int sum = Wrap(std::int64_t(Wrap(dx * dx)) + Wrap(dy * dy));
        ASSERT_SAME_BITS(std::sqrt(static_cast<float>(sum)), S2DI::Distance(a, b))
            << PrintInput(a, b);
    }
}
