#include "Independent/Math3D/SMatrix.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <type_traits>
#include <vector>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using namespace mathtest;

namespace
{

/// Sixteen different elements: 1 to 16, row by row.
SMatrix CreateNumbered()
{
    SMatrix matrix(0);
    std::iota(&matrix.m[0][0], &matrix.m[0][0] + 16, 1.0f);
    return matrix;
}

SMatrix Multiply(const SMatrix& a, const SMatrix& b)
{
    SMatrix product(0);
    for (int i = 0; i < 4; ++i)
    {
        for (int j = 0; j < 4; ++j)
        {
            const float first = a.m[i][0] * b.m[0][j];
            const float second = a.m[i][1] * b.m[1][j];
            const float third = a.m[i][2] * b.m[2][j];
            const float fourth = a.m[i][3] * b.m[3][j];
            const float two = first + second;
            const float three = two + third;
            product.m[i][j] = three + fourth;
        }
    }
    return product;
}

/// The quaternion of the first branch: m00 + m11 + m22 + m33 is 1 or more.
SQuaternion QuaternionFromTrace(const SMatrix& matrix)
{
    const float(&m)[4][4] = matrix.m;
    const float two = m[0][0] + m[1][1];
    const float three = two + m[2][2];
    const float t = three + m[3][3];
    const float r = 2.0f * std::sqrt(t);
    return SQuaternion(
        (m[1][2] - m[2][1]) / r, (m[2][0] - m[0][2]) / r, (m[0][1] - m[1][0]) / r, r / 4.0f);
}

/// The quaternion of the other branch: by the largest of m00, m11 and m22.
SQuaternion QuaternionFromLargest(const SMatrix& matrix)
{
    const float(&m)[4][4] = matrix.m;
    int i = m[0][0] > m[1][1] ? 0 : 1;
    if (m[2][2] > m[i][i])
        i = 2;
    const int j = (i + 1) % 3;
    const int k = (j + 1) % 3;
    const float one = m[i][i] - m[j][j];
    const float two = one - m[k][k];
    const float r = 2.0f * std::sqrt(two + 1.0f);
    float q[3];
    q[i] = r / 4.0f;
    q[j] = (m[i][j] + m[j][i]) / r;
    q[k] = (m[i][k] + m[k][i]) / r;
    return SQuaternion(q[0], q[1], q[2], (m[j][k] - m[k][j]) / r);
}

bool IsTraceOneOrMore(const SMatrix& matrix)
{
    const float two = matrix.m[0][0] + matrix.m[1][1];
    const float three = two + matrix.m[2][2];
    return static_cast<double>(three + matrix.m[3][3]) >= 1.0;
}

SMatrix ToMatrix(const Eigen::Matrix3d& rotation)
{
    const Eigen::Matrix3f m = rotation.cast<float>();
    return SMatrix(
        m(0, 0), m(0, 1), m(0, 2), 0.0f, //
        m(1, 0), m(1, 1), m(1, 2), 0.0f, //
        m(2, 0), m(2, 1), m(2, 2), 0.0f, //
        0.0f, 0.0f, 0.0f, 1.0f);
}

bool HasOnlyFiniteElements(const SMatrix& matrix)
{
    const std::vector<float> elements = ToFloats(matrix);
    return std::all_of(
        elements.begin(), elements.end(), [](float element) { return std::isfinite(element); });
}

const float RandomAngleLimit = 10.0f;

} // namespace

TEST(SMatrix, IsFourRowsOfFourFloatsWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<SMatrix>);
    static_assert(std::is_standard_layout_v<SMatrix>);
    static_assert(std::is_trivially_copyable_v<SMatrix>);
    static_assert(std::is_same_v<decltype(SMatrix::m), float[4][4]>);
    static_assert(sizeof(SMatrix) == 16 * sizeof(float));
}

TEST(SMatrix, DefaultIsTheIdentity)
{
    EXPECT_SAME_BITS(
        SMatrix(
            1.0f, 0.0f, 0.0f, 0.0f, //
            0.0f, 1.0f, 0.0f, 0.0f, //
            0.0f, 0.0f, 1.0f, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f),
        SMatrix());
}

TEST(SMatrix, CanBeBuiltWithoutElements)
{
    static_assert(std::is_constructible_v<SMatrix, int>);
    SMatrix matrix(0);
    matrix.Identity();
    EXPECT_SAME_BITS(SMatrix(), matrix);
}

TEST(SMatrix, SixteenElementsComeRowByRow)
{
    const float elements[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const SMatrix copied(elements);
    const SMatrix constructed(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    SMatrix assigned;
    assigned.Set(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    for (int row = 0; row < 4; ++row)
    {
        for (int column = 0; column < 4; ++column)
        {
            const auto expected = static_cast<float>(4 * row + column + 1);
            EXPECT_EQ(expected, copied.m[row][column]);
            EXPECT_EQ(expected, constructed.m[row][column]);
            EXPECT_EQ(expected, assigned.m[row][column]);
        }
    }
}

TEST(SMatrix, EqualMeansAllElementsExactlyEqual)
{
    const SMatrix matrix = CreateNumbered();
    EXPECT_TRUE(matrix == CreateNumbered());
    EXPECT_FALSE(matrix != CreateNumbered());
    for (int i = 0; i < 16; ++i)
    {
        SMatrix other = matrix;
        float& element = other.m[i / 4][i % 4];
        element = std::nextafter(element, 100.0f);
        EXPECT_FALSE(matrix == other) << i;
        EXPECT_TRUE(matrix != other) << i;
    }
}

TEST(SMatrix, MatrixWithNaNIsUnequalToItself)
{
    SMatrix matrix;
    matrix.m[2][1] = NaN;
    const SMatrix copy = matrix;
    EXPECT_FALSE(matrix == copy);
    EXPECT_TRUE(matrix != copy);
}

TEST(SMatrix, ProductIsSummedInOrder)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix a = random.Matrix();
        const SMatrix b = random.Matrix();
        const SMatrix expected = Multiply(a, b);
        SMatrix inPlace = a;
        inPlace *= b;
        SMatrix byName = a;
        byName.MulMatrix(b);
        ASSERT_SAME_BITS(expected, a * b) << PrintInput(a, b);
        ASSERT_SAME_BITS(expected, inPlace) << PrintInput(a, b);
        ASSERT_SAME_BITS(expected, byName) << PrintInput(a, b);
    }
}

TEST(SMatrix, ProductAppliesTheLeftMatrixFirst)
{
    const SMatrix moveThenScale =
        SMatrix::CreateMove(S3D(1.0f, 2.0f, 3.0f)) * SMatrix::CreateScale(S3D(2.0f, 2.0f, 2.0f));
    EXPECT_SAME_BITS(S3D(2.0f, 4.0f, 6.0f), S3D(0.0f, 0.0f, 0.0f) * moveThenScale);
}

TEST(SMatrix, MatrixCanBeMultipliedByItselfInPlace)
{
    const SMatrix expected = Multiply(CreateNumbered(), CreateNumbered());
    SMatrix squared = CreateNumbered();
    squared *= squared;
    EXPECT_SAME_BITS(expected, squared);
    SMatrix byName = CreateNumbered();
    byName.MulMatrix(byName);
    EXPECT_SAME_BITS(expected, byName);
}

TEST(SMatrix, ProductInPlaceReturnsTheMatrix)
{
    SMatrix matrix;
    EXPECT_EQ(&matrix, &(matrix *= SMatrix()));
}

TEST(SMatrix, IdentityIsSetInPlace)
{
    SMatrix matrix = CreateNumbered();
    matrix.Identity();
    EXPECT_SAME_BITS(SMatrix(), matrix);
}

TEST(SMatrix, TransposingTurnsRowsIntoColumns)
{
    SMatrix matrix = CreateNumbered();
    matrix.Trans();
    EXPECT_SAME_BITS(SMatrix(1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16), matrix);
}

TEST(SMatrix, TransposingTwiceGivesTheSameMatrixBack)
{
    CRandom random(2);
    const SMatrix matrix = random.Matrix();
    SMatrix transposed = matrix;
    transposed.Trans();
    transposed.Trans();
    EXPECT_SAME_BITS(matrix, transposed);
}

TEST(SMatrix, InverseOfAScaleIsTheReciprocalScale)
{
    EXPECT_EQ(
        SMatrix::CreateScale(S3D(0.5f, 0.25f, 0.125f)),
        SMatrix::CreateScale(S3D(2.0f, 4.0f, 8.0f)).GetInverse());
}

TEST(SMatrix, InverseOfAMoveIsTheMoveBack)
{
    EXPECT_EQ(
        SMatrix::CreateMove(S3D(-1.0f, -2.0f, -3.0f)),
        SMatrix::CreateMove(S3D(1.0f, 2.0f, 3.0f)).GetInverse());
}

TEST(SMatrix, InverseIsThatOfDoublePrecision)
{
    CRandom random(3);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix(0);
        for (float(&row)[4] : matrix.m)
            for (float& element : row)
                element = random.Between(-2.0f, 2.0f);
        // Every other one is affine.
        if (i % 2 == 0)
        {
            for (float(&row)[4] : matrix.m)
                row[3] = 0.0f;
            matrix.m[3][3] = 1.0f;
        }
        const Eigen::Matrix4d exact = ToDouble(matrix);
        const double determinant = std::abs(exact.determinant());
        const double largest = exact.cwiseAbs().maxCoeff();

        // Counting the roundings of expansion by cofactors, u each, with all elements up to M: a
        // cofactor, six products of three, is off by 28 u M^3 at most, the determinant by
        // 190 u M^4, and the reciprocal and the product add 3 u.
        const double cofactorError = 30.0 * UnitRoundoff * std::pow(largest, 3) / determinant;
        const double determinantError = 200.0 * UnitRoundoff * std::pow(largest, 4) / determinant;
        if (determinantError > 0.01)
            continue;
        const Eigen::Matrix4d inverse = exact.inverse();
        const double tolerance =
            1.02 * (cofactorError +
                    inverse.cwiseAbs().maxCoeff() * (determinantError + 4.0 * UnitRoundoff));
        ASSERT_CLOSE(inverse, ToDouble(matrix.GetInverse()), tolerance) << PrintInput(matrix);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 2);
}

TEST(SMatrix, InverseTimesTheMatrixIsTheIdentity)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = ToMatrix(ToRotation(CreateUnitQuaternion(random))) *
                               SMatrix::CreateScale(random.Vector3Between(0.5f, 2.0f)) *
                               SMatrix::CreateMove(random.Vector3Between(-10.0f, 10.0f));
        // Some tens of roundings of elements up to 20.
        ASSERT_CLOSE(Eigen::Matrix4d::Identity(), ToDouble(matrix * matrix.GetInverse()), 5e-5)
            << PrintInput(matrix);
    }
}

TEST(SMatrix, InverseInPlaceIsTheInverse)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = random.Matrix();
        SMatrix inPlace = matrix;
        inPlace.Inverse();
        ASSERT_SAME_BITS(matrix.GetInverse(), inPlace) << PrintInput(matrix);
    }
}

TEST(SMatrix, InverseHasNoFiniteElementWhereTheDeterminantComesOutAsZero)
{
    for (const SMatrix& singular :
         {SMatrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
          SMatrix::CreateScale(S3D(1.0f, 0.0f, 1.0f)),
          // Two equal rows of small integers, so that the determinant is 0 without rounding.
          SMatrix(1, 2, 3, 4, 5, 7, 6, 8, 1, 2, 3, 4, 0, 1, 0, 2)})
        for (const float element : ToFloats(singular.GetInverse()))
            EXPECT_FALSE(std::isfinite(element)) << PrintInput(singular);
}

TEST(SMatrix, InverseOfASingularMatrixIsMostlyFiniteWhereRoundingLeavesADeterminant)
{
    CRandom random(6);
    int finite = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix(0);
        for (float(&row)[4] : matrix.m)
            for (float& element : row)
                element = random.Between(-10.0f, 10.0f);
        const std::size_t from = random.Below(4);
        const std::size_t to = (from + 1 + random.Below(3)) % 4;
        std::copy(matrix.m[from], matrix.m[from] + 4, matrix.m[to]);
        finite += HasOnlyFiniteElements(matrix.GetInverse()) ? 1 : 0;
    }
    EXPECT_GT(finite, RandomCases / 2);
    EXPECT_LT(finite, RandomCases);
}

TEST(SMatrix, DeterminantOfTwoIsADMinusCB)
{
    EXPECT_EQ(-2.0f, SMatrix::det2x2(1.0f, 2.0f, 3.0f, 4.0f));
    CRandom random(6);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Float();
        const float b = random.Float();
        const float c = random.Float();
        const float d = random.Float();
        const float ad = a * d;
        const float cb = c * b;
        ASSERT_SAME_BITS(ad - cb, SMatrix::det2x2(a, b, c, d)) << PrintInput(a, b, c, d);
    }
}

TEST(SMatrix, DeterminantOfThreeIsExpandedAlongTheFirstArguments)
{
    EXPECT_EQ(-3.0f, SMatrix::det3x3(1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f, 7.0f, 8.0f, 10.0f));
    CRandom random(7);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = random.Vector3();
        const S3D b = random.Vector3();
        const S3D c = random.Vector3();
        const float bc = b.y * c.z - c.y * b.z;
        const float ac = a.y * c.z - c.y * a.z;
        const float ab = a.y * b.z - b.y * a.z;
        const float first = a.x * bc;
        const float second = b.x * ac;
        const float third = c.x * ab;
        const float two = first - second;
        ASSERT_SAME_BITS(two + third, SMatrix::det3x3(a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z))
            << PrintInput(a, b, c);
    }
}

TEST(SMatrix, MoveAndAxesAreItsRows)
{
    const SMatrix matrix = CreateNumbered();
    EXPECT_SAME_BITS(S3D(13.0f, 14.0f, 15.0f), matrix.GetMove());
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), matrix.GetXVector());
    EXPECT_SAME_BITS(S3D(5.0f, 6.0f, 7.0f), matrix.GetYVector());
    EXPECT_SAME_BITS(S3D(9.0f, 10.0f, 11.0f), matrix.GetZVector());
    EXPECT_SAME_BITS(S4D(1.0f, 2.0f, 3.0f, 4.0f), matrix.GetXVector4());
    EXPECT_SAME_BITS(S4D(5.0f, 6.0f, 7.0f, 8.0f), matrix.GetYVector4());
    EXPECT_SAME_BITS(S4D(9.0f, 10.0f, 11.0f, 12.0f), matrix.GetZVector4());
}

TEST(SMatrix, ScaleXIsTheLengthOfTheXAxis)
{
    EXPECT_EQ(2.0f, SMatrix::CreateScale(S3D(2.0f, 3.0f, 4.0f)).GetScaleX());
    CRandom random(8);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D scale = random.Vector3Between(0.1f, 10.0f);
        const SMatrix rotation = ToMatrix(ToRotation(CreateUnitQuaternion(random)));
        const SMatrix matrix =
            SMatrix::CreateScale(scale) * rotation * SMatrix::CreateMove(S3D(5.0f, 6.0f, 7.0f));
        ASSERT_NEAR(scale.x, matrix.GetScaleX(), 1e-6f * scale.x) << PrintInput(matrix);
    }
}

TEST(SMatrix, CreateMovePutsTheTranslationIntoTheLastRow)
{
    EXPECT_SAME_BITS(
        SMatrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1),
        SMatrix::CreateMove(S3D(7.0f, 8.0f, 9.0f)));
    EXPECT_SAME_BITS(
        S3D(1.0f, 2.0f, 3.0f), S3D(0.0f, 0.0f, 0.0f) * SMatrix::CreateMove(S3D(1.0f, 2.0f, 3.0f)));
}

TEST(SMatrix, CreateScalePutsTheFactorsIntoTheDiagonal)
{
    EXPECT_SAME_BITS(
        SMatrix(7, 0, 0, 0, 0, 8, 0, 0, 0, 0, 9, 0, 0, 0, 0, 1),
        SMatrix::CreateScale(S3D(7.0f, 8.0f, 9.0f)));
}

TEST(SMatrix, HeadingPitchAndBankHaveTheirLayout)
{
    CRandom random(9);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Between(-RandomAngleLimit, RandomAngleLimit);
        const float c = std::cos(a);
        const float s = std::sin(a);
        const SMatrix heading(c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1);
        const SMatrix pitch(1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1);
        const SMatrix bank(c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
        SMatrix matrix = CreateNumbered();
        matrix.SetRotHRad(a);
        ASSERT_SAME_BITS(heading, matrix) << PrintInput(a);
        matrix = CreateNumbered();
        matrix.SetRotPRad(a);
        ASSERT_SAME_BITS(pitch, matrix) << PrintInput(a);
        matrix = CreateNumbered();
        matrix.SetRotBRad(a);
        ASSERT_SAME_BITS(bank, matrix) << PrintInput(a);
        ASSERT_SAME_BITS(heading, SMatrix::CreateRotHRad(a)) << PrintInput(a);
        ASSERT_SAME_BITS(pitch, SMatrix::CreateRotPRad(a)) << PrintInput(a);
        ASSERT_SAME_BITS(bank, SMatrix::CreateRotBRad(a)) << PrintInput(a);
    }
}

TEST(SMatrix, HeadingPitchAndBankAreRotationsAboutYXAndZ)
{
    CRandom random(10);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Between(-RandomAngleLimit, RandomAngleLimit);
        const double angle = a;
        // One rounding each of a sine or cosine.
        ASSERT_CLOSE(Heading(angle), ToRotation(SMatrix::CreateRotHRad(a)), 1e-7);
        ASSERT_CLOSE(Pitch(angle), ToRotation(SMatrix::CreateRotPRad(a)), 1e-7);
        ASSERT_CLOSE(Bank(angle), ToRotation(SMatrix::CreateRotBRad(a)), 1e-7);
    }
}

TEST(SMatrix, QuarterTurnsTakeOneAxisToAnother)
{
    const S3D x(1.0f, 0.0f, 0.0f);
    const S3D y(0.0f, 1.0f, 0.0f);
    const S3D z(0.0f, 0.0f, 1.0f);
    const float quarter = Pi / 2.0f;
    EXPECT_LT(S3D::Distance(-z, x * SMatrix::CreateRotHRad(quarter)), 1e-7f);
    EXPECT_LT(S3D::Distance(z, y * SMatrix::CreateRotPRad(quarter)), 1e-7f);
    EXPECT_LT(S3D::Distance(y, x * SMatrix::CreateRotBRad(quarter)), 1e-7f);
}

TEST(SMatrix, DegreesBecomeRadiansByPiFirst)
{
    CRandom random(11);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float degrees = random.Between(-720.0f, 720.0f);
        const float scaled = degrees * Pi;
        const float radians = scaled / 180.0f;
        SMatrix matrix = CreateNumbered();
        matrix.SetRotH(degrees);
        ASSERT_SAME_BITS(SMatrix::CreateRotHRad(radians), matrix) << PrintInput(degrees);
        matrix = CreateNumbered();
        matrix.SetRotP(degrees);
        ASSERT_SAME_BITS(SMatrix::CreateRotPRad(radians), matrix) << PrintInput(degrees);
        matrix = CreateNumbered();
        matrix.SetRotB(degrees);
        ASSERT_SAME_BITS(SMatrix::CreateRotBRad(radians), matrix) << PrintInput(degrees);
        ASSERT_SAME_BITS(SMatrix::CreateRotHRad(radians), SMatrix::CreateRotH(degrees));
        ASSERT_SAME_BITS(SMatrix::CreateRotPRad(radians), SMatrix::CreateRotP(degrees));
        ASSERT_SAME_BITS(SMatrix::CreateRotBRad(radians), SMatrix::CreateRotB(degrees));
    }
}

TEST(SMatrix, RotationAboutAnAxisIsThatOfDoublePrecision)
{
    CRandom random(12);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D axis = CreateDirection(random);
        const float angle = random.Between(-RandomAngleLimit, RandomAngleLimit);
        const Eigen::Vector3d exactAxis = ToDouble(axis).normalized();
        const SMatrix matrix = SMatrix::CreateRotAxis(axis, angle);
        // Up to 8 roundings of values up to 2.
        ASSERT_CLOSE(
            ToRigid(RotateAbout(exactAxis, static_cast<double>(angle)), S3D()), ToDouble(matrix),
            1e-6)
            << PrintInput(axis, angle);
    }
}

TEST(SMatrix, RotationAboutAUnitAxisIsPitchHeadingOrBank)
{
    CRandom random(13);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Between(-RandomAngleLimit, RandomAngleLimit);
        const S3D x(1.0f, 0.0f, 0.0f);
        const S3D y(0.0f, 1.0f, 0.0f);
        const S3D z(0.0f, 0.0f, 1.0f);
        // Only (1 - c) + c is rounded where pitch, heading and bank have a 1.
        ASSERT_CLOSE(
            ToDouble(SMatrix::CreateRotPRad(a)), ToDouble(SMatrix::CreateRotAxis(x, a)), 1.2e-7);
        ASSERT_CLOSE(
            ToDouble(SMatrix::CreateRotHRad(a)), ToDouble(SMatrix::CreateRotAxis(y, a)), 1.2e-7);
        ASSERT_CLOSE(
            ToDouble(SMatrix::CreateRotBRad(a)), ToDouble(SMatrix::CreateRotAxis(z, a)), 1.2e-7);
    }
}

TEST(SMatrix, AxisOfARotationIsNotNormalised)
{
    // A quarter turn with the axis (2, 3, 5): c is about 0 and s and t are about 1.
    const SMatrix matrix = SMatrix::CreateRotAxis(S3D(2.0f, 3.0f, 5.0f), Pi / 2.0f);
    Eigen::Matrix4d expected;
    expected << 4, 6 + 5, 10 - 3, 0, //
        6 - 5, 9, 15 + 2, 0,         //
        10 + 3, 15 - 2, 25, 0,       //
        0, 0, 0, 1;
    EXPECT_CLOSE(expected, ToDouble(matrix), 1e-5);
}

TEST(SMatrix, RotationAboutAnAxisIsFormedInOrder)
{
    CRandom random(14);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D axis = random.Vector3Between(-2.0f, 2.0f);
        const float angle = random.Between(-RandomAngleLimit, RandomAngleLimit);
        const float c = std::cos(angle);
        const float s = std::sin(angle);
        const float t = 1.0f - c;
        const float tx = t * axis.x;
        const float ty = t * axis.y;
        const float tz = t * axis.z;
        const float xx = tx * axis.x;
        const float xy = tx * axis.y;
        const float xz = tx * axis.z;
        const float yy = ty * axis.y;
        const float yz = ty * axis.z;
        const float zz = tz * axis.z;
        const float sx = s * axis.x;
        const float sy = s * axis.y;
        const float sz = s * axis.z;
        const SMatrix expected(
            xx + c, xy + sz, xz - sy, 0.0f, //
            xy - sz, yy + c, yz + sx, 0.0f, //
            xz + sy, yz - sx, zz + c, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f);
        ASSERT_SAME_BITS(expected, SMatrix::CreateRotAxis(axis, angle)) << PrintInput(axis, angle);
    }
}

TEST(SMatrix, LookAtHasTheAxesInItsRowsAndAViewTranslation)
{
    // Looking along X, the viewer's right is -Z.
    EXPECT_EQ(
        SMatrix(0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 3, -2, -1, 1),
        SMatrix::CreateLookAt(S3D(1.0f, 2.0f, 3.0f), S3D(5.0f, 2.0f, 3.0f), S3D(0.0f, 7.0f, 0.0f)));
    // Looking along Z, the axes are those of the world.
    EXPECT_EQ(
        SMatrix(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -1, -2, -3, 1),
        SMatrix::CreateLookAt(S3D(1.0f, 2.0f, 3.0f), S3D(1.0f, 2.0f, 9.0f), S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SMatrix, LookAtIsFormedInOrder)
{
    CRandom random(15);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D eye = random.Vector3Between(-10.0f, 10.0f);
        const S3D at = random.Vector3Between(-10.0f, 10.0f);
        const S3D up = random.Vector3Between(-1.0f, 1.0f);
        const S3D z = (at - eye).GetNormalize();
        const S3D x = S3D::CrossProduct(up, z).GetNormalize();
        const S3D y = S3D::CrossProduct(z, x);
        const SMatrix expected(
            x.x, x.y, x.z, 0.0f, //
            y.x, y.y, y.z, 0.0f, //
            z.x, z.y, z.z, 0.0f, //
            -S3D::DotProduct(x, eye), -S3D::DotProduct(y, eye), -S3D::DotProduct(z, eye), 1.0f);
        ASSERT_SAME_BITS(expected, SMatrix::CreateLookAt(eye, at, up)) << PrintInput(eye, at, up);
    }
}

TEST(SMatrix, LookAtFromThePointItselfHasZeroAxes)
{
    const S3D eye(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(
        SMatrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1),
        SMatrix::CreateLookAt(eye, eye, S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SMatrix, LookAtAlongUpHasOnlyTheViewAxis)
{
    EXPECT_EQ(
        SMatrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2, 1),
        SMatrix::CreateLookAt(S3D(1.0f, 2.0f, 3.0f), S3D(1.0f, 9.0f, 3.0f), S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SMatrix, CreateXYZVectorPutsTheAxesIntoTheRows)
{
    EXPECT_SAME_BITS(
        SMatrix(1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1),
        SMatrix::CreateXYZVector(
            S3D(1.0f, 2.0f, 3.0f), S3D(4.0f, 5.0f, 6.0f), S3D(7.0f, 8.0f, 9.0f)));
}

TEST(SMatrix, QuaternionOfTheIdentityIsTheIdentity)
{
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), SMatrix().GetQuaternion());
}

TEST(SMatrix, QuaternionIsFormedInOrder)
{
    CRandom random(16);
    int casesOfTrace = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        // Rotations and, every fourth, matrices that are none.
        const SMatrix matrix =
            i % 4 == 0 ? random.Matrix() : ToMatrix(ToRotation(CreateUnitQuaternion(random)));
        const bool isByTrace = IsTraceOneOrMore(matrix);
        const SQuaternion expected =
            isByTrace ? QuaternionFromTrace(matrix) : QuaternionFromLargest(matrix);
        ASSERT_SAME_BITS(expected, matrix.GetQuaternion()) << PrintInput(matrix);
        casesOfTrace += isByTrace;
    }
    EXPECT_GT(casesOfTrace, RandomCases / 10);
    EXPECT_LT(casesOfTrace, RandomCases - RandomCases / 10);
}

TEST(SMatrix, QuaternionComesFromTheTraceWhenItsSumIsExactlyOne)
{
    // No rotation, so that the two ways give different results: the sum is 0.25 + 0.5 - 0.75 + 1.
    SMatrix matrix = SMatrix::CreateScale(S3D(0.25f, 0.5f, -0.75f));
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 0.5f), matrix.GetQuaternion());
    matrix.m[3][3] = std::nextafter(1.0f, 0.0f);
    EXPECT_SAME_BITS(QuaternionFromLargest(matrix), matrix.GetQuaternion());
    EXPECT_FLOAT_EQ(std::sqrt(2.0f) / 2.0f, matrix.GetQuaternion().y);
}

TEST(SMatrix, QuaternionOfAHalfTurnComesFromTheLargestDiagonalElement)
{
    EXPECT_EQ(1.0f, SMatrix::CreateScale(S3D(1.0f, -1.0f, -1.0f)).GetQuaternion().x);
    EXPECT_EQ(1.0f, SMatrix::CreateScale(S3D(-1.0f, 1.0f, -1.0f)).GetQuaternion().y);
    EXPECT_EQ(1.0f, SMatrix::CreateScale(S3D(-1.0f, -1.0f, 1.0f)).GetQuaternion().z);
}

TEST(SMatrix, QuaternionOfATieBetweenDiagonalElementsTakesYBeforeXAndZ)
{
    // m00 = m11: not greater, so y leads, and m22 = m11 is not greater either.
    const SMatrix equal = SMatrix::CreateScale(S3D(-1.0f, -1.0f, -1.0f));
    EXPECT_SAME_BITS(QuaternionFromLargest(equal), equal.GetQuaternion());
    const SQuaternion quaternion = equal.GetQuaternion();
    EXPECT_EQ(0.0f, quaternion.x);
    EXPECT_FLOAT_EQ(std::sqrt(2.0f) / 2.0f, quaternion.y);
    EXPECT_EQ(0.0f, quaternion.z);
}

TEST(SMatrix, QuaternionOfPitchHeadingAndBankIsTheRotationAboutXYAndZ)
{
    CRandom random(17);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Between(-Pi, Pi);
        // A few roundings of components up to 1.
        const double tolerance = 5e-7;
        const auto expectRotation =
            [a, tolerance](const SQuaternion& expected, const SMatrix& matrix)
        {
            const SQuaternion actual = matrix.GetQuaternion();
            const Eigen::Vector4d expectedComponents = ToDouble(expected).coeffs();
            const Eigen::Vector4d components = ToDouble(actual).coeffs();
            const double sign = expectedComponents.dot(components) < 0.0 ? -1.0 : 1.0;
            EXPECT_CLOSE(expectedComponents, sign * components, tolerance) << PrintInput(a);
            // The sign may flip only where the trace no longer decides.
            if (std::abs(a) < 2.0f * Pi / 3.0f - 1e-5f)
            {
                EXPECT_EQ(1.0, sign) << PrintInput(a);
            }
        };
        expectRotation(SQuaternion::CreateXRotation(a), SMatrix::CreateRotPRad(a));
        expectRotation(SQuaternion::CreateYRotation(a), SMatrix::CreateRotHRad(a));
        expectRotation(SQuaternion::CreateZRotation(a), SMatrix::CreateRotBRad(a));
        ASSERT_FALSE(HasFailure());
    }
}

TEST(SMatrix, QuaternionIsThatOfDoublePrecision)
{
    CRandom random(18);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = ToMatrix(ToRotation(CreateUnitQuaternion(random)));
        // Each element of the matrix is rounded once, and the quaternion some times.
        ASSERT_LT(AngleBetween(ToRotation(matrix), ToRotation(matrix.GetQuaternion())), 1e-6)
            << PrintInput(matrix);
    }
}

TEST(SMatrix, OpenGLMatrixHasFiveElementsNegated)
{
    EXPECT_SAME_BITS(
        SMatrix(1, 2, -3, 4, 5, 6, -7, 8, -9, -10, 11, 12, 13, 14, -15, 16),
        CreateNumbered().GetOpenGLMatrix());
    EXPECT_SAME_BITS(
        SMatrix(
            1.0f, 0.0f, -0.0f, 0.0f,  //
            0.0f, 1.0f, -0.0f, 0.0f,  //
            -0.0f, -0.0f, 1.0f, 0.0f, //
            0.0f, 0.0f, -0.0f, 1.0f),
        SMatrix().GetOpenGLMatrix());
}

TEST(SMatrix, OpenGLMatrixOfAnAffineMatrixMirrorsTheZAxis)
{
    CRandom random(19);
    const SMatrix flip = SMatrix::CreateScale(S3D(1.0f, 1.0f, -1.0f));
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix(0);
        for (float(&row)[4] : matrix.m)
            for (float& element : row)
                element = random.Between(-10.0f, 10.0f);
        for (float(&row)[4] : matrix.m)
            row[3] = 0.0f;
        matrix.m[3][3] = 1.0f;
        ASSERT_EQ(flip * matrix * flip, matrix.GetOpenGLMatrix()) << PrintInput(matrix);
    }
}

TEST(SMatrix, OpenGLMatrixLeavesTheOriginal)
{
    const SMatrix matrix = CreateNumbered();
    static_cast<void>(matrix.GetOpenGLMatrix());
    EXPECT_SAME_BITS(CreateNumbered(), matrix);
}
