#include "Independent/Math3D/S2D.h"

#include <cmath>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/S2DI.h"

using namespace mathtest;
using math3d::S2DI;

namespace
{

/// The integer part of a float as a number that every int fits into.
S2DI TruncateByDouble(const S2D& vector)
{
    return S2DI(
        static_cast<int>(std::trunc(static_cast<double>(vector.x))),
        static_cast<int>(std::trunc(static_cast<double>(vector.y))));
}

} // namespace

TEST(S2D, IsTwoFloatsInOrderBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<S2D>);
    static_assert(sizeof(S2D) == sizeof(void*) + 2 * sizeof(float));
    const S2D vector;
    EXPECT_EQ(&vector.x + 1, &vector.y);
}

TEST(S2D, DefaultIsTheZeroVector)
{
    EXPECT_SAME_BITS(S2D(0.0f, 0.0f), S2D());
}

TEST(S2D, ConstructorTakesTheFieldsInOrder)
{
    const S2D vector(1.0f, 2.0f);
    EXPECT_EQ(1.0f, vector.x);
    EXPECT_EQ(2.0f, vector.y);
}

TEST(S2D, CopyHasTheSameFields)
{
    static_assert(std::is_copy_constructible_v<S2D>);
    const S2D vector(1.0f, 2.0f);
    const S2D copy(vector);
    EXPECT_SAME_BITS(vector, copy);
    S2D assigned;
    assigned = vector;
    EXPECT_SAME_BITS(vector, assigned);
}

TEST(S2D, SumDifferenceAndProductAreFormedByComponent)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2D a = random.Vector2();
        const S2D b = random.Vector2();
        ASSERT_SAME_BITS(S2D(a.x + b.x, a.y + b.y), a + b) << PrintInput(a, b);
        ASSERT_SAME_BITS(S2D(a.x - b.x, a.y - b.y), a - b) << PrintInput(a, b);
        ASSERT_SAME_BITS(S2D(a.x * b.x, a.y * b.y), a * b) << PrintInput(a, b);
        S2D sum = a;
        EXPECT_EQ(&sum, &(sum += b));
        ASSERT_SAME_BITS(S2D(a.x + b.x, a.y + b.y), sum) << PrintInput(a, b);
    }
}

TEST(S2D, FactorMultipliesAndDivisorDividesEachComponent)
{
    // The product with the reciprocal would be 0x1.aaaaacp+0.
    EXPECT_SAME_BITS(S2D(0x1.aaaaaap+0f, -0x1.aaaaaap+0f), S2D(5.0f, -5.0f) / 3.0f);
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2D vector = random.Vector2();
        const float number = random.Float();
        ASSERT_SAME_BITS(S2D(vector.x * number, vector.y * number), vector * number)
            << PrintInput(vector, number);
        ASSERT_SAME_BITS(S2D(vector.x / number, vector.y / number), vector / number)
            << PrintInput(vector, number);
    }
}

TEST(S2D, DivisionByZeroGivesInfinityAndNaN)
{
    EXPECT_SAME_BITS(S2D(-Infinity, NaN), S2D(-1.0f, 0.0f) / 0.0f);
}

TEST(S2D, EqualMeansBothComponentsExactlyEqual)
{
    const S2D vector(1.0f, 2.0f);
    EXPECT_TRUE(vector == S2D(1.0f, 2.0f));
    EXPECT_FALSE(vector != S2D(1.0f, 2.0f));
    for (const S2D& other :
         {S2D(9.0f, 2.0f), S2D(1.0f, 9.0f), S2D(std::nextafter(1.0f, 2.0f), 2.0f)})
    {
        EXPECT_FALSE(vector == other) << Print(other);
        EXPECT_TRUE(vector != other) << Print(other);
    }
    EXPECT_TRUE(S2D(NaN, 0.0f) != S2D(NaN, 0.0f));
    EXPECT_FALSE(S2D(NaN, 0.0f) == S2D(NaN, 0.0f));
}

TEST(S2D, GetS2DITruncatesTowardZero)
{
    EXPECT_EQ(S2DI(-1, 2), S2D(-1.7f, 2.9f).GetS2DI());
    EXPECT_EQ(S2DI(0, 0), S2D(-0.9f, 0.9f).GetS2DI());
    // The largest float below 2^31 and the smallest int.
    EXPECT_EQ(S2DI(2147483520, IntMin), S2D(2147483520.0f, -2147483648.0f).GetS2DI());
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        // Every magnitude below 2^31.
        const auto component = [&random] {
            return std::ldexp(
                random.Between(-0.999f, 0.999f), static_cast<int>(random.Below(36)) - 4);
        };
        const S2D vector{component(), component()};
        ASSERT_EQ(TruncateByDouble(vector), vector.GetS2DI()) << PrintInput(vector);
    }
}

TEST(S2D, GetS2DIBeyondTheRangeOfIntIsTheNearestInt)
{
    EXPECT_EQ(S2DI(IntMax, IntMin), S2D(2147483648.0f, -2147483904.0f).GetS2DI());
    EXPECT_EQ(S2DI(IntMax, IntMin), S2D(1e38f, -1e38f).GetS2DI());
    EXPECT_EQ(S2DI(IntMax, IntMin), S2D(Infinity, -Infinity).GetS2DI());
}

TEST(S2D, GetS2DIOfNaNIsZero)
{
    EXPECT_EQ(S2DI(0, 0), S2D(NaN, -NaN).GetS2DI());
}

TEST(S2D, NormalisedVectorHasLengthOne)
{
    S2D vector(3.0f, -4.0f);
    vector.Normalize();
    EXPECT_FLOAT_EQ(0.6f, vector.x);
    EXPECT_FLOAT_EQ(-0.8f, vector.y);
}

TEST(S2D, NormalisingUsesNoEpsilon)
{
    S2D vector(0.0f, 0x1p-60f);
    vector.Normalize();
    EXPECT_SAME_BITS(S2D(0.0f, 1.0f), vector);
}

TEST(S2D, NormalisingLeavesTheZeroVector)
{
    S2D zero(0.0f, -0.0f);
    zero.Normalize();
    EXPECT_SAME_BITS(S2D(0.0f, -0.0f), zero);
}

TEST(S2D, NormalisingMultipliesByTheReciprocalOfTheLength)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2D vector = random.Vector2();
        const float xx = vector.x * vector.x;
        const float yy = vector.y * vector.y;
        const float length = std::sqrt(xx + yy);
        if (length == 0.0f)
            continue;
        const float reciprocal = 1.0f / length;
        S2D normalised = vector;
        normalised.Normalize();
        ASSERT_SAME_BITS(S2D(vector.x * reciprocal, vector.y * reciprocal), normalised)
            << PrintInput(vector);
    }
}

TEST(S2D, NormalisingLeavesAVectorTooShortForALength)
{
    // The square of 1e-30 is below every float.
    S2D vector(1e-30f, 0.0f);
    vector.Normalize();
    EXPECT_SAME_BITS(S2D(1e-30f, 0.0f), vector);
}

TEST(S2D, DistanceIsTheLengthOfTheDifference)
{
    EXPECT_EQ(5.0f, S2D::Distance(S2D(1.0f, 2.0f), S2D(4.0f, -2.0f)));
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S2D a = random.Vector2();
        const S2D b = random.Vector2();
        const float dx = a.x - b.x;
        const float dy = a.y - b.y;
        const float xx = dx * dx;
        const float yy = dy * dy;
        ASSERT_SAME_BITS(std::sqrt(xx + yy), S2D::Distance(a, b)) << PrintInput(a, b);
    }
}
