#include "Independent/Math3D/SQuaternion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"
#include "Independent/Math3D/SMatrix.h"

using namespace mathtest;

namespace
{

SQuaternion Multiply(const SQuaternion& a, const SQuaternion& b)
{
    float w = a.w * b.w;
    w = w - a.x * b.x;
    w = w - a.y * b.y;
    w = w - a.z * b.z;
    float x = a.w * b.x;
    x = x + b.w * a.x;
    x = x + a.y * b.z;
    x = x - a.z * b.y;
    float y = a.w * b.y;
    y = y + b.w * a.y;
    y = y + a.z * b.x;
    y = y - a.x * b.z;
    float z = a.w * b.z;
    z = z + b.w * a.z;
    z = z + a.x * b.y;
    z = z - a.y * b.x;
    return SQuaternion(x, y, z, w);
}

float Dot(const SQuaternion& a, const SQuaternion& b)
{
    float sum = a.x * b.x;
    sum = sum + a.y * b.y;
    sum = sum + a.z * b.z;
    sum = sum + a.w * b.w;
    return sum;
}

SQuaternion Blend(const SQuaternion& a, float weightA, const SQuaternion& b, float weightB)
{
    return SQuaternion(
        weightA * a.x + weightB * b.x, weightA * a.y + weightB * b.y, weightA * a.z + weightB * b.z,
        weightA * a.w + weightB * b.w);
}

SQuaternion Negate(const SQuaternion& q)
{
    return SQuaternion(-q.x, -q.y, -q.z, -q.w);
}

SQuaternion SlerpInOrder(const SQuaternion& from, const SQuaternion& to, float t)
{
    float dot = Dot(from, to);
    SQuaternion target = to;
    if (dot < 0.0f)
    {
        dot = -dot;
        target = Negate(to);
    }
    if (!(1.0f - dot > 0.01f))
        return Blend(from, 1.0f - t, target, t);
    const float angle = std::acos(dot);
    const float sine = std::sin(angle);
    const float weightFrom = std::sin((1.0f - t) * angle) / sine;
    const float weightTo = std::sin(t * angle) / sine;
    return Blend(from, weightFrom, target, weightTo);
}

/// A rotation whose dot product with the given one is the given number.
SQuaternion CreateAtDot(CRandom& random, const SQuaternion& from, double dot)
{
    const Eigen::Vector4d a = ToDouble(from).coeffs().normalized();
    Eigen::Vector4d b = ToDouble(CreateUnitQuaternion(random)).coeffs();
    b = (b - a * a.dot(b)).normalized();
    const Eigen::Vector4f q = (a * dot + b * std::sqrt(1.0 - dot * dot)).cast<float>();
    return SQuaternion(q[0], q[1], q[2], q[3]);
}

/// What LimitRotate leaves behind, and whether it changed anything.
bool LimitInDouble(SQuaternion& q, double limit)
{
    double x = 2.0 * std::asin(static_cast<double>(q.x));
    double y = 2.0 * std::asin(static_cast<double>(q.y));
    double z = 2.0 * std::asin(static_cast<double>(q.z));
    double w = 2.0 * std::acos(static_cast<double>(q.w));
    const double largest =
        std::max(std::max(std::abs(x), std::abs(y)), std::max(std::abs(z), std::abs(w)));
    if (largest <= limit)
        return false;
    const double factor = limit / largest;
    x = std::sin(x * factor / 2.0);
    y = std::sin(y * factor / 2.0);
    z = std::sin(z * factor / 2.0);
    w = std::cos(w * factor / 2.0);
    const double length = std::sqrt(x * x + y * y + z * z + w * w);
    if (!(length > 0.00001))
        return false;
    q = SQuaternion(
        static_cast<float>(x / length), static_cast<float>(y / length),
        static_cast<float>(z / length), static_cast<float>(w / length));
    return true;
}

/// Near in each component.
void ExpectNear(const SQuaternion& expected, const SQuaternion& actual, double tolerance)
{
    EXPECT_CLOSE(ToDouble(expected).coeffs(), ToDouble(actual).coeffs(), tolerance);
}

} // namespace

TEST(SQuaternion, IsFourFloatsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<SQuaternion>);
    static_assert(std::is_standard_layout_v<SQuaternion>);
    static_assert(std::is_trivially_copyable_v<SQuaternion>);
    static_assert(sizeof(SQuaternion) == 4 * sizeof(float));
    static_assert(offsetof(SQuaternion, x) == 0);
    static_assert(offsetof(SQuaternion, y) == 4);
    static_assert(offsetof(SQuaternion, z) == 8);
    static_assert(offsetof(SQuaternion, w) == 12);
}

TEST(SQuaternion, DefaultIsTheIdentity)
{
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), SQuaternion());
}

TEST(SQuaternion, ConstructorTakesTheFieldsInOrder)
{
    const SQuaternion quaternion(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(1.0f, quaternion.x);
    EXPECT_EQ(2.0f, quaternion.y);
    EXPECT_EQ(3.0f, quaternion.z);
    EXPECT_EQ(4.0f, quaternion.w);
}

TEST(SQuaternion, IdentityIsCreatedOrSetInPlace)
{
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), SQuaternion::CreateIdentity());
    SQuaternion quaternion(1.0f, 2.0f, 3.0f, 4.0f);
    quaternion.Identity();
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), quaternion);
}

TEST(SQuaternion, AxisRotationTakesTheAxisAsItIs)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D axis = random.Vector3();
        const float radians = random.Between(-10.0f, 10.0f);
        const float half = radians / 2.0f;
        const float s = std::sin(half);
        const SQuaternion expected(axis.x * s, axis.y * s, axis.z * s, std::cos(half));
        ASSERT_SAME_BITS(expected, SQuaternion::CreateAxisRotation(axis, radians))
            << PrintInput(axis, radians);
    }
}

TEST(SQuaternion, RotationsAboutXYZHoldSineAndCosineOfHalfTheAngle)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float radians = random.Between(-10.0f, 10.0f);
        const float half = radians / 2.0f;
        const float s = std::sin(half);
        const float c = std::cos(half);
        ASSERT_SAME_BITS(SQuaternion(s, 0, 0, c), SQuaternion::CreateXRotation(radians))
            << PrintInput(radians);
        ASSERT_SAME_BITS(SQuaternion(0, s, 0, c), SQuaternion::CreateYRotation(radians))
            << PrintInput(radians);
        ASSERT_SAME_BITS(SQuaternion(0, 0, s, c), SQuaternion::CreateZRotation(radians))
            << PrintInput(radians);
    }
}

TEST(SQuaternion, HalfATurnAboutXHasTheCosineOfTheFloatPi)
{
    const SQuaternion half = SQuaternion::CreateXRotation(Pi);
    EXPECT_EQ(1.0f, half.x);
    EXPECT_EQ(0.0f, half.y);
    EXPECT_EQ(0.0f, half.z);
    EXPECT_NEAR(-4.371139e-8f, half.w, 1e-13f);
}

TEST(SQuaternionCreateFromToRotation, OppositeVectorsGiveTheIdentity)
{
    EXPECT_SAME_BITS(
        SQuaternion(),
        SQuaternion::CreateFromToRotation(S3D(1.0f, 0.0f, 0.0f), S3D(-1.0f, 0.0f, 0.0f)));
}

TEST(SQuaternionCreateFromToRotation, VectorsThatAreNearlyOppositeTurnHalfRound)
{
    const SQuaternion quaternion = SQuaternion::CreateFromToRotation(
        S3D(1.0f, 0.0f, 0.0f), S3D(std::nextafter(-1.0f, 0.0f), 3.4526698e-4f, 0.0f));
    EXPECT_NEAR(1.0f, quaternion.z, 1e-6f);
    EXPECT_NEAR(1.7263349e-4f, quaternion.w, 1e-9f);
}

TEST(SQuaternionCreateFromToRotation, RightAngleFromXToYTurnsAboutZ)
{
    const SQuaternion quaternion =
        SQuaternion::CreateFromToRotation(S3D(1.0f, 0.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f));
    ExpectNear(SQuaternion(0.0f, 0.0f, 0.70710678f, 0.70710678f), quaternion, 1.2e-7);
}

TEST(SQuaternionCreateFromToRotation, EqualVectorsGiveTheIdentity)
{
    EXPECT_EQ(
        1.0f, SQuaternion::CreateFromToRotation(S3D(0.0f, 1.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f)).w);
}

TEST(SQuaternionCreateFromToRotation, DotProductBelowMinusOneGivesNaN)
{
    const SQuaternion quaternion = SQuaternion::CreateFromToRotation(
        S3D(1.0f, 0.0f, 0.0f), S3D(std::nextafter(-1.0f, -2.0f), 0.0f, 0.0f));
    EXPECT_TRUE(std::isnan(quaternion.w));
}

TEST(SQuaternionCreateFromToRotation, IsFormedInOrder)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D from = i % 2 == 0 ? CreateDirection(random) : random.Vector3();
        const S3D to = i % 2 == 0 ? CreateDirection(random) : random.Vector3();
        const float doubled = 2.0f * S3D::DotProduct(from, to);
        const float s = std::sqrt(2.0f + doubled);
        SQuaternion expected;
        if (s != 0.0f)
        {
            const S3D cross = S3D::CrossProduct(from, to);
            const float reciprocal = 1.0f / s;
            expected = SQuaternion(
                cross.x * reciprocal, cross.y * reciprocal, cross.z * reciprocal, 0.5f * s);
        }
        ASSERT_SAME_BITS(expected, SQuaternion::CreateFromToRotation(from, to))
            << PrintInput(from, to);
    }
}

TEST(SQuaternionCreateFromToRotation, TurnsTheOneDirectionIntoTheOther)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D from = CreateDirection(random);
        const S3D to = CreateDirection(random);
        // Nearer to opposite, the rounding of 1 + dot counts.
        if (S3D::DotProduct(from, to) < -0.99f)
            continue;
        const SQuaternion rotation = SQuaternion::CreateFromToRotation(from, to);
        ASSERT_CLOSE(ToDouble(to), ToDouble(from) * ToRotation(rotation), 1e-5)
            << PrintInput(from, to);
    }
}

TEST(SQuaternion, SumAndDifferenceAreFormedByComponent)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = random.Quaternion();
        const SQuaternion b = random.Quaternion();
        ASSERT_SAME_BITS(SQuaternion(a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w), a + b)
            << PrintInput(a, b);
        ASSERT_SAME_BITS(SQuaternion(a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w), a - b)
            << PrintInput(a, b);
    }
}

TEST(SQuaternion, FactorMultipliesAndDivisorDividesAllFourComponents)
{
    // The product with the reciprocal would be 0x1.aaaaacp+0.
    EXPECT_SAME_BITS(
        SQuaternion(0x1.aaaaaap+0f, 1.0f, 0.0f, 0x1.aaaaaap+0f),
        SQuaternion(5.0f, 3.0f, 0.0f, 5.0f) / 3.0f);
    CRandom random(6);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion q = random.Quaternion();
        const float number = random.Float();
        ASSERT_SAME_BITS(
            SQuaternion(q.x * number, q.y * number, q.z * number, q.w * number), q * number)
            << PrintInput(q, number);
        ASSERT_SAME_BITS(
            SQuaternion(q.x / number, q.y / number, q.z / number, q.w / number), q / number)
            << PrintInput(q, number);
    }
}

TEST(SQuaternion, DivisionByZeroGivesInfinitiesAndNaN)
{
    EXPECT_SAME_BITS(
        SQuaternion(Infinity, -Infinity, NaN, Infinity),
        SQuaternion(1.0f, -1.0f, 0.0f, 1.0f) / 0.0f);
}

TEST(SQuaternion, ProductOfTheUnitsFollowsHamilton)
{
    const SQuaternion i(1.0f, 0.0f, 0.0f, 0.0f);
    const SQuaternion j(0.0f, 1.0f, 0.0f, 0.0f);
    const SQuaternion k(0.0f, 0.0f, 1.0f, 0.0f);
    ExpectNear(k, i * j, 0.0);
    ExpectNear(i, j * k, 0.0);
    ExpectNear(j, k * i, 0.0);
    ExpectNear(Negate(k), j * i, 0.0);
    ExpectNear(SQuaternion(0.0f, 0.0f, 0.0f, -1.0f), i * i, 0.0);
}

TEST(SQuaternion, ProductIsSummedInOrder)
{
    CRandom random(7);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = random.Quaternion();
        const SQuaternion b = random.Quaternion();
        ASSERT_SAME_BITS(Multiply(a, b), a * b) << PrintInput(a, b);
    }
}

TEST(SQuaternion, ProductIsThatOfDoublePrecision)
{
    CRandom random(8);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = CreateUnitQuaternion(random);
        const SQuaternion b = CreateUnitQuaternion(random);
        ASSERT_CLOSE((ToDouble(a) * ToDouble(b)).coeffs(), ToDouble(a * b).coeffs(), 5e-7)
            << PrintInput(a, b);
    }
}

TEST(SQuaternion, ProductRotatesByTheRightFactorFirst)
{
    CRandom random(9);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = CreateUnitQuaternion(random);
        const SQuaternion b = CreateUnitQuaternion(random);
        ASSERT_CLOSE(ToRotation(b) * ToRotation(a), ToRotation((a * b).GetMatrix()), 2e-6)
            << PrintInput(a, b);
    }
}

TEST(SQuaternion, NormalisingGivesLengthOne)
{
    SQuaternion quaternion(0.0f, 0.0f, 0.0f, 2.0f);
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), quaternion.GetNormalize());
    EXPECT_EQ(2.0f, quaternion.w);
    quaternion.Normalize();
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), quaternion);
}

TEST(SQuaternion, NormalisingLeavesAQuaternionOfTheThresholdsLength)
{
    // The root of the square of a float is that float again.
    for (const float w : {0.0f, 0.000001f, 1e-5f, -1e-5f})
    {
        SQuaternion quaternion(0.0f, 0.0f, 0.0f, w);
        EXPECT_SAME_BITS(quaternion, quaternion.GetNormalize());
        quaternion.Normalize();
        EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, w), quaternion);
    }
}

TEST(SQuaternion, NormalisingScalesAQuaternionJustAboveTheThreshold)
{
    const float above = std::nextafter(1e-5f, 1.0f);
    SQuaternion quaternion(0.0f, -above, 0.0f, 0.0f);
    EXPECT_SAME_BITS(SQuaternion(0.0f, -1.0f, 0.0f, 0.0f), quaternion.GetNormalize());
    quaternion.Normalize();
    EXPECT_SAME_BITS(SQuaternion(0.0f, -1.0f, 0.0f, 0.0f), quaternion);
}

TEST(SQuaternion, NormalisingDividesByTheLength)
{
    CRandom random(10);
    int differences = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion q = random.Quaternion();
        const float length = std::sqrt(Dot(q, q));
        const SQuaternion expected =
            length > 1e-5f ? SQuaternion(q.x / length, q.y / length, q.z / length, q.w / length)
                           : q;
        SQuaternion inPlace = q;
        inPlace.Normalize();
        ASSERT_SAME_BITS(expected, q.GetNormalize()) << PrintInput(q);
        ASSERT_SAME_BITS(expected, inPlace) << PrintInput(q);
        differences += !IsSameFloat(expected.x, q.x * (1.0f / length));
    }
    EXPECT_GT(differences, RandomCases / 10);
}

TEST(SQuaternion, InverseIsTheConjugateWithoutADivision)
{
    EXPECT_SAME_BITS(
        SQuaternion(-1.0f, 2.0f, -3.0f, 4.0f), SQuaternion(1.0f, -2.0f, 3.0f, 4.0f).GetInverse());
    EXPECT_SAME_BITS(SQuaternion(-0.0f, -0.0f, -0.0f, 1.0f), SQuaternion().GetInverse());
}

TEST(SQuaternion, InverseOfAUnitQuaternionTurnsBack)
{
    CRandom random(11);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion q = CreateUnitQuaternion(random);
        ASSERT_LT(AngleBetween(SQuaternion(), q * q.GetInverse()), 1e-6) << PrintInput(q);
    }
}

TEST(SQuaternion, OpenGLQuaternionHasWNegated)
{
    EXPECT_SAME_BITS(
        SQuaternion(1.0f, 2.0f, -3.0f, -4.0f), SQuaternion(1.0f, 2.0f, -3.0f, 4.0f).GetOpenGL());
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, -0.0f), SQuaternion(0, 0, 0, 0).GetOpenGL());
}

TEST(SQuaternion, OpenGLQuaternionIsTheInverseRotation)
{
    CRandom random(12);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion q = CreateUnitQuaternion(random);
        ASSERT_LT(AngleBetween(q.GetInverse(), q.GetOpenGL()), 1e-7) << PrintInput(q);
    }
}

TEST(SQuaternion, MatrixIsThatOfDoublePrecision)
{
    CRandom random(13);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion q = CreateUnitQuaternion(random);
        // A length of 1 but for rounding, squared, and some roundings of values up to 2.
        ASSERT_CLOSE(ToRigid(ToRotation(q), S3D()), ToDouble(q.GetMatrix()), 1e-6) << PrintInput(q);
    }
}

TEST(SQuaternion, MatrixOfTheIdentityIsTheIdentity)
{
    EXPECT_EQ(SMatrix(), SQuaternion().GetMatrix());
    EXPECT_EQ(SMatrix(), SQuaternion(0.0f, 0.0f, 0.0f, -1.0f).GetMatrix());
}

TEST(SQuaternion, MatrixOfARotationAboutXYZIsPitchHeadingAndBank)
{
    CRandom random(14);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float a = random.Between(-10.0f, 10.0f);
        const double angle = a;
        ASSERT_CLOSE(Pitch(angle), ToRotation(SQuaternion::CreateXRotation(a).GetMatrix()), 1e-6);
        ASSERT_CLOSE(Heading(angle), ToRotation(SQuaternion::CreateYRotation(a).GetMatrix()), 1e-6);
        ASSERT_CLOSE(Bank(angle), ToRotation(SQuaternion::CreateZRotation(a).GetMatrix()), 1e-6);
    }
}

TEST(SQuaternion, QuaternionOfItsMatrixIsTheSameUpToTheSign)
{
    CRandom random(15);
    for (int i = 0; i < RandomCases; ++i)
    {
        SQuaternion q = CreateUnitQuaternion(random);
        // Half turns, where no component of the matrix says the sign of w.
        if (i % 4 == 0)
        {
            q.w *= 1e-6f;
            q.Normalize();
        }
        const SQuaternion back = q.GetMatrix().GetQuaternion();
        const SQuaternion sameSign = Dot(q, back) < 0.0f ? Negate(back) : back;
        ASSERT_CLOSE(ToDouble(q).coeffs(), ToDouble(sameSign).coeffs(), 1e-6) << PrintInput(q);
        ASSERT_LT(AngleBetween(q, back), 1e-6) << PrintInput(q);
    }
}

TEST(SQuaternionLimitRotate, RotationWithinTheLimitStays)
{
    CRandom random(16);
    for (int i = 0; i < RandomCases; ++i)
    {
        // With w of 0 or more no angle is above pi.
        SQuaternion q = CreateUnitQuaternion(random);
        q.w = std::abs(q.w);
        const SQuaternion before = q;
        ASSERT_FALSE(q.LimitRotate(PiDouble)) << PrintInput(before);
        ASSERT_SAME_BITS(before, q);
    }
    SQuaternion half(1.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_FALSE(half.LimitRotate(PiDouble));
    EXPECT_SAME_BITS(SQuaternion(1.0f, 0.0f, 0.0f, 0.0f), half);
}

TEST(SQuaternionLimitRotate, RotationAboutOneAxisIsTurnedBackToTheLimit)
{
    SQuaternion quaternion = SQuaternion::CreateXRotation(1.0f);
    EXPECT_TRUE(quaternion.LimitRotate(0.5));
    ExpectNear(SQuaternion::CreateXRotation(0.5f), quaternion, 2e-7);
    SQuaternion negative = SQuaternion::CreateZRotation(-2.0f);
    EXPECT_TRUE(negative.LimitRotate(0.25));
    ExpectNear(SQuaternion::CreateZRotation(-0.25f), negative, 2e-7);
}

TEST(SQuaternionLimitRotate, LimitOfZeroGivesTheIdentity)
{
    SQuaternion quaternion = SQuaternion::CreateYRotation(1.0f);
    EXPECT_TRUE(quaternion.LimitRotate(0.0));
    EXPECT_EQ(0.0f, quaternion.y);
    EXPECT_EQ(1.0f, quaternion.w);
}

TEST(SQuaternionLimitRotate, ResultShorterThanOneHundredThousandthChangesNothing)
{
    SQuaternion below(0.0f, 0.0f, 0.0f, -1.0f);
    EXPECT_FALSE(below.LimitRotate(PiDouble - 1e-5)); // of length 5e-6
    EXPECT_EQ(-1.0f, below.w);
    SQuaternion above(0.0f, 0.0f, 0.0f, -1.0f);
    EXPECT_TRUE(above.LimitRotate(PiDouble - 4e-5)); // of length 2e-5
    EXPECT_EQ(1.0f, above.w);
}

TEST(SQuaternionLimitRotate, EachComponentsAngleIsScaledByTheSameFactor)
{
    CRandom random(17);
    int changes = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        SQuaternion q = CreateUnitQuaternion(random);
        const double limit = random.BetweenDouble(0.0, 2.0 * PiDouble);
        const SQuaternion before = q;
        SQuaternion expected = q;
        const bool isChanged = LimitInDouble(expected, limit);
        ASSERT_EQ(isChanged, q.LimitRotate(limit)) << PrintInput(before) << "\n  " << limit;
        ASSERT_SAME_BITS(expected, q) << PrintInput(before) << "\n  " << limit;
        changes += isChanged;
    }
    EXPECT_GT(changes, RandomCases / 10);
    EXPECT_LT(changes, RandomCases - RandomCases / 10);
}

TEST(SQuaternionLimitRotate, EachComponentCanBeTheLargest)
{
    // Not unit quaternions: the angles of x, y and z exceed that of w.
    for (const SQuaternion& start :
         {SQuaternion(0.9f, 0.0f, 0.0f, 1.0f), SQuaternion(0.0f, -0.9f, 0.0f, 1.0f),
          SQuaternion(0.0f, 0.0f, 0.9f, 1.0f), SQuaternion(0.0f, 0.0f, 0.0f, 0.9f)})
    {
        SQuaternion quaternion = start;
        SQuaternion expected = start;
        EXPECT_TRUE(LimitInDouble(expected, 0.5)) << PrintInput(start);
        EXPECT_TRUE(quaternion.LimitRotate(0.5)) << PrintInput(start);
        EXPECT_SAME_BITS(expected, quaternion) << PrintInput(start);
    }
}

TEST(SQuaternionLimitRotate, ResultTooShortToNormaliseLeavesTheQuaternion)
{
    // w = -1 is an angle of 2 pi; limited to pi it is cos(pi / 2), and the rest is 0.
    SQuaternion quaternion(0.0f, 0.0f, 0.0f, -1.0f);
    EXPECT_FALSE(quaternion.LimitRotate(PiDouble));
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, -1.0f), quaternion);
}

TEST(SQuaternionLimitRotate, ComponentBeyondOneLeavesTheQuaternion)
{
    const float above = std::nextafter(1.0f, 2.0f);
    for (const SQuaternion& start :
         {SQuaternion(above, 0.0f, 0.0f, 0.0f), SQuaternion(0.0f, -above, 0.0f, 0.0f),
          SQuaternion(0.0f, 0.0f, above, 0.0f), SQuaternion(0.5f, 0.0f, 0.0f, above),
          SQuaternion(0.5f, 0.5f, 0.5f, NaN)})
    {
        SQuaternion quaternion = start;
        EXPECT_FALSE(quaternion.LimitRotate(0.25)) << PrintInput(start);
        EXPECT_SAME_BITS(start, quaternion);
    }
}

TEST(SQuaternionLerp, AddsTheScaledDifference)
{
    CRandom random(18);
    const auto lerp = [](float a, float b, float t)
    {
        const float difference = b - a;
        const float scaled = difference * t;
        return a + scaled;
    };
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = random.Quaternion();
        const SQuaternion b = random.Quaternion();
        const float t = random.Float();
        const SQuaternion expected(
            lerp(a.x, b.x, t), lerp(a.y, b.y, t), lerp(a.z, b.z, t), lerp(a.w, b.w, t));
        ASSERT_SAME_BITS(expected, a.Lerp(b, t)) << PrintInput(a, b, t);
    }
}

TEST(SQuaternionLerp, NeitherNormalisesNorClamps)
{
    const SQuaternion a(0.0f, 0.0f, 0.0f, 1.0f);
    const SQuaternion b(1.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_SAME_BITS(SQuaternion(0.5f, 0.0f, 0.0f, 0.5f), a.Lerp(b, 0.5f));
    EXPECT_SAME_BITS(SQuaternion(2.0f, 0.0f, 0.0f, -1.0f), a.Lerp(b, 2.0f));
    EXPECT_SAME_BITS(SQuaternion(-1.0f, 0.0f, 0.0f, 2.0f), a.Lerp(b, -1.0f));
}

TEST(SQuaternionSlerp, GoesToTheNegativeByStaying)
{
    const SQuaternion q(0.5f, -0.5f, 0.5f, 0.5f);
    for (const float t : {0.0f, 0.25f, 0.5f, 1.0f})
        EXPECT_SAME_BITS(q, q.Slerp(Negate(q), t)) << t;
}

TEST(SQuaternionSlerp, EndsAreTheTwoRotations)
{
    const SQuaternion a = SQuaternion::CreateXRotation(0.2f);
    const SQuaternion b = SQuaternion::CreateYRotation(1.5f);
    ExpectNear(a, a.Slerp(b, 0.0f), 2e-7);
    ExpectNear(b, a.Slerp(b, 1.0f), 2e-7);
    ExpectNear(b, a.Slerp(Negate(b), 1.0f), 2e-7);
}

TEST(SQuaternionSlerp, HalfWayIsHalfTheAngle)
{
    const SQuaternion a = SQuaternion::CreateZRotation(0.4f);
    const SQuaternion b = SQuaternion::CreateZRotation(2.4f);
    ExpectNear(SQuaternion::CreateZRotation(1.4f), a.Slerp(b, 0.5f), 2e-7);
    ExpectNear(SQuaternion::CreateZRotation(0.9f), a.Slerp(b, 0.25f), 2e-7);
    ExpectNear(SQuaternion::CreateZRotation(3.4f), a.Slerp(b, 1.5f), 2e-7);
}

TEST(SQuaternionSlerp, IsFormedInOrder)
{
    CRandom random(19);
    int casesOfLinearWeights = 0;
    int casesOfNegation = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = CreateUnitQuaternion(random);
        // Every other one near to the same or to the opposite rotation.
        const double nearDot = random.BetweenDouble(0.97, 1.0) * (i % 4 == 0 ? 1.0 : -1.0);
        const SQuaternion b =
            i % 2 == 0 ? CreateAtDot(random, a, nearDot) : CreateUnitQuaternion(random);
        const float t = random.Between(-0.5f, 1.5f);
        ASSERT_SAME_BITS(SlerpInOrder(a, b, t), a.Slerp(b, t)) << PrintInput(a, b, t);
        casesOfLinearWeights += !(1.0f - std::abs(Dot(a, b)) > 0.01f);
        casesOfNegation += Dot(a, b) < 0.0f;
    }
    EXPECT_GT(casesOfLinearWeights, RandomCases / 10);
    EXPECT_GT(casesOfNegation, RandomCases / 10);
}

TEST(SQuaternionSlerp, WeightsAreLinearWithinADotProductOfOneHundredthBelowOne)
{
    const SQuaternion a;
    const SQuaternion b(std::sqrt(1.0f - 0.995f * 0.995f), 0.0f, 0.0f, 0.995f);
    EXPECT_SAME_BITS(Blend(a, 0.75f, b, 0.25f), a.Slerp(b, 0.25f));
}

TEST(SQuaternionSlerp, ThresholdItselfHasLinearWeights)
{
    // The last dot product with linear weights and the one before it; the length is of no matter.
    // 1 - 0.99f is 0x1.47ae00p-7, just below 0.01, and the next is 0x1.47ae80p-7, above it.
    const SQuaternion a;
    const SQuaternion last(1.0f, 0.0f, 0.0f, 0.99f);
    const SQuaternion beyond(1.0f, 0.0f, 0.0f, std::nextafter(0.99f, 0.0f));
    EXPECT_EQ(0x1.47aep-7f, 1.0f - last.w);
    EXPECT_EQ(0x1.47ae8p-7f, 1.0f - beyond.w);
    EXPECT_EQ(0.5f, a.Slerp(last, 0.5f).x);
    // sin(angle / 2) / sin(angle) = 1 / sqrt(2 + 2 * 0.99).
    EXPECT_NEAR(0.5012547f, a.Slerp(beyond, 0.5f).x, 1e-6f);
}

TEST(SQuaternionSlerp, IsThatOfDoublePrecision)
{
    CRandom random(20);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion a = CreateUnitQuaternion(random);
        const SQuaternion b = CreateUnitQuaternion(random);
        const float t = random.Between(0.0f, 1.0f);
        // Linear weights cut the arc instead; they are off by up to 2e-4 there.
        if (std::abs(Dot(a, b)) > 0.98f)
            continue;
        const Eigen::Quaterniond expected =
            ToDouble(a).normalized().slerp(static_cast<double>(t), ToDouble(b).normalized());
        // Division by a sine of 0.2 or more.
        ASSERT_CLOSE(expected.coeffs(), ToDouble(a.Slerp(b, t)).coeffs(), 3e-6)
            << PrintInput(a, b, t);
    }
}
