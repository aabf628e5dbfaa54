#include "Independent/Math3D/CBezier.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using math3d::CBezier;
using namespace mathtest;

namespace
{

using Points = std::array<S2D, 4>;

/// The last n whose factorial fits into 32 bits.
constexpr int LastExactDegree = 12;

Points CreatePoints(CRandom& random)
{
    Points points;
    for (S2D& point : points)
    {
        point.x = random.Between(-10.0f, 10.0f);
        point.y = random.Between(-10.0f, 10.0f);
    }
    return points;
}

std::string PrintCurve(const Points& points, float t)
{
    return PrintInput(points[0], points[1], points[2], points[3], t);
}

/// "n over i" by Pascal's triangle.
double Binomial(int i, int n)
{
    return i == 0 || i == n ? 1.0 : Binomial(i - 1, n - 1) + Binomial(i, n - 1);
}

double BernsteinInDouble(int i, int n, double t)
{
    return Binomial(i, n) * std::pow(t, i) * std::pow(1.0 - t, n - i);
}

Eigen::Vector2d ToDouble(const S2D& point)
{
    return Eigen::Vector2d(point.x, point.y);
}

/// The curve by repeated division of the control polygon in the ratio t to 1 - t.
Eigen::Vector2d DeCasteljau(const Points& points, double t)
{
    std::array<Eigen::Vector2d, 4> polygon;
    for (std::size_t i = 0; i < 4; ++i)
        polygon[i] = ToDouble(points[i]);
    for (std::size_t count = 3; count > 0; --count)
    {
        for (std::size_t i = 0; i < count; ++i)
            polygon[i] = polygon[i] * (1.0 - t) + polygon[i + 1] * t;
    }
    return polygon[0];
}

} // namespace

TEST(CBezier, HasAVirtualDestructorAndNoData)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CBezier>);
    EXPECT_EQ(sizeof(CBezier), sizeof(void*));
}

TEST(CBezier, BernsteinOfOneOfThreeInTheMiddleIsThreeEighths)
{
    EXPECT_EQ(CBezier::Bernstein(1, 3, 0.5f), 0.375f);
}

TEST(CBezier, BernsteinOfTheCubicInTheMiddleIsOneThreeThreeOneEighths)
{
    EXPECT_EQ(CBezier::Bernstein(0, 3, 0.5f), 0.125f);
    EXPECT_EQ(CBezier::Bernstein(2, 3, 0.5f), 0.375f);
    EXPECT_EQ(CBezier::Bernstein(3, 3, 0.5f), 0.125f);
}

TEST(CBezier, BernsteinOfDegreeZeroIsOne)
{
    for (const float t : {-1.0f, 0.0f, 0.3f, 1.0f, 2.0f})
        EXPECT_EQ(CBezier::Bernstein(0, 0, t), 1.0f) << t;
}

TEST(CBezier, BernsteinAtTheEndsIsOneForTheEndsPolynomialAlone)
{
    for (int n = 0; n <= LastExactDegree; ++n)
    {
        for (int i = 0; i <= n; ++i)
        {
            EXPECT_EQ(CBezier::Bernstein(i, n, 0.0f), i == 0 ? 1.0f : 0.0f) << i << ' ' << n;
            EXPECT_EQ(CBezier::Bernstein(i, n, 1.0f), i == n ? 1.0f : 0.0f) << i << ' ' << n;
        }
    }
}

TEST(CBezier, BernsteinFollowsItsFormulaToTheBit)
{
    CRandom random(1);
    for (int n = 0; n <= LastExactDegree; ++n)
    {
        for (int i = 0; i <= n; ++i)
        {
            for (int repeat = 0; repeat < 50; ++repeat)
            {
                const float t = random.Between(-1.0f, 2.0f);
                const float expected = static_cast<float>(Binomial(i, n)) *
                                       std::pow(t, static_cast<float>(i)) *
                                       std::pow(1.0f - t, static_cast<float>(n - i));
                ASSERT_EQ(CBezier::Bernstein(i, n, t), expected)
                    << i << ' ' << n << ' ' << PrintInput(t);
            }
        }
    }
}

TEST(CBezier, BernsteinAgreesWithDoublePrecision)
{
    // The power of a rounded 1 - t multiplies its half unit in the last place by up to 12.
    constexpr double tolerance = 2e-6;
    CRandom random(2);
    for (int n = 0; n <= LastExactDegree; ++n)
    {
        for (int i = 0; i <= n; ++i)
        {
            for (int repeat = 0; repeat < 50; ++repeat)
            {
                const float t = random.Between(-1.0f, 2.0f);
                const double expected = BernsteinInDouble(i, n, t);
                ASSERT_NEAR(
                    CBezier::Bernstein(i, n, t), expected, tolerance * std::abs(expected) + 1e-37)
                    << i << ' ' << n << ' ' << PrintInput(t);
            }
        }
    }
}

TEST(CBezier, BernsteinIsSymmetric)
{
    CRandom random(3);
    for (int n = 0; n <= LastExactDegree; ++n)
    {
        for (int i = 0; i <= n; ++i)
        {
            // From 0.5 to 1 the difference 1 - t is exact.
            const float t = random.Between(0.5f, 1.0f);
            EXPECT_FLOAT_EQ(CBezier::Bernstein(i, n, t), CBezier::Bernstein(n - i, n, 1.0f - t))
                << i << ' ' << n << ' ' << PrintInput(t);
        }
    }
}

TEST(CBezier, BernsteinPolynomialsOfADegreeSumToOne)
{
    CRandom random(4);
    for (int n = 0; n <= LastExactDegree; ++n)
    {
        const float t = random.Between(0.0f, 1.0f);
        float sum = 0.0f;
        for (int i = 0; i <= n; ++i)
            sum += CBezier::Bernstein(i, n, t);
        EXPECT_NEAR(sum, 1.0f, 2e-6f) << n << ' ' << PrintInput(t);
    }
}

TEST(CBezier, BernsteinFactorialBeyondThirtyTwoBitsWrapsAround)
{
    // 13! = 6227020800 = 4294967296 + 1932053504.
    EXPECT_FLOAT_EQ(CBezier::Bernstein(0, 13, 0.5f), std::pow(0.5f, 13.0f));
    EXPECT_FLOAT_EQ(
        CBezier::Bernstein(1, 13, 0.5f), 1932053504.0f / 479001600.0f * std::pow(0.5f, 13.0f));
}

TEST(CBezier, BernsteinOfALargeDegreeOverflowsNoSignedNumber)
{
    // A sanitizer build stops at an overflow. Up to 33 no factorial wraps around to 0, since none
    // has 32 factors of two.
    for (int n = LastExactDegree + 1; n <= 100; ++n)
    {
        for (int i = 0; i <= n; ++i)
        {
            const float value = CBezier::Bernstein(i, n, 0.5f);
            if (n <= 33)
            {
                EXPECT_TRUE(std::isfinite(value)) << i << ' ' << n;
            }
        }
    }
}

TEST(CBezier, BernsteinWithAFactorialThatWrapsAroundToZeroIsNotANumber)
{
    // 34! is the first with 32 factors of two: the coefficient becomes 0 / 0.
    EXPECT_TRUE(std::isnan(CBezier::Bernstein(0, 34, 0.5f)));
    EXPECT_TRUE(std::isnan(CBezier::Bernstein(34, 34, 0.5f)));
    EXPECT_TRUE(std::isnan(CBezier::Bernstein(0, IntMax, 0.5f)));
}

TEST(CBezier, BernsteinOfAnIndexFarFromTheDegreeOverflowsNoSignedNumber)
{
    // n - i does not fit into 32 bits, and one power of 0.5 is infinite.
    EXPECT_FALSE(std::isfinite(CBezier::Bernstein(IntMin, 0, 0.5f)));
}

TEST(CBezier, BernsteinTakesTheFactorialOfANegativeNumberAsOne)
{
    // 2! / (1 * 5!) * 0.5^-3 * 0.5^5, and the same with the powers exchanged.
    EXPECT_FLOAT_EQ(CBezier::Bernstein(-3, 2, 0.5f), 2.0f / 120.0f * 0.25f);
    EXPECT_FLOAT_EQ(CBezier::Bernstein(5, 2, 0.5f), 2.0f / 120.0f * 0.25f);
    EXPECT_FLOAT_EQ(CBezier::Bernstein(-2, -4, 0.5f), 16.0f);
}

TEST(CBezier, CurveStartsAtTheFirstPoint)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const Points points = CreatePoints(random);
        ASSERT_SAME_BITS(points[0], CBezier::CalcBezier(points, 0.0f)) << PrintCurve(points, 0.0f);
    }
}

TEST(CBezier, CurveEndsAtTheLastPoint)
{
    CRandom random(6);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const Points points = CreatePoints(random);
        ASSERT_SAME_BITS(points[3], CBezier::CalcBezier(points, 1.0f)) << PrintCurve(points, 1.0f);
    }
}

TEST(CBezier, CurveInTheMiddleWeighsThePointsOneThreeThreeOne)
{
    const Points points = {S2D(8.0f, 0.0f), S2D(0.0f, 8.0f), S2D(16.0f, 0.0f), S2D(0.0f, 16.0f)};
    EXPECT_SAME_BITS(S2D(7.0f, 5.0f), CBezier::CalcBezier(points, 0.5f));
}

TEST(CBezier, CurveParameterIsNotClamped)
{
    // On a straight line with evenly spaced points the curve runs at an even speed.
    const Points points = {S2D(0.0f, 0.0f), S2D(1.0f, 2.0f), S2D(2.0f, 4.0f), S2D(3.0f, 6.0f)};
    EXPECT_SAME_BITS(S2D(6.0f, 12.0f), CBezier::CalcBezier(points, 2.0f));
    EXPECT_SAME_BITS(S2D(-3.0f, -6.0f), CBezier::CalcBezier(points, -1.0f));
}

TEST(CBezier, CurveAddsTheWeightedPointsInOrderToTheBit)
{
    CRandom random(7);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const Points points = CreatePoints(random);
        // From -1 to 2 in steps of 1 / 64: all powers are exact, however they are computed.
        const float t = static_cast<float>(random.Below(193)) / 64.0f - 1.0f;
        S2D expected(0.0f, 0.0f);
        for (int k = 0; k < 4; ++k)
            expected += points[static_cast<std::size_t>(k)] * CBezier::Bernstein(k, 3, t);
        ASSERT_SAME_BITS(expected, CBezier::CalcBezier(points, t)) << PrintCurve(points, t);
    }
}

TEST(CBezier, CurveAgreesWithDeCasteljau)
{
    // A few units in the last place of each weighted point.
    constexpr double tolerance = 2e-6;
    CRandom random(8);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const Points points = CreatePoints(random);
        const float t = random.Between(-1.0f, 2.0f);
        double size = 0.0;
        for (int k = 0; k < 4; ++k)
            size += std::abs(BernsteinInDouble(k, 3, t)) *
                    ToDouble(points[static_cast<std::size_t>(k)]).norm();
        const Eigen::Vector2d error =
            ToDouble(CBezier::CalcBezier(points, t)) - DeCasteljau(points, t);
        ASSERT_LE(error.norm(), tolerance * size) << PrintCurve(points, t);
    }
}
