#include "Independent/Math3D/SPlane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <Eigen/Dense>
#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using namespace mathtest;

namespace
{

// What an output holds that must not have been written.
const S3D Untouched(-77.0f, 88.0f, -99.0f);

S3D CreateVector(CRandom& random, float limit)
{
    return random.Vector3Between(-limit, limit);
}

SPlane CreatePlane(CRandom& random)
{
    const S3D normal = CreateVector(random, 2.0f);
    return SPlane(normal.x, normal.y, normal.z, random.Between(-10.0f, 10.0f));
}

void ExpectPlane(const SPlane& plane, float a, float b, float c, float d)
{
    EXPECT_EQ(plane.a, a);
    EXPECT_EQ(plane.b, b);
    EXPECT_EQ(plane.c, c);
    EXPECT_EQ(plane.d, d);
}

S3D ToFloat(const Eigen::RowVector3d& vector)
{
    const Eigen::RowVector3f rounded = vector.cast<float>();
    return S3D(rounded[0], rounded[1], rounded[2]);
}

/// The line start + t * direction and its meeting with normal . p + d = 0 in double precision.
struct SMeeting
{
    double t;
    Eigen::RowVector3d point;

    // How far the rounding to single precision may move the point.
    double tolerance;

    // Whether the line runs so close to parallel that single precision cannot tell where they meet.
    bool isUnclear;

    SMeeting(
        const Eigen::RowVector3d& start,
        const Eigen::RowVector3d& direction,
        const Eigen::RowVector3d& normal,
        double d)
    {
        const double slope = normal.dot(direction);
        t = (-d - normal.dot(start)) / slope;
        point = start + direction * t;
        // A few roundings of each product and sum, on the way to t and from there.
        const double size = start.norm() + (direction * t).norm();
        const double errorOfT = 1e-6 * (normal.norm() * size + std::abs(d)) / std::abs(slope);
        tolerance = errorOfT * direction.norm() + 1e-6 * size;
        isUnclear = std::abs(slope) < 0.01 * normal.norm() * direction.norm();
    }
};

/// The barycentric coordinates, in double precision, of the foot of a point on a triangle's plane.
Eigen::RowVector3d CalcBarycentric(const S3D& p0, const S3D& p1, const S3D& p2, const S3D& point)
{
    const Eigen::RowVector3d edge1 = ToDouble(p1) - ToDouble(p0);
    const Eigen::RowVector3d edge2 = ToDouble(p2) - ToDouble(p0);
    Eigen::Matrix3d axes;
    axes << edge1, edge2, edge1.cross(edge2).normalized();
    const Eigen::Vector3d weights =
        axes.transpose().partialPivLu().solve((ToDouble(point) - ToDouble(p0)).transpose());
    return Eigen::RowVector3d(1.0 - weights[0] - weights[1], weights[0], weights[1]);
}

// The horizontal triangle (0, 0, 0), (0, 0, 4), (4, 0, 0), whose CalcNormal is +Y.
const S3D Corner0(0.0f, 0.0f, 0.0f);
const S3D Corner1(0.0f, 0.0f, 4.0f);
const S3D Corner2(4.0f, 0.0f, 0.0f);

bool IsInTriangle(const S3D& point)
{
    return SPlane::PointTriangleSide(Corner0, Corner1, Corner2, point, S3D(0.0f, 1.0f, 0.0f));
}

// The horizontal square of side 4 from the origin, whose CalcNormal is +Y.
bool IsInSquare(const S3D& point)
{
    return SPlane::PointPolygonSide(
        S3D(0.0f, 0.0f, 0.0f), S3D(0.0f, 0.0f, 4.0f), S3D(4.0f, 0.0f, 4.0f), S3D(4.0f, 0.0f, 0.0f),
        point, S3D(0.0f, 1.0f, 0.0f));
}

const SPlane Ground(0.0f, 1.0f, 0.0f, 0.0f);

} // namespace

// Construction

TEST(SPlane, IsFourFloatsInOrderWithoutVirtualTable)
{
    EXPECT_FALSE(std::is_polymorphic_v<SPlane>);
    EXPECT_TRUE(std::is_standard_layout_v<SPlane>);
    EXPECT_EQ(sizeof(SPlane), 4 * sizeof(float));
    EXPECT_EQ(offsetof(SPlane, a), 0 * sizeof(float));
    EXPECT_EQ(offsetof(SPlane, b), 1 * sizeof(float));
    EXPECT_EQ(offsetof(SPlane, c), 2 * sizeof(float));
    EXPECT_EQ(offsetof(SPlane, d), 3 * sizeof(float));
}

TEST(SPlane, DefaultIsAllZero)
{
    ExpectPlane(SPlane(), 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(SPlane, FourNumbersAreTheCoefficientsInOrder)
{
    ExpectPlane(SPlane(1.0f, 2.0f, 3.0f, 4.0f), 1.0f, 2.0f, 3.0f, 4.0f);
}

TEST(SPlane, PointAndNormalKeepTheLengthOfTheNormal)
{
    const S3D point(1.0f, 2.0f, 3.0f);
    ExpectPlane(SPlane(point, S3D(3.0f, 0.0f, -4.0f)), 3.0f, 0.0f, -4.0f, 9.0f);
}

TEST(SPlane, PointAndNormalGiveTheNegatedDotProductAsD)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D point = CreateVector(random, 10.0f);
        const S3D normal = CreateVector(random, 2.0f);
        const float d = -(normal.x * point.x + normal.y * point.y + normal.z * point.z);
        ASSERT_SAME_BITS(
            Coefficients(SPlane(normal.x, normal.y, normal.z, d)),
            Coefficients(SPlane(point, normal)))
            << PrintInput(point, normal);
    }
}

TEST(SPlane, ThreePointsGiveTheUnitNormalOfTheirOrder)
{
    const S3D p0(0.0f, 2.0f, 0.0f);
    const S3D p1(0.0f, 2.0f, 3.0f);
    const S3D p2(5.0f, 2.0f, 0.0f);
    ExpectPlane(SPlane(p0, p1, p2), 0.0f, 1.0f, 0.0f, -2.0f);
    ExpectPlane(SPlane(p0, p2, p1), 0.0f, -1.0f, 0.0f, 2.0f);
}

TEST(SPlane, ThreePointsGiveTheirCalcNormalAndTheFirstPointsD)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D p0 = CreateVector(random, 10.0f);
        const S3D p1 = CreateVector(random, 10.0f);
        const S3D p2 = CreateVector(random, 10.0f);
        const S3D normal = SPlane::CalcNormal(p0, p1, p2);
        const float d = -S3D::DotProduct(normal, p0);
        ASSERT_SAME_BITS(
            Coefficients(SPlane(normal.x, normal.y, normal.z, d)), Coefficients(SPlane(p0, p1, p2)))
            << PrintInput(p0, p1, p2);
    }
}

TEST(SPlane, ThreePointsOnALineGiveTheZeroPlane)
{
    const S3D point(1.0f, 1.0f, 1.0f);
    ExpectPlane(SPlane(point, point * 2.0f, point * 4.0f), 0.0f, 0.0f, 0.0f, 0.0f);
}

// CalcNormal

TEST(SPlane, CalcNormalOfClockwiseCornersPointsToTheViewer)
{
    EXPECT_TRUE(SPlane::CalcNormal(Corner0, Corner1, Corner2) == S3D(0.0f, 1.0f, 0.0f));
    EXPECT_TRUE(SPlane::CalcNormal(Corner0, Corner2, Corner1) == S3D(0.0f, -1.0f, 0.0f));
}

TEST(SPlane, CalcNormalMultipliesTheCrossProductByItsReciprocalLength)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D p0 = CreateVector(random, 10.0f);
        const S3D p1 = CreateVector(random, 10.0f);
        const S3D p2 = CreateVector(random, 10.0f);
        const S3D cross = S3D::CrossProduct(p1 - p0, p2 - p1);
        const float reciprocal = 1.0f / cross.Length();
        const S3D expected(cross.x * reciprocal, cross.y * reciprocal, cross.z * reciprocal);
        ASSERT_SAME_BITS(expected, SPlane::CalcNormal(p0, p1, p2)) << PrintInput(p0, p1, p2);
    }
}

TEST(SPlane, CalcNormalIsPerpendicularInDoublePrecision)
{
    CRandom random(4);
    int checked = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D p0 = CreateVector(random, 10.0f);
        const S3D p1 = CreateVector(random, 10.0f);
        const S3D p2 = CreateVector(random, 10.0f);
        const Eigen::RowVector3d edge1 = ToDouble(p1) - ToDouble(p0);
        const Eigen::RowVector3d edge2 = ToDouble(p2) - ToDouble(p1);
        const Eigen::RowVector3d cross = edge1.cross(edge2);
        // In a sliver the rounding of the edges turns the normal.
        if (cross.norm() < 0.05 * edge1.norm() * edge2.norm())
            continue;
        ASSERT_CLOSE(cross.normalized(), ToDouble(SPlane::CalcNormal(p0, p1, p2)), 2e-5)
            << PrintInput(p0, p1, p2);
        ++checked;
    }
    EXPECT_GT(checked, RandomCases * 9 / 10);
}

TEST(SPlane, CalcNormalOfPointsOnALineIsZero)
{
    const S3D zero;
    const S3D one(1.0f, 2.0f, 3.0f);
    EXPECT_TRUE(SPlane::CalcNormal(zero, one, one * 2.0f) == zero);
    EXPECT_TRUE(SPlane::CalcNormal(one, one, one) == zero);
    EXPECT_TRUE(SPlane::CalcNormal(zero, one, zero) == zero);
}

TEST(SPlane, CalcNormalOfACrossProductWhoseLengthUnderflowsIsZero)
{
    const S3D p1(1e-20f, 0.0f, 0.0f);
    const S3D p2(1e-20f, 1e-20f, 0.0f);
    ASSERT_NE(S3D::CrossProduct(p1, p2 - p1).z, 0.0f);
    EXPECT_TRUE(SPlane::CalcNormal(S3D(), p1, p2) == S3D());
}

// CalcIntersectSegment

TEST(SPlane, SegmentAcrossThePlaneMeetsIt)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectSegment(S3D(0.0f, -1.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), out);
}

TEST(SPlane, SegmentAwayFromThePlaneMissesAndLeavesOut)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectSegment(S3D(0.0f, 1.0f, 0.0f), S3D(0.0f, 2.0f, 0.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentThatEndsBeforeThePlaneMissesAndLeavesOut)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectSegment(S3D(0.0f, 3.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentJustShortOfThePlaneMisses)
{
    S3D out = Untouched;
    EXPECT_FALSE(
        Ground.CalcIntersectSegment(S3D(0.0f, 0x1p-22f, 0.0f), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_FALSE(
        Ground.CalcIntersectSegment(S3D(0.0f, -1.0f, 0.0f), S3D(0.0f, -0x1p-22f, 0.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentWithNaNMeetsInNaN)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectSegment(S3D(0.0f, NaN, 0.0f), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_TRUE(std::isnan(out.y));
}

TEST(SPlane, SegmentParallelToThePlaneMissesAndLeavesOut)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectSegment(S3D(0.0f, 1.0f, 0.0f), S3D(5.0f, 1.0f, 2.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentInThePlaneCountsAsParallel)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectSegment(S3D(0.0f, 0.0f, 0.0f), S3D(5.0f, 0.0f, 2.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentOfNoLengthMissesEvenOnThePlane)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectSegment(S3D(1.0f, 0.0f, 1.0f), S3D(1.0f, 0.0f, 1.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentEndingOnThePlaneMeetsItThere)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectSegment(S3D(1.0f, 2.0f, 3.0f), S3D(3.0f, 0.0f, 5.0f), out));
    EXPECT_SAME_BITS(S3D(3.0f, 0.0f, 5.0f), out);
}

TEST(SPlane, SegmentStartingOnThePlaneMeetsItThere)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectSegment(S3D(1.0f, 0.0f, 3.0f), S3D(3.0f, 2.0f, 5.0f), out));
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 3.0f), out);
}

TEST(SPlane, SegmentOfTheSmallestSlopeIsNotParallel)
{
    S3D out = Untouched;
    EXPECT_TRUE(
        Ground.CalcIntersectSegment(S3D(0.0f, -1e-30f, 0.0f), S3D(4.0f, 1e-30f, 0.0f), out));
    EXPECT_SAME_BITS(S3D(2.0f, 0.0f, 0.0f), out);
}

TEST(SPlane, SegmentUsesThePlanesD)
{
    const SPlane plane(0.0f, 2.0f, 0.0f, -6.0f); // y = 3
    S3D out = Untouched;
    EXPECT_TRUE(plane.CalcIntersectSegment(S3D(0.0f, 1.0f, 0.0f), S3D(4.0f, 5.0f, 0.0f), out));
    EXPECT_SAME_BITS(S3D(2.0f, 3.0f, 0.0f), out);
    out = Untouched;
    EXPECT_FALSE(plane.CalcIntersectSegment(S3D(0.0f, -1.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, SegmentFollowsItsFormulaToTheBit)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SPlane plane = CreatePlane(random);
        const S3D start = CreateVector(random, 10.0f);
        const S3D end = CreateVector(random, 10.0f);
        const S3D normal(plane.a, plane.b, plane.c);
        const S3D direction = end - start;
        const float slope = S3D::DotProduct(normal, direction);
        const float t = (-plane.d - S3D::DotProduct(normal, start)) / slope;
        const bool meets = slope != 0.0f && t >= 0.0f && t <= 1.0f;
        S3D out = Untouched;
        ASSERT_EQ(plane.CalcIntersectSegment(start, end, out), meets)
            << PrintInput(Coefficients(plane), start, end);
        ASSERT_SAME_BITS(meets ? start + direction * t : Untouched, out)
            << PrintInput(Coefficients(plane), start, end);
    }
}

TEST(SPlane, SegmentOnTheGridIsDecidedExactly)
{
    CRandom random(6);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D normal = random.GridVector(2);
        const int d = random.Whole(-3, 3);
        const SPlane plane(normal.x, normal.y, normal.z, static_cast<float>(d));
        const S3D start = random.GridVector(3);
        const S3D end = random.GridVector(3);
        // Whole numbers: the heights of both ends above the plane are exact. The segment meets the
        // plane when they differ and do not lie strictly on one side.
        const float startHeight = S3D::DotProduct(normal, start) + plane.d;
        const float endHeight = S3D::DotProduct(normal, end) + plane.d;
        const bool meets = startHeight != endHeight && startHeight * endHeight <= 0.0f;
        S3D out;
        ASSERT_EQ(plane.CalcIntersectSegment(start, end, out), meets)
            << PrintInput(Coefficients(plane), start, end);
        ++outcomes[meets ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 5);
    EXPECT_GT(outcomes[1], RandomCases / 5);
}

TEST(SPlane, SegmentAgreesWithDoublePrecision)
{
    CRandom random(7);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 2 * RandomCases; ++i)
    {
        const SPlane plane = CreatePlane(random);
        const S3D start = CreateVector(random, 10.0f);
        const S3D end = CreateVector(random, 10.0f);
        const SMeeting expected(
            ToDouble(start), ToDouble(end) - ToDouble(start),
            Eigen::RowVector3d(plane.a, plane.b, plane.c), plane.d);
        if (expected.isUnclear || std::abs(expected.t) < 1e-3 || std::abs(expected.t - 1.0) < 1e-3)
            continue;
        const bool meets = expected.t > 0.0 && expected.t < 1.0;
        S3D out = Untouched;
        ASSERT_EQ(plane.CalcIntersectSegment(start, end, out), meets)
            << PrintInput(Coefficients(plane), start, end);
        if (meets)
        {
            ASSERT_CLOSE(expected.point, ToDouble(out), expected.tolerance)
                << PrintInput(Coefficients(plane), start, end);
        }
        ++outcomes[meets ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 2);
    EXPECT_GT(outcomes[1], RandomCases / 2);
}

// CalcIntersectVector

TEST(SPlane, LineMeetsThePlaneAheadOfItsPoint)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectVector(S3D(1.0f, 6.0f, 0.0f), S3D(0.0f, -2.0f, 1.0f), out));
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 3.0f), out);
}

TEST(SPlane, LineMeetsThePlaneBehindItsPoint)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectVector(S3D(1.0f, 6.0f, 0.0f), S3D(0.0f, 2.0f, 1.0f), out));
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, -3.0f), out);
}

TEST(SPlane, LineParallelToThePlaneMissesAndLeavesOut)
{
    S3D out = Untouched;
    EXPECT_FALSE(Ground.CalcIntersectVector(S3D(1.0f, 6.0f, 0.0f), S3D(1.0f, 0.0f, 1.0f), out));
    EXPECT_FALSE(Ground.CalcIntersectVector(S3D(1.0f, 0.0f, 0.0f), S3D(1.0f, 0.0f, 1.0f), out));
    EXPECT_FALSE(Ground.CalcIntersectVector(S3D(1.0f, 6.0f, 0.0f), S3D(), out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, LineOfTheSmallestSlopeIsNotParallel)
{
    S3D out = Untouched;
    EXPECT_TRUE(Ground.CalcIntersectVector(S3D(0.0f, -1e-30f, 0.0f), S3D(1.0f, 1e-30f, 0.0f), out));
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 0.0f), out);
}

TEST(SPlane, LineFollowsItsFormulaToTheBit)
{
    CRandom random(8);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SPlane plane = CreatePlane(random);
        const S3D point = CreateVector(random, 10.0f);
        const S3D direction = CreateVector(random, 3.0f);
        const S3D normal(plane.a, plane.b, plane.c);
        const float t =
            (-plane.d - S3D::DotProduct(normal, point)) / S3D::DotProduct(normal, direction);
        S3D out = Untouched;
        ASSERT_TRUE(plane.CalcIntersectVector(point, direction, out))
            << PrintInput(Coefficients(plane), point, direction);
        ASSERT_SAME_BITS(point + direction * t, out)
            << PrintInput(Coefficients(plane), point, direction);
    }
}

TEST(SPlane, LineAgreesWithDoublePrecision)
{
    CRandom random(9);
    int checked = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const SPlane plane = CreatePlane(random);
        const S3D point = CreateVector(random, 10.0f);
        const S3D direction = CreateVector(random, 3.0f);
        const SMeeting expected(
            ToDouble(point), ToDouble(direction), Eigen::RowVector3d(plane.a, plane.b, plane.c),
            plane.d);
        if (expected.isUnclear)
            continue;
        S3D out = Untouched;
        ASSERT_TRUE(plane.CalcIntersectVector(point, direction, out));
        ASSERT_CLOSE(expected.point, ToDouble(out), expected.tolerance)
            << PrintInput(Coefficients(plane), point, direction);
        ++checked;
    }
    EXPECT_GT(checked, RandomCases * 9 / 10);
}

// TestFrontPos

TEST(SPlane, PointOnTheNormalsSideIsInFront)
{
    const SPlane plane(0.0f, 0.0f, 2.0f, -6.0f); // z = 3
    EXPECT_TRUE(plane.TestFrontPos(S3D(9.0f, 9.0f, 3.5f)));
    EXPECT_FALSE(plane.TestFrontPos(S3D(9.0f, 9.0f, 2.5f)));
}

TEST(SPlane, PointOnThePlaneIsInFront)
{
    EXPECT_TRUE(SPlane(0.0f, 0.0f, 2.0f, -6.0f).TestFrontPos(S3D(9.0f, 9.0f, 3.0f)));
    EXPECT_TRUE(Ground.TestFrontPos(S3D()));
    EXPECT_TRUE(SPlane().TestFrontPos(S3D(1.0f, 2.0f, 3.0f)));
}

TEST(SPlane, FrontIsDecidedByItsFormulaToTheBit)
{
    CRandom random(10);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        // Through the point but for rounding, so that the last bit decides.
        const S3D normal = CreateVector(random, 2.0f);
        const S3D point = CreateVector(random, 10.0f);
        const SPlane plane(
            normal.x, normal.y, normal.z,
            random.Between(-1e-6f, 1e-6f) - S3D::DotProduct(normal, point));
        const bool isFront =
            normal.x * point.x + normal.y * point.y + normal.z * point.z + plane.d >= 0.0f;
        ASSERT_EQ(plane.TestFrontPos(point), isFront) << PrintInput(Coefficients(plane), point);
        ++outcomes[isFront ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 20);
    EXPECT_GT(outcomes[1], RandomCases / 20);
}

// LinePolyCrossPoint

TEST(SPlane, LinePolyCrossPointMeetsAheadAndBehind)
{
    const S3D planePos(7.0f, 2.0f, 7.0f);
    const S3D up(0.0f, 3.0f, 0.0f);
    S3D out = Untouched;
    EXPECT_TRUE(SPlane::LinePolyCrossPoint(
        S3D(0.0f, 6.0f, 0.0f), S3D(1.0f, -2.0f, 0.0f), planePos, up, out));
    EXPECT_SAME_BITS(S3D(2.0f, 2.0f, 0.0f), out);
    EXPECT_TRUE(SPlane::LinePolyCrossPoint(
        S3D(0.0f, 6.0f, 0.0f), S3D(1.0f, 2.0f, 0.0f), planePos, up, out));
    EXPECT_SAME_BITS(S3D(-2.0f, 2.0f, 0.0f), out);
}

TEST(SPlane, LinePolyCrossPointOfAParallelLineMissesAndLeavesOut)
{
    const S3D up(0.0f, 3.0f, 0.0f);
    S3D out = Untouched;
    EXPECT_FALSE(
        SPlane::LinePolyCrossPoint(S3D(0.0f, 6.0f, 0.0f), S3D(1.0f, 0.0f, 4.0f), S3D(), up, out));
    EXPECT_FALSE(
        SPlane::LinePolyCrossPoint(S3D(0.0f, 0.0f, 0.0f), S3D(1.0f, 0.0f, 4.0f), S3D(), up, out));
    EXPECT_SAME_BITS(Untouched, out);
}

TEST(SPlane, LinePolyCrossPointOfTheSmallestSlopeIsNotParallel)
{
    S3D out = Untouched;
    EXPECT_TRUE(SPlane::LinePolyCrossPoint(
        S3D(0.0f, -1e-30f, 0.0f), S3D(1.0f, 1e-30f, 0.0f), S3D(), S3D(0.0f, 1.0f, 0.0f), out));
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 0.0f), out);
}

TEST(SPlane, LinePolyCrossPointFollowsItsFormulaToTheBit)
{
    CRandom random(11);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D linePos = CreateVector(random, 10.0f);
        const S3D lineDir = CreateVector(random, 3.0f);
        const S3D planePos = CreateVector(random, 10.0f);
        const S3D planeNormal = CreateVector(random, 2.0f);
        const float t = S3D::DotProduct(planePos - linePos, planeNormal) /
                        S3D::DotProduct(lineDir, planeNormal);
        S3D out = Untouched;
        ASSERT_TRUE(SPlane::LinePolyCrossPoint(linePos, lineDir, planePos, planeNormal, out))
            << PrintInput(linePos, lineDir, planePos, planeNormal);
        ASSERT_SAME_BITS(linePos + lineDir * t, out)
            << PrintInput(linePos, lineDir, planePos, planeNormal);
    }
}

TEST(SPlane, LinePolyCrossPointAgreesWithDoublePrecision)
{
    CRandom random(12);
    int checked = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D linePos = CreateVector(random, 10.0f);
        const S3D lineDir = CreateVector(random, 3.0f);
        const S3D planePos = CreateVector(random, 10.0f);
        const S3D planeNormal = CreateVector(random, 2.0f);
        const SMeeting expected(
            ToDouble(linePos), ToDouble(lineDir), ToDouble(planeNormal),
            -ToDouble(planeNormal).dot(ToDouble(planePos)));
        if (expected.isUnclear)
            continue;
        // The difference of the points is rounded too: as far as planePos may be away.
        const double tolerance =
            expected.tolerance + 2e-6 * ToDouble(planePos).norm() * ToDouble(planeNormal).norm() *
                                     ToDouble(lineDir).norm() /
                                     std::abs(ToDouble(planeNormal).dot(ToDouble(lineDir)));
        S3D out = Untouched;
        ASSERT_TRUE(SPlane::LinePolyCrossPoint(linePos, lineDir, planePos, planeNormal, out));
        ASSERT_CLOSE(expected.point, ToDouble(out), tolerance)
            << PrintInput(linePos, lineDir, planePos, planeNormal);
        ++checked;
    }
    EXPECT_GT(checked, RandomCases * 9 / 10);
}

// PointTriangleSide

TEST(SPlane, TriangleContainsAPointInside)
{
    EXPECT_TRUE(IsInTriangle(S3D(1.0f, 0.0f, 1.0f)));
}

TEST(SPlane, TriangleExcludesAPointBeyondEachEdge)
{
    EXPECT_FALSE(IsInTriangle(S3D(-0.1f, 0.0f, 2.0f)));
    EXPECT_FALSE(IsInTriangle(S3D(2.1f, 0.0f, 2.1f)));
    EXPECT_FALSE(IsInTriangle(S3D(2.0f, 0.0f, -0.1f)));
}

TEST(SPlane, TriangleContainsItsCorners)
{
    EXPECT_TRUE(IsInTriangle(Corner0));
    EXPECT_TRUE(IsInTriangle(Corner1));
    EXPECT_TRUE(IsInTriangle(Corner2));
}

TEST(SPlane, TriangleContainsItsEdges)
{
    EXPECT_TRUE(IsInTriangle(S3D(0.0f, 0.0f, 1.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(2.0f, 0.0f, 2.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(3.0f, 0.0f, 0.0f)));
}

TEST(SPlane, TriangleIsSeenAlongTheNormalWhateverTheHeight)
{
    EXPECT_TRUE(IsInTriangle(S3D(1.0f, 50.0f, 1.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(1.0f, -50.0f, 1.0f)));
    EXPECT_FALSE(IsInTriangle(S3D(3.0f, 50.0f, 3.0f)));
    EXPECT_FALSE(IsInTriangle(S3D(-0.001f, 1000.0f, 2.0f)));
}

TEST(SPlane, TriangleSeenFromBehindContainsNoInnerPoint)
{
    EXPECT_FALSE(SPlane::PointTriangleSide(
        Corner0, Corner1, Corner2, S3D(1.0f, 0.0f, 1.0f), S3D(0.0f, -1.0f, 0.0f)));
    EXPECT_FALSE(SPlane::PointTriangleSide(
        Corner0, Corner2, Corner1, S3D(1.0f, 0.0f, 1.0f), S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SPlane, TriangleOnTheGridIsDecidedExactly)
{
    CRandom random(13);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        std::array<S3D, 3> corners;
        for (S3D& corner : corners)
            corner = random.GridVector(4).GetXZOnly();
        const S3D point = random.GridVector(4).GetXZOnly();
        // Twice the area left of each edge, seen from above: exact in whole numbers.
        bool isInside = true;
        for (std::size_t edge = 0; edge < 3; ++edge)
        {
            const S3D& start = corners[edge];
            const S3D& end = corners[(edge + 1) % 3];
            isInside = isInside && (start.z - point.z) * (end.x - start.x) >=
                                       (start.x - point.x) * (end.z - start.z);
        }
        ASSERT_EQ(
            SPlane::PointTriangleSide(
                corners[0], corners[1], corners[2], point, S3D(0.0f, 1.0f, 0.0f)),
            isInside)
            << PrintInput(corners[0], corners[1], corners[2], point);
        ++outcomes[isInside ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 30);
    EXPECT_GT(outcomes[1], RandomCases / 30);
}

TEST(SPlane, TriangleAgreesWithBarycentricCoordinates)
{
    CRandom random(14);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 2 * RandomCases; ++i)
    {
        const S3D p0 = CreateVector(random, 10.0f);
        const S3D p1 = CreateVector(random, 10.0f);
        const S3D p2 = CreateVector(random, 10.0f);
        const Eigen::RowVector3d cross =
            (ToDouble(p1) - ToDouble(p0)).cross(ToDouble(p2) - ToDouble(p1));
        const double u = random.Between(-0.4f, 1.0f);
        const double v = random.Between(-0.4f, 1.0f);
        const S3D point = ToFloat(
            ToDouble(p0) * (1.0 - u - v) + ToDouble(p1) * u + ToDouble(p2) * v +
            cross.normalized() * random.Between(-1.0f, 1.0f));
        // Slivers, and points as close to an edge as rounding may carry them over it.
        const double smallest = CalcBarycentric(p0, p1, p2, point).minCoeff();
        if (cross.norm() < 5.0 || std::abs(smallest) < 1e-3)
            continue;
        ASSERT_EQ(
            SPlane::PointTriangleSide(p0, p1, p2, point, ToFloat(cross.normalized())),
            smallest > 0.0)
            << PrintInput(p0, p1, p2, point);
        ++outcomes[smallest > 0.0 ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 2);
    EXPECT_GT(outcomes[1], RandomCases / 2);
}

TEST(SPlane, TriangleTooSmallForANormalContainsEveryPointBesideIt)
{
    // The lengths of the edges' normals underflow, and so the normals are zero.
    const float edge = 1e-12f;
    const S3D p1(0.0f, 0.0f, edge);
    const S3D p2(edge, 0.0f, 0.0f);
    const S3D normal(0.0f, 1.0f, 0.0f);
    EXPECT_TRUE(SPlane::PointTriangleSide(S3D(), p1, p2, S3D(edge, 0.0f, edge), normal));
    EXPECT_TRUE(SPlane::PointTriangleSide(S3D(), p1, p2, S3D(-edge, 0.0f, -edge), normal));
    // Far from it they are not.
    EXPECT_FALSE(SPlane::PointTriangleSide(S3D(), p1, p2, S3D(1.0f, 0.0f, 1.0f), normal));
    EXPECT_FALSE(SPlane::PointTriangleSide(S3D(), p1, p2, S3D(-1.0f, 0.0f, -1.0f), normal));
}

// PointPolygonSide

TEST(SPlane, QuadrilateralContainsAPointInside)
{
    EXPECT_TRUE(IsInSquare(S3D(1.0f, 0.0f, 3.0f)));
    EXPECT_TRUE(IsInSquare(S3D(3.0f, 0.0f, 1.0f)));
}

TEST(SPlane, QuadrilateralContainsItsCornersAndEdges)
{
    EXPECT_TRUE(IsInSquare(S3D(0.0f, 0.0f, 0.0f)));
    EXPECT_TRUE(IsInSquare(S3D(0.0f, 0.0f, 4.0f)));
    EXPECT_TRUE(IsInSquare(S3D(4.0f, 0.0f, 4.0f)));
    EXPECT_TRUE(IsInSquare(S3D(4.0f, 0.0f, 0.0f)));
    EXPECT_TRUE(IsInSquare(S3D(0.0f, 0.0f, 1.0f)));
    EXPECT_TRUE(IsInSquare(S3D(1.0f, 0.0f, 4.0f)));
    EXPECT_TRUE(IsInSquare(S3D(4.0f, 0.0f, 1.0f)));
    EXPECT_TRUE(IsInSquare(S3D(1.0f, 0.0f, 0.0f)));
}

TEST(SPlane, QuadrilateralExcludesAPointBeyondEachEdge)
{
    EXPECT_FALSE(IsInSquare(S3D(-0.1f, 0.0f, 2.0f)));
    EXPECT_FALSE(IsInSquare(S3D(2.0f, 0.0f, 4.1f)));
    EXPECT_FALSE(IsInSquare(S3D(4.1f, 0.0f, 2.0f)));
    EXPECT_FALSE(IsInSquare(S3D(2.0f, 0.0f, -0.1f)));
}

TEST(SPlane, QuadrilateralExcludesAPointOutsideItsBoxThoughItIsInsideAlongTheNormal)
{
    // Above and below a flat box; the triangle of three of its corners contains both.
    EXPECT_FALSE(IsInSquare(S3D(1.0f, 0.001f, 1.0f)));
    EXPECT_FALSE(IsInSquare(S3D(1.0f, -0.001f, 1.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(1.0f, 0.001f, 1.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(1.0f, -0.001f, 1.0f)));
}

TEST(SPlane, QuadrilateralsBoxIsTestedOnEachAxisAndSide)
{
    // No normal, so that the edges exclude nothing and the box alone decides.
    const auto isInBox = [](float x, float y, float z)
    {
        return SPlane::PointPolygonSide(
            S3D(1.0f, 5.0f, 3.0f), S3D(2.0f, 6.0f, 4.0f), S3D(-1.0f, 7.0f, 9.0f),
            S3D(0.0f, 4.0f, 8.0f), S3D(x, y, z), S3D());
    };
    EXPECT_TRUE(isInBox(-1.0f, 4.0f, 3.0f));
    EXPECT_TRUE(isInBox(2.0f, 7.0f, 9.0f));
    EXPECT_FALSE(isInBox(-1.001f, 5.0f, 5.0f));
    EXPECT_FALSE(isInBox(2.001f, 5.0f, 5.0f));
    EXPECT_FALSE(isInBox(0.0f, 3.999f, 5.0f));
    EXPECT_FALSE(isInBox(0.0f, 7.001f, 5.0f));
    EXPECT_FALSE(isInBox(0.0f, 5.0f, 2.999f));
    EXPECT_FALSE(isInBox(0.0f, 5.0f, 9.001f));
}

TEST(SPlane, QuadrilateralsBoxTakesEveryCorner)
{
    // Each corner in turn is the only one that reaches to 5 or to -5.
    for (std::size_t far = 0; far < 4; ++far)
    {
        for (const float reach : {5.0f, -5.0f})
        {
            std::array<S3D, 4> corners;
            corners[far] = S3D(reach, reach, reach);
            const S3D point(reach * 0.5f, reach * 0.5f, reach * 0.5f);
            EXPECT_TRUE(SPlane::PointPolygonSide(
                corners[0], corners[1], corners[2], corners[3], point, S3D()))
                << far << ' ' << reach;
            EXPECT_FALSE(SPlane::PointPolygonSide(
                corners[0], corners[1], corners[2], corners[3], -point, S3D()))
                << far << ' ' << reach;
        }
    }
}

TEST(SPlane, QuadrilateralSeenFromBehindContainsNoInnerPoint)
{
    EXPECT_FALSE(SPlane::PointPolygonSide(
        S3D(0.0f, 0.0f, 0.0f), S3D(0.0f, 0.0f, 4.0f), S3D(4.0f, 0.0f, 4.0f), S3D(4.0f, 0.0f, 0.0f),
        S3D(1.0f, 0.0f, 1.0f), S3D(0.0f, -1.0f, 0.0f)));
}

TEST(SPlane, QuadrilateralExcludesAPointBeyondASlantedEdgeInsideTheBox)
{
    // A square on its corner: each corner of its box lies beyond another edge.
    for (const float x : {-0.9f, 0.9f})
    {
        for (const float z : {-0.9f, 0.9f})
            EXPECT_FALSE(SPlane::PointPolygonSide(
                S3D(-1.0f, 0.0f, 0.0f), S3D(0.0f, 0.0f, 1.0f), S3D(1.0f, 0.0f, 0.0f),
                S3D(0.0f, 0.0f, -1.0f), S3D(x, 0.0f, z), S3D(0.0f, 1.0f, 0.0f)))
                << x << ' ' << z;
    }
}

TEST(SPlane, QuadrilateralTooSmallForANormalContainsAllOfItsBox)
{
    // A square on its corner. The lengths of the edges' normals underflow.
    const float half = 1e-12f;
    const S3D p0(-half, 0.0f, 0.0f);
    const S3D p1(0.0f, 0.0f, half);
    const S3D p2(half, 0.0f, 0.0f);
    const S3D p3(0.0f, 0.0f, -half);
    const S3D normal(0.0f, 1.0f, 0.0f);
    for (const float x : {-half, half})
    {
        for (const float z : {-half, half})
        {
            EXPECT_TRUE(SPlane::PointPolygonSide(p0, p1, p2, p3, S3D(x, 0.0f, z), normal));
            EXPECT_FALSE(SPlane::PointPolygonSide(p0, p1, p2, p3, S3D(x, 0.0f, 2 * z), normal));
        }
    }
}

TEST(SPlane, QuadrilateralsBoxExcludesAPointWithNaN)
{
    // No normal, so that the edges exclude nothing and the box alone decides.
    for (const S3D& point :
         {S3D(NaN, 0.0f, 1.0f), S3D(1.0f, NaN, 1.0f), S3D(1.0f, 0.0f, NaN), S3D(NaN, NaN, NaN)})
        EXPECT_FALSE(SPlane::PointPolygonSide(
            S3D(0.0f, 0.0f, 0.0f), S3D(0.0f, 0.0f, 4.0f), S3D(4.0f, 0.0f, 4.0f),
            S3D(4.0f, 0.0f, 0.0f), point, S3D()))
            << PrintInput(point);
}

TEST(SPlane, ConvexQuadrilateralAgreesWithBarycentricCoordinates)
{
    CRandom random(15);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 2 * RandomCases; ++i)
    {
        // Four corners on a circle in a random plane, in the order of their angles.
        const Eigen::RowVector3d normal = ToDouble(CreateVector(random, 1.0f)).normalized();
        const Eigen::RowVector3d axis1 = normal.unitOrthogonal();
        const Eigen::RowVector3d axis2 = normal.cross(axis1);
        const Eigen::RowVector3d center = ToDouble(CreateVector(random, 10.0f));
        const double radius = random.Between(1.0f, 5.0f);
        std::array<S3D, 4> corners;
        double angle = 0.0;
        for (S3D& corner : corners)
        {
            corner = ToFloat(center + (axis1 * std::cos(angle) + axis2 * std::sin(angle)) * radius);
            angle += random.Between(0.3f, 2.0f);
        }
        const double u = random.Between(-1.0f, 1.0f);
        const double v = random.Between(-1.0f, 1.0f);
        const double height = i % 2 == 0 ? 0.0 : random.Between(-0.3f, 0.3f);
        const S3D point = ToFloat(center + (axis1 * u + axis2 * v + normal * height) * radius);

        // The box of the corners, and the two triangles that the diagonal makes.
        Eigen::AlignedBox3d box;
        for (const S3D& corner : corners)
            box.extend(ToDouble(corner).transpose());
        const Eigen::Vector3d p = ToDouble(point).transpose();
        const double inBox = std::min((p - box.min()).minCoeff(), (box.max() - p).minCoeff());
        const double inTriangles = std::max(
            CalcBarycentric(corners[0], corners[1], corners[2], point).minCoeff(),
            CalcBarycentric(corners[0], corners[2], corners[3], point).minCoeff());
        if (std::abs(inBox) < 1e-3 || std::abs(inTriangles) < 1e-3)
            continue;
        const bool isInside = inBox > 0.0 && inTriangles > 0.0;
        ASSERT_EQ(
            SPlane::PointPolygonSide(
                corners[0], corners[1], corners[2], corners[3], point, ToFloat(normal)),
            isInside)
            << PrintInput(corners[0], corners[1], corners[2], corners[3], point, ToFloat(normal));
        ++outcomes[isInside ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 2);
    EXPECT_GT(outcomes[1], RandomCases / 2);
}

// PointPolySide, CalcDistance, CalcHeight

TEST(SPlane, PointPolySideIsTrueInFrontAndOnThePlane)
{
    const S3D planePos(0.0f, 2.0f, 0.0f);
    const S3D up(0.0f, 3.0f, 0.0f);
    EXPECT_TRUE(SPlane::PointPolySide(S3D(5.0f, 2.5f, 5.0f), planePos, up));
    EXPECT_TRUE(SPlane::PointPolySide(S3D(5.0f, 2.0f, 5.0f), planePos, up));
    EXPECT_FALSE(SPlane::PointPolySide(S3D(5.0f, 1.5f, 5.0f), planePos, up));
    EXPECT_FALSE(SPlane::PointPolySide(S3D(5.0f, std::nextafter(2.0f, 0.0f), 5.0f), planePos, up));
}

TEST(SPlane, PointWithNaNIsNotInFrontButInTheTriangle)
{
    const S3D point(0.0f, NaN, 0.0f);
    EXPECT_FALSE(Ground.TestFrontPos(point));
    EXPECT_FALSE(SPlane::PointPolySide(point, S3D(), S3D(0.0f, 1.0f, 0.0f)));
    EXPECT_TRUE(IsInTriangle(S3D(NaN, NaN, NaN)));
}

TEST(SPlane, CalcHeightIsSigned)
{
    const S3D planePos(9.0f, 2.0f, 9.0f);
    const S3D up(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(SPlane::CalcHeight(S3D(5.0f, 5.0f, 5.0f), planePos, up), 3.0f);
    EXPECT_EQ(SPlane::CalcHeight(S3D(5.0f, -5.0f, 5.0f), planePos, up), -7.0f);
    EXPECT_EQ(SPlane::CalcHeight(S3D(5.0f, 2.0f, 5.0f), planePos, up), 0.0f);
}

TEST(SPlane, CalcDistanceIsTheAbsoluteHeight)
{
    const S3D planePos(9.0f, 2.0f, 9.0f);
    const S3D up(0.0f, 1.0f, 0.0f);
    EXPECT_EQ(SPlane::CalcDistance(S3D(5.0f, 5.0f, 5.0f), planePos, up), 3.0f);
    EXPECT_EQ(SPlane::CalcDistance(S3D(5.0f, -5.0f, 5.0f), planePos, up), 7.0f);
    EXPECT_EQ(SPlane::CalcDistance(S3D(5.0f, 2.0f, 5.0f), planePos, up), 0.0f);
}

TEST(SPlane, HeightAndDistanceGrowWithTheLengthOfTheNormal)
{
    const S3D down(0.0f, -2.0f, 0.0f);
    EXPECT_EQ(SPlane::CalcHeight(S3D(0.0f, 3.0f, 0.0f), S3D(), down), -6.0f);
    EXPECT_EQ(SPlane::CalcDistance(S3D(0.0f, 3.0f, 0.0f), S3D(), down), 6.0f);
}

TEST(SPlane, SideHeightAndDistanceFollowTheirFormulaToTheBit)
{
    CRandom random(16);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D point = CreateVector(random, 10.0f);
        const S3D planePos = CreateVector(random, 10.0f);
        const S3D normal = CreateVector(random, 1.0f);
        const S3D offset(point.x - planePos.x, point.y - planePos.y, point.z - planePos.z);
        const float height = offset.x * normal.x + offset.y * normal.y + offset.z * normal.z;
        ASSERT_EQ(SPlane::CalcHeight(point, planePos, normal), height)
            << PrintInput(point, planePos, normal);
        ASSERT_EQ(SPlane::CalcDistance(point, planePos, normal), std::abs(height))
            << PrintInput(point, planePos, normal);
        ASSERT_EQ(SPlane::PointPolySide(point, planePos, normal), height >= 0.0f)
            << PrintInput(point, planePos, normal);
    }
}

// CalcCenterGravity

TEST(SPlane, CalcCenterGravityGivesTheWeightsOfTheThreeVectors)
{
    float u = 0.0f;
    float v = 0.0f;
    float w = 0.0f;
    SPlane::CalcCenterGravity(
        S3D(2.0f, 0.0f, 0.0f), S3D(0.0f, 4.0f, 0.0f), S3D(0.0f, 0.0f, 8.0f), S3D(1.0f, 1.0f, 1.0f),
        u, v, w);
    EXPECT_EQ(u, 0.5f);
    EXPECT_EQ(v, 0.25f);
    EXPECT_EQ(w, 0.125f);
}

TEST(SPlane, CalcCenterGravityOfAPointInTheTriangleSumsToOne)
{
    const S3D a(1.0f, 0.0f, 5.0f);
    const S3D b(0.0f, 1.0f, 5.0f);
    const S3D c(-1.0f, -1.0f, 5.0f);
    float u = 0.0f;
    float v = 0.0f;
    float w = 0.0f;
    SPlane::CalcCenterGravity(a, b, c, a * 0.5f + b * 0.25f + c * 0.25f, u, v, w);
    EXPECT_FLOAT_EQ(u, 0.5f);
    EXPECT_FLOAT_EQ(v, 0.25f);
    EXPECT_FLOAT_EQ(w, 0.25f);
}

TEST(SPlane, CalcCenterGravityFollowsCramersRuleToTheBit)
{
    CRandom random(17);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = CreateVector(random, 10.0f);
        const S3D b = CreateVector(random, 10.0f);
        const S3D c = CreateVector(random, 10.0f);
        const S3D p = CreateVector(random, 10.0f);
        const S3D bc = S3D::CrossProduct(b, c);
        const S3D ca = S3D::CrossProduct(c, a);
        const S3D ab = S3D::CrossProduct(a, b);
        const float k = 1.0f / S3D::DotProduct(a, bc);
        float u = 0.0f;
        float v = 0.0f;
        float w = 0.0f;
        SPlane::CalcCenterGravity(a, b, c, p, u, v, w);
        ASSERT_EQ(u, k * S3D::DotProduct(bc, p)) << PrintInput(a, b, c, p);
        ASSERT_EQ(v, k * S3D::DotProduct(ca, p)) << PrintInput(a, b, c, p);
        ASSERT_EQ(w, k * S3D::DotProduct(ab, p)) << PrintInput(a, b, c, p);
    }
}

TEST(SPlane, CalcCenterGravityMayWriteToTheComponentsOfItsInputs)
{
    const S3D a(2.0f, 1.0f, 0.5f);
    const S3D b(0.0f, 4.0f, 1.0f);
    const S3D c(3.0f, 0.0f, 8.0f);
    const S3D p(1.0f, 1.5f, 2.5f);
    S3D expected;
    SPlane::CalcCenterGravity(a, b, c, p, expected.x, expected.y, expected.z);
    for (std::size_t input = 0; input < 4; ++input)
    {
        std::array<S3D, 4> inputs = {a, b, c, p};
        S3D& out = inputs[input];
        SPlane::CalcCenterGravity(inputs[0], inputs[1], inputs[2], inputs[3], out.x, out.y, out.z);
        EXPECT_SAME_BITS(expected, out) << input;
    }
}

TEST(SPlane, CalcCenterGravityAgreesWithAnLUSolution)
{
    CRandom random(18);
    int checked = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D a = CreateVector(random, 10.0f);
        const S3D b = CreateVector(random, 10.0f);
        const S3D c = CreateVector(random, 10.0f);
        const S3D p = CreateVector(random, 10.0f);
        Eigen::Matrix3d rows;
        rows << ToDouble(a), ToDouble(b), ToDouble(c);
        // The volume of the box that they span, with edges of length 1. Close to 0 they are nearly
        // in one plane with the origin, and rounding grows without bound.
        const double lengths = ToDouble(a).norm() * ToDouble(b).norm() * ToDouble(c).norm();
        const double volume = std::abs(rows.determinant()) / lengths;
        if (volume < 0.05)
            continue;
        const Eigen::RowVector3d expected =
            rows.transpose().partialPivLu().solve(ToDouble(p).transpose()).transpose();
        S3D weights;
        SPlane::CalcCenterGravity(a, b, c, p, weights.x, weights.y, weights.z);
        const double shortest = std::min({a.Length(), b.Length(), c.Length()});
        const double tolerance = 2e-6 * (ToDouble(p).norm() / shortest + expected.norm()) / volume;
        ASSERT_CLOSE(expected, ToDouble(weights), tolerance) << PrintInput(a, b, c, p);
        ++checked;
    }
    EXPECT_GT(checked, RandomCases * 8 / 10);
}

TEST(SPlane, CalcCenterGravityOfVectorsInOnePlaneIsInfinite)
{
    float u = 0.0f;
    float v = 0.0f;
    float w = 0.0f;
    SPlane::CalcCenterGravity(
        S3D(1.0f, 0.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f), S3D(1.0f, 1.0f, 0.0f), S3D(0.0f, 0.0f, 1.0f),
        u, v, w);
    EXPECT_TRUE(std::isinf(u)) << u;
    EXPECT_TRUE(std::isinf(v)) << v;
    EXPECT_TRUE(std::isinf(w)) << w;
}

// CalcMirrorVector

TEST(SPlane, CalcMirrorVectorReflectsAndNormalises)
{
    const float half = 1.0f / std::sqrt(2.0f);
    const S3D mirrored = SPlane::CalcMirrorVector(S3D(5.0f, -5.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f));
    EXPECT_FLOAT_EQ(mirrored.x, half);
    EXPECT_FLOAT_EQ(mirrored.y, half);
    EXPECT_EQ(mirrored.z, 0.0f);
    EXPECT_SAME_BITS(
        S3D(0.0f, 1.0f, 0.0f),
        SPlane::CalcMirrorVector(S3D(0.0f, -4.0f, 0.0f), S3D(0.0f, 1.0f, 0.0f)));
    EXPECT_SAME_BITS(
        S3D(0.0f, 0.0f, 1.0f),
        SPlane::CalcMirrorVector(S3D(0.0f, 0.0f, 4.0f), S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SPlane, CalcMirrorVectorOfTheZeroVectorIsZero)
{
    EXPECT_SAME_BITS(S3D(), SPlane::CalcMirrorVector(S3D(), S3D(0.0f, 1.0f, 0.0f)));
}

TEST(SPlane, CalcMirrorVectorTakesTheNormalAsItIs)
{
    // (3, 1, 0) - 2 * 2 * (0, 2, 0) = (3, -7, 0); a normal of length 1 would give (3, -1, 0).
    EXPECT_SAME_BITS(
        S3D(3.0f, -7.0f, 0.0f).GetNormalize(),
        SPlane::CalcMirrorVector(S3D(3.0f, 1.0f, 0.0f), S3D(0.0f, 2.0f, 0.0f)));
}

TEST(SPlane, CalcMirrorVectorFollowsItsFormulaToTheBit)
{
    CRandom random(19);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = CreateVector(random, 10.0f);
        const S3D normal = CreateVector(random, 1.0f).GetNormalize();
        const float twice = 2.0f * S3D::DotProduct(normal, vector);
        const S3D expected = (vector - normal * twice).GetNormalize();
        ASSERT_SAME_BITS(expected, SPlane::CalcMirrorVector(vector, normal))
            << PrintInput(vector, normal);
    }
}

TEST(SPlane, CalcMirrorVectorAgreesWithTheReflectionMatrix)
{
    CRandom random(20);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D vector = CreateVector(random, 10.0f);
        const S3D normal = CreateVector(random, 1.0f).GetNormalize();
        const Eigen::RowVector3d n = ToDouble(normal).normalized();
        const Eigen::Matrix3d reflection = Eigen::Matrix3d::Identity() - 2.0 * n.transpose() * n;
        ASSERT_CLOSE(
            (ToDouble(vector) * reflection).normalized(),
            ToDouble(SPlane::CalcMirrorVector(vector, normal)), 2e-6)
            << PrintInput(vector, normal);
    }
}
