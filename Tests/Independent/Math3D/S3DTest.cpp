#include "Independent/Math3D/S3D.h"

#include <cmath>
#include <csignal>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/SMatrix.h"

using namespace mathtest;

namespace
{

/// The four sums of the row (x, y, z, 1) times a matrix.
S4D MulPoint(const S3D& point, const SMatrix& matrix)
{
    float sums[4];
    for (int column = 0; column < 4; ++column)
    {
        const float fromX = point.x * matrix.m[0][column];
        const float fromY = point.y * matrix.m[1][column];
        const float fromZ = point.z * matrix.m[2][column];
        const float xy = fromX + fromY;
        const float xyz = xy + fromZ;
        sums[column] = xyz + matrix.m[3][column];
    }
    return S4D(sums[0], sums[1], sums[2], sums[3]);
}

S3D TimesReciprocal(const S4D& sums)
{
    const float reciprocal = 1.0f / sums.w;
    return S3D(sums.x * reciprocal, sums.y * reciprocal, sums.z * reciprocal);
}

/// A random matrix whose w is, in turns, anything, 1 and 0.
SMatrix CreateMatrixOfEachKind(CRandom& random, int index)
{
    SMatrix matrix = random.Matrix();
    if (index % 3 != 0)
    {
        for (float(&row)[4] : matrix.m)
            row[3] = 0.0f;
        matrix.m[3][3] = index % 3 == 1 ? 1.0f : 0.0f;
    }
    return matrix;
}

S3D CreateUnitVector(CRandom& random)
{
    S3D vector;
    do
        vector = random.Vector3Between(-1.0f, 1.0f);
    while (vector.Length() < 0.1f);
    return vector.GetNormalize();
}

} // namespace

TEST(S3D, IsThreeFloatsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<S3D>);
    static_assert(std::is_standard_layout_v<S3D>);
    static_assert(std::is_trivially_copyable_v<S3D>);
    static_assert(sizeof(S3D) == 3 * sizeof(float));
    static_assert(offsetof(S3D, x) == 0);
    static_assert(offsetof(S3D, y) == 4);
    static_assert(offsetof(S3D, z) == 8);
    static_assert(std::is_same_v<decltype(S3D::x), float>);
}

TEST(S3D, DefaultIsTheZeroVector)
{
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), S3D());
}

TEST(S3D, ConstructorAndSetTakeTheFieldsInOrder)
{
    const S3D constructed(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(1.0f, constructed.x);
    EXPECT_EQ(2.0f, constructed.y);
    EXPECT_EQ(3.0f, constructed.z);
    S3D assigned;
    assigned.Set(4.0f, 5.0f, 6.0f);
    EXPECT_EQ(4.0f, assigned.x);
    EXPECT_EQ(5.0f, assigned.y);
    EXPECT_EQ(6.0f, assigned.z);
}

TEST(S3D, EqualMeansAllThreeComponentsEqual)
{
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_TRUE(vector == S3D(1.0f, 2.0f, 3.0f));
    EXPECT_FALSE(vector != S3D(1.0f, 2.0f, 3.0f));
    for (const S3D& other : {S3D(9.0f, 2.0f, 3.0f), S3D(1.0f, 9.0f, 3.0f), S3D(1.0f, 2.0f, 9.0f)})
    {
        EXPECT_FALSE(vector == other) << Print(other);
        EXPECT_TRUE(vector != other) << Print(other);
    }
}

TEST(S3D, ComparisonIsExact)
{
    const float next = std::nextafter(1.0f, 2.0f);
    EXPECT_TRUE(S3D(1.0f, 0.0f, 0.0f) != S3D(next, 0.0f, 0.0f));
    EXPECT_TRUE(S3D(1.0f, 0.0f, 0.0f) < S3D(next, 0.0f, 0.0f));
    EXPECT_TRUE(S3D(0.0f, 0.0f, 0.0f) == S3D(-0.0f, -0.0f, -0.0f));
    EXPECT_FALSE(S3D(NaN, 0.0f, 0.0f) == S3D(NaN, 0.0f, 0.0f));
    EXPECT_TRUE(S3D(0.0f, 0.0f, NaN) != S3D(0.0f, 0.0f, NaN));
}

TEST(S3D, OrderIsDecidedByXThenYThenZ)
{
    EXPECT_TRUE(S3D(1.0f, 2.0f, 3.0f) < S3D(1.0f, 2.0f, 4.0f));
    EXPECT_FALSE(S3D(1.0f, 2.0f, 3.0f) > S3D(1.0f, 2.0f, 4.0f));
    EXPECT_FALSE(S3D(1.0f, 2.0f, 3.0f) < S3D(0.0f, 9.0f, 9.0f));
    EXPECT_TRUE(S3D(1.0f, 2.0f, 3.0f) > S3D(0.0f, 9.0f, 9.0f));
    EXPECT_TRUE(S3D(1.0f, 2.0f, 9.0f) < S3D(1.0f, 3.0f, 0.0f));
    EXPECT_FALSE(S3D(1.0f, 2.0f, 9.0f) > S3D(1.0f, 3.0f, 0.0f));
}

TEST(S3D, EqualVectorsAreNeitherLessNorGreater)
{
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_FALSE(vector < S3D(1.0f, 2.0f, 3.0f));
    EXPECT_FALSE(vector > S3D(1.0f, 2.0f, 3.0f));
}

TEST(S3D, VectorWithNaNInTheDecidingComponentIsNeitherLessNorGreater)
{
    EXPECT_FALSE(S3D(NaN, 0.0f, 0.0f) < S3D(1.0f, 1.0f, 1.0f));
    EXPECT_FALSE(S3D(NaN, 1.0f, 1.0f) > S3D(1.0f, 0.0f, 0.0f));
}

TEST(S3D, OrderIsThatOfTuples)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        // Few values, so that components are often equal.
        const auto component = [&random] { return static_cast<float>(random.Below(3)); };
        const S3D a{component(), component(), component()};
        const S3D b{component(), component(), component()};
        ASSERT_EQ(std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z), a < b) << PrintInput(a, b);
        ASSERT_EQ(std::tie(a.x, a.y, a.z) > std::tie(b.x, b.y, b.z), a > b) << PrintInput(a, b);
    }
}

TEST(S3D, SumDifferenceAndProductAreFormedByComponent)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = random.Vector3();
        const S3D b = random.Vector3();
        const S3D sum(a.x + b.x, a.y + b.y, a.z + b.z);
        const S3D difference(a.x - b.x, a.y - b.y, a.z - b.z);
        const S3D product(a.x * b.x, a.y * b.y, a.z * b.z);
        ASSERT_SAME_BITS(sum, a + b) << PrintInput(a, b);
        ASSERT_SAME_BITS(difference, a - b) << PrintInput(a, b);
        ASSERT_SAME_BITS(difference, S3D::Sub(a, b)) << PrintInput(a, b);
        ASSERT_SAME_BITS(product, a * b) << PrintInput(a, b);
    }
}

TEST(S3D, SumDifferenceAndProductInPlaceAreFormedByComponent)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = random.Vector3();
        const S3D b = random.Vector3();
        S3D sum = a;
        sum += b;
        S3D difference = a;
        difference -= b;
        S3D product = a;
        product *= b;
        ASSERT_SAME_BITS(S3D(a.x + b.x, a.y + b.y, a.z + b.z), sum) << PrintInput(a, b);
        ASSERT_SAME_BITS(S3D(a.x - b.x, a.y - b.y, a.z - b.z), difference) << PrintInput(a, b);
        ASSERT_SAME_BITS(S3D(a.x * b.x, a.y * b.y, a.z * b.z), product) << PrintInput(a, b);
    }
}

TEST(S3D, InPlaceOperatorsTakeTheVectorItself)
{
    S3D vector(1.0f, 2.0f, 3.0f);
    const S3D& itself = vector;
    vector += itself;
    EXPECT_SAME_BITS(S3D(2.0f, 4.0f, 6.0f), vector);
    vector *= itself;
    EXPECT_SAME_BITS(S3D(4.0f, 16.0f, 36.0f), vector);
    vector /= vector.x;
    EXPECT_SAME_BITS(S3D(1.0f, 4.0f, 9.0f), vector);
    vector *= vector.y;
    EXPECT_SAME_BITS(S3D(4.0f, 16.0f, 36.0f), vector);
    vector -= itself;
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), vector);
}

TEST(S3D, FactorOnEitherSideMultipliesEachComponent)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const float factor = random.Float();
        const S3D expected(vector.x * factor, vector.y * factor, vector.z * factor);
        S3D inPlace = vector;
        inPlace *= factor;
        ASSERT_SAME_BITS(expected, vector * factor) << PrintInput(vector, factor);
        ASSERT_SAME_BITS(expected, factor * vector) << PrintInput(vector, factor);
        ASSERT_SAME_BITS(expected, inPlace) << PrintInput(vector, factor);
    }
}

TEST(S3D, DivisionDividesWhereDivisionInPlaceMultipliesByTheReciprocal)
{
    // 5 / 3 rounds down to 0x1.aaaaaap+0; 1 / 3 rounds up, and so does 5 times that.
    S3D inPlace(5.0f, 0.0f, -5.0f);
    inPlace /= 3.0f;
    EXPECT_SAME_BITS(S3D(0x1.aaaaaap+0f, 0.0f, -0x1.aaaaaap+0f), S3D(5.0f, 0.0f, -5.0f) / 3.0f);
    EXPECT_SAME_BITS(S3D(0x1.aaaaacp+0f, 0.0f, -0x1.aaaaacp+0f), inPlace);
}

TEST(S3D, DivisionDividesEachComponent)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const float divisor = random.Float();
        const S3D expected(vector.x / divisor, vector.y / divisor, vector.z / divisor);
        ASSERT_SAME_BITS(expected, vector / divisor) << PrintInput(vector, divisor);
    }
}

TEST(S3D, DivisionInPlaceMultipliesByOneReciprocal)
{
    CRandom random(6);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const float divisor = random.Float();
        const float reciprocal = 1.0f / divisor;
        S3D quotient = vector;
        quotient /= divisor;
        const S3D expected(vector.x * reciprocal, vector.y * reciprocal, vector.z * reciprocal);
        ASSERT_SAME_BITS(expected, quotient) << PrintInput(vector, divisor);
    }
}

TEST(S3D, DivisionByZeroGivesInfinitiesAndNaN)
{
    EXPECT_SAME_BITS(S3D(Infinity, -Infinity, NaN), S3D(1.0f, -1.0f, 0.0f) / 0.0f);
    S3D inPlace(1.0f, -1.0f, 0.0f);
    inPlace /= 0.0f;
    EXPECT_SAME_BITS(S3D(Infinity, -Infinity, NaN), inPlace);
}

TEST(S3D, UnaryMinusChangesEverySign)
{
    EXPECT_SAME_BITS(S3D(-1.0f, 2.0f, -0.0f), -S3D(1.0f, -2.0f, 0.0f));
}

TEST(S3D, InPlaceOperatorsReturnTheVectorForChaining)
{
    S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(&vector, &(vector += S3D()));
    EXPECT_EQ(&vector, &(vector -= S3D()));
    EXPECT_EQ(&vector, &(vector *= S3D(1.0f, 1.0f, 1.0f)));
    EXPECT_EQ(&vector, &(vector *= 1.0f));
    EXPECT_EQ(&vector, &(vector /= 1.0f));
    EXPECT_EQ(&vector, &(vector *= SMatrix()));
}

TEST(S3D, PointIsTransformedAndDividedByW)
{
    CRandom random(7);
    int casesWithW[3] = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D point = random.Vector3();
        const SMatrix matrix = CreateMatrixOfEachKind(random, i);
        const S4D sums = MulPoint(point, matrix);
        const bool isDivided = sums.w != 1.0f && sums.w != 0.0f;
        const S3D expected = isDivided ? TimesReciprocal(sums) : S3D(sums.x, sums.y, sums.z);
        ASSERT_SAME_BITS(expected, point * matrix) << PrintInput(point, matrix);
        ++casesWithW[isDivided ? 2 : static_cast<int>(sums.w)];
    }
    for (const int cases : casesWithW)
        EXPECT_GT(cases, RandomCases / 10);
}

TEST(S3D, PointIsTransformedInPlaceUnlessWIsZero)
{
    CRandom random(8);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D point = random.Vector3();
        const SMatrix matrix = CreateMatrixOfEachKind(random, i);
        const S4D sums = MulPoint(point, matrix);
        S3D expected = point;
        if (sums.w == 1.0f)
            expected = S3D(sums.x, sums.y, sums.z);
        else if (sums.w != 0.0f)
            expected = TimesReciprocal(sums);
        S3D transformed = point;
        transformed *= matrix;
        ASSERT_SAME_BITS(expected, transformed) << PrintInput(point, matrix);
    }
}

TEST(S3D, TheTwoTransformsDifferAtWZero)
{
    SMatrix matrix = SMatrix::CreateMove(S3D(10.0f, 20.0f, 30.0f));
    for (const float zero : {0.0f, -0.0f})
    {
        matrix.m[3][3] = zero;
        const S3D point(1.0f, 2.0f, 3.0f);
        EXPECT_SAME_BITS(S3D(11.0f, 22.0f, 33.0f), point * matrix);
        S3D inPlace = point;
        inPlace *= matrix;
        EXPECT_SAME_BITS(point, inPlace);
    }
}

TEST(S3D, TheTwoTransformsDivideAlikeAtWTwo)
{
    SMatrix matrix = SMatrix::CreateMove(S3D(1.0f, 2.0f, 3.0f));
    matrix.m[3][3] = 2.0f;
    EXPECT_SAME_BITS(S3D(1.0f, 1.5f, 2.0f), S3D(1.0f, 1.0f, 1.0f) * matrix);
    S3D inPlace(1.0f, 1.0f, 1.0f);
    inPlace *= matrix;
    EXPECT_SAME_BITS(S3D(1.0f, 1.5f, 2.0f), inPlace);
}

TEST(S3D, EveryOtherWDividesHoweverNearToOneOrZero)
{
    SMatrix matrix;
    for (const float w : {std::nextafter(1.0f, 0.0f), 1.0f + 0x1p-22f, 0x1p-100f, -0x1p-100f})
    {
        matrix.m[3][3] = w;
        const float reciprocal = 1.0f / w;
        const S3D expected(3.0f * reciprocal, 5.0f * reciprocal, 7.0f * reciprocal);
        S3D inPlace(3.0f, 5.0f, 7.0f);
        EXPECT_SAME_BITS(expected, inPlace * matrix) << w;
        inPlace *= matrix;
        EXPECT_SAME_BITS(expected, inPlace) << w;
    }
}

TEST(S3D, MulMatrixRotNeitherMovesNorDivides)
{
    CRandom random(9);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const SMatrix matrix = random.Matrix();
        float sums[3];
        for (int column = 0; column < 3; ++column)
        {
            const float fromX = vector.x * matrix.m[0][column];
            const float fromY = vector.y * matrix.m[1][column];
            const float fromZ = vector.z * matrix.m[2][column];
            const float xy = fromX + fromY;
            sums[column] = xy + fromZ;
        }
        ASSERT_SAME_BITS(S3D(sums[0], sums[1], sums[2]), vector.MulMatrixRot(matrix))
            << PrintInput(vector, matrix);
    }
}

TEST(S3D, MulMatrixRotLeavesTheVectorItselfUnchanged)
{
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_SAME_BITS(
        S3D(2.0f, 4.0f, 6.0f), vector.MulMatrixRot(SMatrix::CreateScale(S3D(2.0f, 2.0f, 2.0f))));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), vector);
}

TEST(S3D, IndexZeroOneTwoGivesXYZ)
{
    static_assert(std::is_convertible_v<decltype(std::declval<const S3D&>()[0ul]), float>);
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(1.0f, vector[0]);
    EXPECT_EQ(2.0f, vector[1]);
    EXPECT_EQ(3.0f, vector[2]);
}

TEST(S3DDeathTest, AnyOtherIndexFailsTheAssertion)
{
    const char* const message = "S3D\\.(cpp|h).*operator\\[\\].*!\"S3D\\[\\] out of range\"";
    const S3D vector(1.0f, 2.0f, 3.0f);
    EXPECT_EXIT(static_cast<void>(vector[3]), testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT(static_cast<void>(vector[4]), testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT(static_cast<void>(vector[~(~0ul >> 1)]), testing::KilledBySignal(SIGABRT), message);
    EXPECT_EXIT(static_cast<void>(vector[~0ul]), testing::KilledBySignal(SIGABRT), message);
}

TEST(S3D, GetXZOnlyDropsTheHeight)
{
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 3.0f), S3D(1.0f, 2.0f, 3.0f).GetXZOnly());
    EXPECT_SAME_BITS(S3D(-1.0f, 0.0f, -3.0f), S3D(-1.0f, NaN, -3.0f).GetXZOnly());
}

TEST(S3D, LengthIsTheRootOfTheSummedSquares)
{
    EXPECT_EQ(7.0f, S3D(2.0f, -3.0f, 6.0f).Length());
    EXPECT_EQ(49.0f, S3D(2.0f, -3.0f, 6.0f).Length2());
    CRandom random(10);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const float xx = vector.x * vector.x;
        const float yy = vector.y * vector.y;
        const float zz = vector.z * vector.z;
        const float xy = xx + yy;
        const float squared = xy + zz;
        ASSERT_SAME_BITS(squared, vector.Length2()) << PrintInput(vector);
        ASSERT_SAME_BITS(std::sqrt(squared), vector.Length()) << PrintInput(vector);
    }
}

TEST(S3D, DistanceIsTheLengthOfTheDifference)
{
    EXPECT_EQ(7.0f, S3D::Distance(S3D(3.0f, 1.0f, 9.0f), S3D(1.0f, 4.0f, 3.0f)));
    EXPECT_EQ(49.0f, S3D::Distance2(S3D(3.0f, 1.0f, 9.0f), S3D(1.0f, 4.0f, 3.0f)));
    CRandom random(11);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = random.Vector3();
        const S3D b = random.Vector3();
        const S3D difference(a.x - b.x, a.y - b.y, a.z - b.z);
        ASSERT_SAME_BITS(difference.Length(), S3D::Distance(a, b)) << PrintInput(a, b);
        ASSERT_SAME_BITS(difference.Length2(), S3D::Distance2(a, b)) << PrintInput(a, b);
    }
}

TEST(S3D, CrossProductOfTwoAxesIsTheThird)
{
    const S3D x(1.0f, 0.0f, 0.0f);
    const S3D y(0.0f, 1.0f, 0.0f);
    const S3D z(0.0f, 0.0f, 1.0f);
    EXPECT_EQ(z, S3D::CrossProduct(x, y));
    EXPECT_EQ(x, S3D::CrossProduct(y, z));
    EXPECT_EQ(y, S3D::CrossProduct(z, x));
    EXPECT_EQ(-z, S3D::CrossProduct(y, x));
}

TEST(S3D, CrossAndDotProductAreSummedInOrder)
{
    CRandom random(12);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = random.Vector3();
        const S3D b = random.Vector3();
        const float yz = a.y * b.z;
        const float zy = a.z * b.y;
        const float zx = a.z * b.x;
        const float xz = a.x * b.z;
        const float xy = a.x * b.y;
        const float yx = a.y * b.x;
        ASSERT_SAME_BITS(S3D(yz - zy, zx - xz, xy - yx), S3D::CrossProduct(a, b))
            << PrintInput(a, b);
        const float xx = a.x * b.x;
        const float yy = a.y * b.y;
        const float zz = a.z * b.z;
        const float firstTwo = xx + yy;
        ASSERT_SAME_BITS(firstTwo + zz, S3D::DotProduct(a, b)) << PrintInput(a, b);
    }
}

TEST(S3D, OpenGLPositionAndDirectionHaveZNegated)
{
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, -3.0f), S3D(1.0f, 2.0f, 3.0f).GetOpenGLPos());
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, -3.0f), S3D(1.0f, 2.0f, 3.0f).GetOpenGL());
    EXPECT_SAME_BITS(S3D(-1.0f, -2.0f, -0.0f), S3D(-1.0f, -2.0f, 0.0f).GetOpenGLPos());
    EXPECT_SAME_BITS(S3D(-1.0f, -2.0f, -0.0f), S3D(-1.0f, -2.0f, 0.0f).GetOpenGL());
}

TEST(S3D, NormalisedZeroVectorIsTheZeroVector)
{
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), S3D(0.0f, 0.0f, 0.0f).GetNormalize());
    EXPECT_SAME_BITS(S3D(-0.0f, 0.0f, -0.0f), S3D(-0.0f, 0.0f, -0.0f).GetNormalize());
    S3D zero;
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), zero.Normalize());
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), zero);
}

TEST(S3D, NormalisedVectorHasLengthOne)
{
    const S3D normalised = S3D(0.0f, 3.0f, 4.0f).GetNormalize();
    EXPECT_EQ(0.0f, normalised.x);
    EXPECT_FLOAT_EQ(0.6f, normalised.y);
    EXPECT_FLOAT_EQ(0.8f, normalised.z);
}

TEST(S3D, NormalisingMultipliesByTheReciprocalOfTheLength)
{
    CRandom random(13);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const float length = vector.Length();
        const float reciprocal = 1.0f / length;
        const S3D expected = length == 0.0f ? vector
                                            : S3D(vector.x * reciprocal, vector.y * reciprocal,
                                                  vector.z * reciprocal);
        S3D inPlace = vector;
        ASSERT_SAME_BITS(expected, vector.GetNormalize()) << PrintInput(vector);
        ASSERT_SAME_BITS(expected, inPlace.Normalize()) << PrintInput(vector);
        ASSERT_SAME_BITS(expected, inPlace) << PrintInput(vector);
    }
}

TEST(S3D, NormalisingUsesNoEpsilon)
{
    // The square of 2^-60 is a float still, so the length is not 0.
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f), S3D(0.0f, 0.0f, 0x1p-60f).GetNormalize());
    // The square of 1e-30 is below every float, so the length is 0 and the vector stays.
    EXPECT_SAME_BITS(S3D(1e-30f, 0.0f, 0.0f), S3D(1e-30f, 0.0f, 0.0f).GetNormalize());
    S3D inPlace(1e-30f, 0.0f, 0.0f);
    EXPECT_SAME_BITS(S3D(1e-30f, 0.0f, 0.0f), inPlace.Normalize());
}

TEST(S3D, NormaliseReturnsTheVectorItself)
{
    S3D vector(0.0f, 3.0f, 4.0f);
    EXPECT_EQ(&vector, &vector.Normalize());
    S3D zero;
    EXPECT_EQ(&zero, &zero.Normalize());
}

TEST(S3DCalcRotateAxisAndAngle, EqualUnitVectorsGiveFalseAndLeaveTheAngle)
{
    S3D axis(7.0f, 7.0f, 7.0f);
    float angle = 123.0f;
    const S3D direction(0.0f, 1.0f, 0.0f);
    EXPECT_FALSE(S3D::CalcRotateAxisAndAngle(axis, angle, direction, direction));
    EXPECT_EQ(123.0f, angle);
    EXPECT_EQ(S3D(0.0f, 0.0f, 0.0f), axis);
}

TEST(S3DCalcRotateAxisAndAngle, RightAngleGivesTheNormalisedCrossProduct)
{
    S3D axis;
    float angle = 123.0f;
    EXPECT_TRUE(
        S3D::CalcRotateAxisAndAngle(axis, angle, S3D(1.0f, 0.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f)));
    EXPECT_EQ(S3D(0.0f, 0.0f, 1.0f), axis);
    EXPECT_FLOAT_EQ(Pi / 2.0f, angle);
}

TEST(S3DCalcRotateAxisAndAngle, AxisMayBeWrittenOverAnInput)
{
    const S3D from(1.0f, 0.0f, 0.0f);
    const S3D to(0.6f, 0.8f, 0.0f);
    float angle = 0.0f;
    S3D axis = from;
    EXPECT_TRUE(S3D::CalcRotateAxisAndAngle(axis, angle, axis, to));
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f), axis);
    EXPECT_SAME_BITS(std::acos(0.6f), angle);
    axis = to;
    EXPECT_TRUE(S3D::CalcRotateAxisAndAngle(axis, angle, from, axis));
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f), axis);
    EXPECT_SAME_BITS(std::acos(0.6f), angle);
}

TEST(S3DCalcRotateAxisAndAngle, DotProductAboveOneGivesFalseWithTheAxisWritten)
{
    S3D axis(7.0f, 7.0f, 7.0f);
    float angle = 123.0f;
    EXPECT_FALSE(
        S3D::CalcRotateAxisAndAngle(axis, angle, S3D(2.0f, 0.0f, 0.0f), S3D(1.0f, 1.0f, 0.0f)));
    EXPECT_EQ(123.0f, angle);
    EXPECT_EQ(S3D(0.0f, 0.0f, 1.0f), axis);
}

TEST(S3DCalcRotateAxisAndAngle, OppositeVectorsGiveTrueWithTheZeroAxis)
{
    S3D axis(7.0f, 7.0f, 7.0f);
    float angle = 123.0f;
    EXPECT_TRUE(
        S3D::CalcRotateAxisAndAngle(axis, angle, S3D(0.0f, 0.0f, 1.0f), S3D(0.0f, 0.0f, -1.0f)));
    EXPECT_FLOAT_EQ(Pi, angle);
    EXPECT_EQ(S3D(0.0f, 0.0f, 0.0f), axis);
}

TEST(S3DCalcRotateAxisAndAngle, DotProductBelowMinusOneGivesTrueWithANaNAngle)
{
    S3D axis(7.0f, 7.0f, 7.0f);
    float angle = 123.0f;
    EXPECT_TRUE(S3D::CalcRotateAxisAndAngle(
        axis, angle, S3D(1.0f, 0.0f, 0.0f), S3D(std::nextafter(-1.0f, -2.0f), 0.0f, 0.0f)));
    EXPECT_TRUE(std::isnan(angle));
    EXPECT_EQ(S3D(0.0f, 0.0f, 0.0f), axis);
}

TEST(S3DCalcRotateAxisAndAngle, DotProductNaNGivesTrueWithANaNAngle)
{
    S3D axis;
    float angle = 123.0f;
    EXPECT_TRUE(
        S3D::CalcRotateAxisAndAngle(axis, angle, S3D(1.0f, 0.0f, 0.0f), S3D(NaN, 0.0f, 0.0f)));
    EXPECT_TRUE(std::isnan(angle));
}

TEST(S3DCalcRotateAxisAndAngle, LargestDotProductBelowOneGivesTrue)
{
    // acos(1 - 2^-24) = sqrt(2 * 2^-24): the smallest angle that a float's cosine can say, which is
    // far above the 1e-6 that counts as none.
    S3D axis;
    float angle = 123.0f;
    EXPECT_TRUE(S3D::CalcRotateAxisAndAngle(
        axis, angle, S3D(1.0f, 0.0f, 0.0f), S3D(1.0f - 0x1p-24f, 0.0f, 0.0f)));
    EXPECT_NEAR(3.4526698e-4f, angle, 1e-10f);
}

TEST(S3DCalcRotateAxisAndAngle, IsTheNormalisedCrossProductAndTheArcCosine)
{
    CRandom random(14);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D from = i % 2 == 0 ? CreateUnitVector(random) : random.Vector3();
        const S3D to = i % 2 == 0 ? CreateUnitVector(random) : random.Vector3();
        S3D axis;
        float angle = 123.0f;
        const bool isTurned = S3D::CalcRotateAxisAndAngle(axis, angle, from, to);
        const float dot = S3D::DotProduct(from, to);
        ASSERT_SAME_BITS(S3D::CrossProduct(from, to).GetNormalize(), axis) << PrintInput(from, to);
        ASSERT_SAME_BITS(dot >= 1.0f ? 123.0f : std::acos(dot), angle) << PrintInput(from, to);
        ASSERT_EQ(!(dot >= 1.0f), isTurned) << PrintInput(from, to);
    }
}

TEST(S3DCalcRotateAxisAndAngle, TurnsTheOneDirectionIntoTheOther)
{
    CRandom random(15);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D from = CreateUnitVector(random);
        const S3D to = CreateUnitVector(random);
        S3D axis;
        float angle = 0.0f;
        // Nearer to the ends acos is steep, and the axis comes from a short cross product.
        if (std::abs(S3D::DotProduct(from, to)) > 0.99f)
            continue;
        ASSERT_TRUE(S3D::CalcRotateAxisAndAngle(axis, angle, from, to)) << PrintInput(from, to);
        const S3D turned = from * SMatrix::CreateRotAxis(axis, angle);
        ASSERT_LT(S3D::Distance(to, turned), 1e-5f) << PrintInput(from, to);
    }
}

TEST(S3D, RadiansToDegreesMultiplyBeforeTheyDivide)
{
    CRandom random(16);
    int differences = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const S3D scaled(vector.x * 180.0f, vector.y * 180.0f, vector.z * 180.0f);
        const S3D expected(scaled.x / Pi, scaled.y / Pi, scaled.z / Pi);
        ASSERT_SAME_BITS(expected, vector.GetRadToDeg()) << PrintInput(vector);
        differences += expected == expected && expected != vector * (180.0f / Pi);
    }
    EXPECT_GT(differences, 0);
}

TEST(S3D, DegreesToRadiansMultiplyBeforeTheyDivide)
{
    CRandom random(17);
    int differences = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = random.Vector3();
        const S3D scaled(vector.x * Pi, vector.y * Pi, vector.z * Pi);
        const S3D expected(scaled.x / 180.0f, scaled.y / 180.0f, scaled.z / 180.0f);
        ASSERT_SAME_BITS(expected, vector.GetDegToRad()) << PrintInput(vector);
        differences += expected == expected && expected != vector * (Pi / 180.0f);
    }
    EXPECT_GT(differences, 0);
}

TEST(S3D, HalfATurnIs180DegreesOrPi)
{
    EXPECT_SAME_BITS(S3D(180.0f, -180.0f, 0.0f), S3D(Pi, -Pi, 0.0f).GetRadToDeg());
    EXPECT_SAME_BITS(S3D(Pi, -Pi, 0.0f), S3D(180.0f, -180.0f, 0.0f).GetDegToRad());
}
