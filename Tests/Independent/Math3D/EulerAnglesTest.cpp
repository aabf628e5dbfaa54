#include <algorithm>
#include <cmath>
#include <ostream>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SQuaternion.h"

// The Euler angles of SMatrix and SQuaternion in their four orders.
//
// The middle angle comes from one element of the matrix by asin. Where it is 90 or -90 degrees, at
// the poles, the other two turn about the same axis, and only their sum or difference counts.

using namespace mathtest;

namespace
{

/// One order of the three rotations.
struct SOrder
{
    const char* name;
    void (SQuaternion::*set)(const S3D&);
    S3D (SQuaternion::*getOfQuaternion)() const;
    S3D (SMatrix::*getOfMatrix)() const;
    SMatrix (*multiply)(const S3D&);
    Eigen::Matrix3d (*multiplyInDouble)(const S3D&);
    float S3D::*middle;
    /// The place and sign of the sine of the middle angle.
    int row;
    int column;
    float sign;
};

std::ostream& operator<<(std::ostream& stream, const SOrder& order)
{
    return stream << order.name;
}

SMatrix P(const S3D& angles)
{
    return SMatrix::CreateRotPRad(angles.x);
}

SMatrix H(const S3D& angles)
{
    return SMatrix::CreateRotHRad(angles.y);
}

SMatrix B(const S3D& angles)
{
    return SMatrix::CreateRotBRad(angles.z);
}

Eigen::Matrix3d PitchOf(const S3D& angles)
{
    return Pitch(static_cast<double>(angles.x));
}

Eigen::Matrix3d HeadingOf(const S3D& angles)
{
    return Heading(static_cast<double>(angles.y));
}

Eigen::Matrix3d BankOf(const S3D& angles)
{
    return Bank(static_cast<double>(angles.z));
}

const SOrder XYZ = {
    "XYZ",
    &SQuaternion::SetEulerRadXYZ,
    &SQuaternion::GetEulerRadXYZ,
    &SMatrix::GetEulerRadXYZ,
    [](const S3D& a) { return P(a) * H(a) * B(a); },
    [](const S3D& a) -> Eigen::Matrix3d { return PitchOf(a) * HeadingOf(a) * BankOf(a); },
    &S3D::y,
    0,
    2,
    -1.0f};

const SOrder YXZ = {
    "YXZ",
    &SQuaternion::SetEulerRadYXZ,
    &SQuaternion::GetEulerRadYXZ,
    &SMatrix::GetEulerRadYXZ,
    [](const S3D& a) { return H(a) * P(a) * B(a); },
    [](const S3D& a) -> Eigen::Matrix3d { return HeadingOf(a) * PitchOf(a) * BankOf(a); },
    &S3D::x,
    1,
    2,
    1.0f};

const SOrder ZXY = {
    "ZXY",
    &SQuaternion::SetEulerRadZXY,
    &SQuaternion::GetEulerRadZXY,
    &SMatrix::GetEulerRadZXY,
    [](const S3D& a) { return B(a) * P(a) * H(a); },
    [](const S3D& a) -> Eigen::Matrix3d { return BankOf(a) * PitchOf(a) * HeadingOf(a); },
    &S3D::x,
    2,
    1,
    -1.0f};

const SOrder ZYX = {
    "ZYX",
    &SQuaternion::SetEulerRadZYX,
    &SQuaternion::GetEulerRadZYX,
    &SMatrix::GetEulerRadZYX,
    [](const S3D& a) { return B(a) * H(a) * P(a); },
    [](const S3D& a) -> Eigen::Matrix3d { return BankOf(a) * HeadingOf(a) * PitchOf(a); },
    &S3D::y,
    2,
    0,
    1.0f};

SQuaternion SetAngles(const SOrder& order, const S3D& angles)
{
    // Not the identity, so that a part left unset shows.
    SQuaternion rotation(0.1f, 0.2f, 0.3f, 0.4f);
    (rotation.*order.set)(angles);
    return rotation;
}

S3D GetAngles(const SOrder& order, const SQuaternion& rotation)
{
    return (rotation.*order.getOfQuaternion)();
}

S3D GetAngles(const SOrder& order, const SMatrix& rotation)
{
    return (rotation.*order.getOfMatrix)();
}

/// The sine of the middle angle as the matrix holds it.
float GetMiddleSine(const SOrder& order, const SMatrix& rotation)
{
    return order.sign * rotation.m[order.row][order.column];
}

/// True when rounding took the sine of the middle angle past 1, so that there is no such angle.
bool HasNoMiddleAngle(const SOrder& order, const SQuaternion& rotation)
{
    return std::abs(GetMiddleSine(order, rotation.GetMatrix())) > 1.0f;
}

/// Random angles with the given one in the middle.
S3D CreateAngles(CRandom& random, const SOrder& order, float middle)
{
    S3D angles = random.Vector3Between(-3.1f, 3.1f);
    angles.*order.middle = middle;
    return angles;
}

/// At most 1e-3 beside a pole; now and then just there, as exact as a float can say it.
float CreateAngleAtAPole(CRandom& random)
{
    const float pole = random.Below(2) == 0 ? Pi / 2.0f : -Pi / 2.0f;
    if (random.Below(8) == 0)
        return pole;
    // Every magnitude of the distance as likely as another.
    const auto distance = static_cast<float>(std::pow(10.0, random.BetweenDouble(-7.0, -3.0)));
    return pole + (random.Below(2) == 0 ? distance : -distance);
}

/// Angles off the poles are computed from elements that are off by some roundings, 1e-6 in all, and
/// as long as the cosine of the middle angle.
double ToleranceOff(float middle)
{
    return 1.5e-6 / std::abs(std::cos(static_cast<double>(middle)));
}

/// At the poles asin is steep: an error of some roundings in its argument, up to 4e-7, becomes one
/// of sqrt(2 * 4e-7) = 9e-4.
const double ToleranceAtPole = 1e-3;

const char* GetName(const testing::TestParamInfo<SOrder>& parameter)
{
    return parameter.param.name;
}

class EulerAngles : public testing::TestWithParam<SOrder>
{
};

INSTANTIATE_TEST_SUITE_P(, EulerAngles, testing::Values(XYZ, YXZ, ZXY, ZYX), GetName);

/// The orders that the formulas give back at the poles even where the elements carry rounding
/// errors.
class EulerAnglesAtPoles : public testing::TestWithParam<SOrder>
{
};

INSTANTIATE_TEST_SUITE_P(, EulerAnglesAtPoles, testing::Values(YXZ, ZXY), GetName);

/// The orders whose formulas take two angles from elements that vanish at the poles.
class EulerAnglesOfVanishingElements : public testing::TestWithParam<SOrder>
{
};

INSTANTIATE_TEST_SUITE_P(, EulerAnglesOfVanishingElements, testing::Values(XYZ, ZYX), GetName);

} // namespace

TEST_P(EulerAngles, SetterIsTheQuaternionOfTheProductFromTheLeft)
{
    const SOrder& order = GetParam();
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D angles = random.Vector3Between(-10.0f, 10.0f);
        ASSERT_SAME_BITS(order.multiply(angles).GetQuaternion(), SetAngles(order, angles))
            << PrintInput(angles);
    }
}

TEST_P(EulerAngles, SetterIsTheQuaternionOfTheProductForAnglesWithZerosOfEitherSign)
{
    const SOrder& order = GetParam();
    const std::vector<float> angles = {0.0f, -0.0f, Pi / 2.0f, -Pi / 2.0f, Pi,        -Pi,
                                       1.0f, -1.0f, 2.0f * Pi, Infinity,   -Infinity, NaN};
    for (const float x : angles)
        for (const float y : angles)
            for (const float z : angles)
                EXPECT_SAME_BITS(
                    order.multiply(S3D(x, y, z)).GetQuaternion(), SetAngles(order, S3D(x, y, z)))
                    << PrintInput(S3D(x, y, z));
}

TEST_P(EulerAngles, SetterIsTheRotationOfDoublePrecision)
{
    const SOrder& order = GetParam();
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D angles = random.Vector3Between(-10.0f, 10.0f);
        ASSERT_LT(
            AngleBetween(order.multiplyInDouble(angles), ToRotation(SetAngles(order, angles))),
            1e-6)
            << PrintInput(angles);
    }
}

TEST_P(EulerAngles, GetterOfAQuaternionIsThatOfItsMatrix)
{
    const SOrder& order = GetParam();
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion rotation = CreateUnitQuaternion(random);
        ASSERT_SAME_BITS(GetAngles(order, rotation.GetMatrix()), GetAngles(order, rotation))
            << PrintInput(rotation);
    }
}

TEST_P(EulerAngles, IdentityHasNoAngles)
{
    EXPECT_EQ(S3D(0.0f, 0.0f, 0.0f), GetAngles(GetParam(), SMatrix()));
    EXPECT_EQ(S3D(0.0f, 0.0f, 0.0f), GetAngles(GetParam(), SQuaternion()));
}

TEST_P(EulerAngles, AnglesOfARotationGiveItBackInDoublePrecision)
{
    const SOrder& order = GetParam();
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = CreateUnitQuaternion(random).GetMatrix();
        if (std::abs(GetMiddleSine(order, matrix)) > 0.999f)
            continue;
        const S3D angles = GetAngles(order, matrix);
        ASSERT_LT(
            AngleBetween(ToRotation(matrix), order.multiplyInDouble(angles)),
            ToleranceOff(angles.*order.middle))
            << PrintInput(matrix, angles);
    }
}

TEST_P(EulerAngles, AnglesThatWereSetComeBack)
{
    const SOrder& order = GetParam();
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D angles = CreateAngles(random, order, random.Between(-1.5f, 1.5f));
        const S3D back = GetAngles(order, SetAngles(order, angles));
        ASSERT_CLOSE(ToDouble(angles), ToDouble(back), ToleranceOff(angles.*order.middle))
            << PrintInput(angles);
    }
}

TEST_P(EulerAngles, SettingTheAnglesOfARotationGivesItBack)
{
    const SOrder& order = GetParam();
    CRandom random(6);
    for (int i = 0; i < RandomCases; ++i)
    {
        // The middle angle beyond 90 degrees as well: other angles, the same rotation.
        const S3D angles = random.Vector3Between(-10.0f, 10.0f);
        const float middle = angles.*order.middle;
        if (std::abs(std::cos(middle)) < 0.01f)
            continue;
        const SQuaternion rotation = SetAngles(order, angles);
        const SQuaternion back = SetAngles(order, GetAngles(order, rotation));
        ASSERT_LT(AngleBetween(rotation, back), ToleranceOff(middle)) << PrintInput(angles);
    }
}

TEST_P(EulerAngles, AnglesOfTheProductAtAPoleGiveTheRotationBack)
{
    const SOrder& order = GetParam();
    CRandom random(7);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        // In the product itself even the elements that vanish have hardly any relative error.
        const S3D angles = CreateAngles(random, order, CreateAngleAtAPole(random));
        const SMatrix rotation = order.multiply(angles);
        // There the formula of the order XYZ gives another rotation; see below.
        if (order.name == XYZ.name && rotation.m[0][2] == 1.0f)
            continue;
        const SMatrix back = order.multiply(GetAngles(order, rotation));
        ASSERT_LT(AngleBetween(ToRotation(rotation), ToRotation(back)), ToleranceAtPole)
            << PrintInput(angles);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 2);
}

TEST_P(EulerAngles, AnglesOfTheProductExactlyAtAPoleGiveTheRotationBackAllButExactly)
{
    const SOrder& order = GetParam();
    CRandom random(8);
    for (int i = 0; i < RandomCases; ++i)
    {
        // At the other pole the formula of the order XYZ gives another rotation; see below.
        const float pole = i % 2 == 0 || order.name == XYZ.name ? Pi / 2.0f : -Pi / 2.0f;
        const S3D angles = CreateAngles(random, order, pole);
        const SMatrix rotation = order.multiply(angles);
        ASSERT_EQ(1.0f, std::abs(GetMiddleSine(order, rotation)));
        const S3D back = GetAngles(order, rotation);
        ASSERT_SAME_BITS(pole, back.*order.middle) << PrintInput(angles);
        ASSERT_LT(AngleBetween(ToRotation(rotation), order.multiplyInDouble(back)), 1e-6)
            << PrintInput(angles);
    }
}

TEST_P(EulerAngles, SineBeyondOneMakesTheMiddleAngleNaNAndIsNoPole)
{
    const SOrder& order = GetParam();
    SMatrix matrix = order.multiply(S3D(0.3f, 0.4f, 0.5f));
    S3D expected = GetAngles(order, matrix);
    expected.*order.middle = NaN;
    for (const float sine : {std::nextafter(1.0f, 2.0f), std::nextafter(-1.0f, -2.0f), 2.0f, -2.0f})
    {
        matrix.m[order.row][order.column] = order.sign * sine;
        EXPECT_SAME_BITS(expected, GetAngles(order, matrix)) << sine;
    }
}

TEST_P(EulerAnglesAtPoles, SettingTheAnglesOfARotationGivesItBack)
{
    const SOrder& order = GetParam();
    CRandom random(9);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D angles = CreateAngles(random, order, CreateAngleAtAPole(random));
        const SQuaternion rotation = SetAngles(order, angles);
        if (HasNoMiddleAngle(order, rotation))
            continue;
        const SQuaternion back = SetAngles(order, GetAngles(order, rotation));
        ASSERT_LT(AngleBetween(rotation, back), ToleranceAtPole) << PrintInput(angles);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 2);
}

TEST_P(EulerAnglesAtPoles, RandomRotationCloseToAPoleIsGivenBack)
{
    const SOrder& order = GetParam();
    CRandom random(10);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        // Not from the setter, so that no element vanishes exactly.
        const double middle = static_cast<double>(CreateAngleAtAPole(random));
        S3D angles = CreateAngles(random, order, 0.0f);
        angles.*order.middle = static_cast<float>(middle);
        const Eigen::Quaterniond exact(Eigen::Matrix3d(order.multiplyInDouble(angles).transpose()));
        const Eigen::Vector4f q = exact.coeffs().cast<float>();
        const SQuaternion rotation(q[0], q[1], q[2], q[3]);
        if (HasNoMiddleAngle(order, rotation))
            continue;
        const SQuaternion back = SetAngles(order, GetAngles(order, rotation));
        ASSERT_LT(AngleBetween(rotation, back), ToleranceAtPole) << PrintInput(angles, rotation);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 2);
}

TEST_P(EulerAnglesAtPoles, ThirdAngleIsZeroExactlyAtAPole)
{
    const SOrder& order = GetParam();
    CRandom random(11);
    for (int i = 0; i < RandomCases; ++i)
    {
        const float pole = i % 2 == 0 ? Pi / 2.0f : -Pi / 2.0f;
        const SMatrix rotation = order.multiply(CreateAngles(random, order, pole));
        ASSERT_EQ(0.0f, GetAngles(order, rotation).z) << PrintInput(rotation);
    }
}

TEST_P(EulerAnglesAtPoles, LastSineBeforeAPoleIsNoPole)
{
    const SOrder& order = GetParam();
    SMatrix matrix = order.multiply(S3D(0.3f, 0.4f, 0.5f));
    for (const float sine : {std::nextafter(1.0f, 0.0f), std::nextafter(-1.0f, 0.0f)})
    {
        matrix.m[order.row][order.column] = order.sign * sine;
        EXPECT_NEAR(0.5f, GetAngles(order, matrix).z, 1e-6f) << sine;
    }
}

TEST_P(EulerAnglesOfVanishingElements, SettingTheAnglesGivesTheRotationBackAsFarAsTheElementsSay)
{
    // The closer to a pole, the more of the elements that vanish there is rounding error, and so
    // are the angles that the formulas take from them.
    const SOrder& order = GetParam();
    CRandom random(12);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const auto distance = static_cast<float>(std::pow(10.0, random.BetweenDouble(-5.0, -1.0)));
        const float pole = i % 2 == 0 ? Pi / 2.0f - distance : -Pi / 2.0f + distance;
        const S3D angles = CreateAngles(random, order, pole);
        const SQuaternion rotation = SetAngles(order, angles);
        if (HasNoMiddleAngle(order, rotation))
            continue;
        // There the formula of the order XYZ gives another rotation; see below.
        if (order.name == XYZ.name && GetMiddleSine(order, rotation.GetMatrix()) == -1.0f)
            continue;
        const SQuaternion back = SetAngles(order, GetAngles(order, rotation));
        ASSERT_LT(AngleBetween(rotation, back), std::max(ToleranceOff(pole), ToleranceAtPole))
            << PrintInput(angles);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 2);
}

TEST(EulerAnglesXYZ, AnglesComeFromTheFirstRowAndTheLastColumn)
{
    CRandom random(13);
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix = i % 2 == 0 ? CreateUnitQuaternion(random).GetMatrix() : random.Matrix();
        if (!(std::abs(matrix.m[0][2]) < 1.0f))
            matrix.m[0][2] = random.Between(-0.999f, 0.999f);
        const float(&m)[4][4] = matrix.m;
        const S3D expected(
            std::atan2(m[1][2], m[2][2]), std::asin(-m[0][2]), std::atan2(m[0][1], m[0][0]));
        ASSERT_SAME_BITS(expected, matrix.GetEulerRadXYZ()) << PrintInput(matrix);
    }
}

TEST(EulerAnglesXYZ, PoleAtMinusOneInTheMatrixReadsZFromTheSecondRow)
{
    CRandom random(14);
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix = random.Matrix();
        matrix.m[0][2] = -1.0f;
        const float z = std::atan2(-matrix.m[1][0], matrix.m[1][1]);
        ASSERT_SAME_BITS(S3D(0.0f, std::asin(1.0f), z), matrix.GetEulerRadXYZ())
            << PrintInput(matrix);
    }
}

TEST(EulerAnglesXYZ, PoleAtOneInTheMatrixReadsZFromTheSecondRowWithM11Negated)
{
    CRandom random(15);
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix = random.Matrix();
        matrix.m[0][2] = 1.0f;
        const float z = std::atan2(-matrix.m[1][0], -matrix.m[1][1]);
        ASSERT_SAME_BITS(S3D(0.0f, std::asin(-1.0f), z), matrix.GetEulerRadXYZ())
            << PrintInput(matrix);
    }
}

TEST(EulerAnglesXYZ, LastElementBeforeAPoleIsNoPole)
{
    SMatrix matrix = SMatrix::CreateRotPRad(0.3f);
    for (const float element : {std::nextafter(1.0f, 0.0f), std::nextafter(-1.0f, 0.0f)})
    {
        matrix.m[0][2] = element;
        EXPECT_FLOAT_EQ(0.3f, matrix.GetEulerRadXYZ().x);
    }
}

TEST(EulerAnglesXYZ, ElementOfTwoTakesTheOtherAnglesFromTheirUsualPlaces)
{
    SMatrix matrix;
    matrix.m[0][0] = 0.0f;
    matrix.m[0][1] = 1.0f;
    matrix.m[0][2] = 2.0f;
    matrix.m[1][2] = 2.0f;
    matrix.m[2][2] = 1.0f;
    const S3D angles = matrix.GetEulerRadXYZ();
    EXPECT_NEAR(1.107, angles.x, 0.001); // atan2(2, 1)
    EXPECT_TRUE(std::isnan(angles.y)) << angles.y;
    EXPECT_NEAR(1.571, angles.z, 0.001); // atan2(1, 0)
}

TEST(EulerAnglesXYZ, ExactlyAtMinus90DegreesZIsAHalfTurnLessTheSum)
{
    // There the rotation depends on x + z alone. The formula gives pi - (x + z) for z with 0 for x,
    // which is another rotation; it stands as it is.
    CRandom random(16);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D angles = CreateAngles(random, XYZ, -Pi / 2.0f);
        const S3D back = GetAngles(XYZ, XYZ.multiply(angles));
        const double expected =
            PiDouble - (static_cast<double>(angles.x) + static_cast<double>(angles.z));
        EXPECT_EQ(0.0f, back.x);
        ASSERT_SAME_BITS(-Pi / 2.0f, back.y);
        // Compared as directions, because whole turns do not count.
        const double z = static_cast<double>(back.z);
        ASSERT_NEAR(std::cos(expected), std::cos(z), 1e-6) << PrintInput(angles);
        ASSERT_NEAR(std::sin(expected), std::sin(z), 1e-6) << PrintInput(angles);
    }
}

TEST(EulerAnglesXYZ, QuaternionAt90DegreesComesBackWhereItsMatrixSaysSo)
{
    // Rounding may leave the element just beside -1; then x and z come from elements that should
    // be 0, and the formula stands.
    CRandom random(22);
    int cases = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion rotation = SetAngles(XYZ, CreateAngles(random, XYZ, Pi / 2.0f));
        if (rotation.GetMatrix().m[0][2] != -1.0f)
            continue;
        const SQuaternion back = SetAngles(XYZ, GetAngles(XYZ, rotation));
        ASSERT_LT(AngleBetween(rotation, back), 1e-6) << PrintInput(rotation);
        ++cases;
    }
    EXPECT_GT(cases, RandomCases / 10);
}

TEST(EulerAnglesXYZ, QuaternionInDegreesIsTheRadiansTimesARoundedFactor)
{
    CRandom random(17);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion rotation = CreateUnitQuaternion(random);
        const S3D radians = rotation.GetEulerRadXYZ();
        const S3D expected(radians.x * 57.295776f, radians.y * 57.295776f, radians.z * 57.295776f);
        ASSERT_SAME_BITS(expected, rotation.GetEulerXYZ()) << PrintInput(rotation);
    }
}

TEST(EulerAnglesZYX, AnglesComeFromTheFirstColumnAndTheLastRowAtThePolesToo)
{
    CRandom random(18);
    for (int i = 0; i < RandomCases; ++i)
    {
        SMatrix matrix = i % 2 == 0 ? CreateUnitQuaternion(random).GetMatrix() : random.Matrix();
        if (i % 8 < 2)
            matrix.m[2][0] = i % 8 == 0 ? 1.0f : -1.0f;
        else if (!(std::abs(matrix.m[2][0]) < 1.0f))
            matrix.m[2][0] = random.Between(-0.999f, 0.999f);
        const float(&m)[4][4] = matrix.m;
        const S3D expected(
            std::atan2(-m[2][1], m[2][2]), std::asin(m[2][0]), std::atan2(-m[1][0], m[0][0]));
        ASSERT_SAME_BITS(expected, matrix.GetEulerRadZYX()) << PrintInput(matrix);
    }
}

TEST(EulerAnglesYXZ, MiddleAngleIsTheArcSineOfM12)
{
    CRandom random(19);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = CreateUnitQuaternion(random).GetMatrix();
        if (std::abs(matrix.m[1][2]) > 1.0f)
            continue;
        ASSERT_SAME_BITS(std::asin(matrix.m[1][2]), matrix.GetEulerRadYXZ().x)
            << PrintInput(matrix);
    }
}

TEST(EulerAnglesZXY, MiddleAngleIsTheArcSineOfMinusM21)
{
    CRandom random(20);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMatrix matrix = CreateUnitQuaternion(random).GetMatrix();
        if (std::abs(matrix.m[2][1]) > 1.0f)
            continue;
        ASSERT_SAME_BITS(std::asin(-matrix.m[2][1]), matrix.GetEulerRadZXY().x)
            << PrintInput(matrix);
    }
}

TEST(EulerAnglesInDegrees, SettersMultiplyTheMatricesOfDegrees)
{
    CRandom random(21);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D degrees = random.Vector3Between(-720.0f, 720.0f);
        const SMatrix p = SMatrix::CreateRotP(degrees.x);
        const SMatrix h = SMatrix::CreateRotH(degrees.y);
        const SMatrix b = SMatrix::CreateRotB(degrees.z);
        SQuaternion xyz(0.1f, 0.2f, 0.3f, 0.4f);
        xyz.SetEulerXYZ(degrees);
        ASSERT_SAME_BITS((p * h * b).GetQuaternion(), xyz) << PrintInput(degrees);
        SQuaternion yxz(0.1f, 0.2f, 0.3f, 0.4f);
        yxz.SetEulerYXZ(degrees);
        ASSERT_SAME_BITS((h * p * b).GetQuaternion(), yxz) << PrintInput(degrees);
    }
}

TEST(EulerAnglesInDegrees, OneAngleTurnsAboutItsAxis)
{
    SQuaternion quarter;
    quarter.SetEulerXYZ(S3D(90.0f, 0.0f, 0.0f));
    EXPECT_LT(AngleBetween(SQuaternion::CreateXRotation(Pi / 2.0f), quarter), 1e-6);
    quarter.SetEulerYXZ(S3D(0.0f, 90.0f, 0.0f));
    EXPECT_LT(AngleBetween(SQuaternion::CreateYRotation(Pi / 2.0f), quarter), 1e-6);
    quarter.SetEulerXYZ(S3D(0.0f, 0.0f, 90.0f));
    EXPECT_LT(AngleBetween(SQuaternion::CreateZRotation(Pi / 2.0f), quarter), 1e-6);
}
