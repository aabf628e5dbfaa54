#include "Independent/Math3D/CBoundingBox.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

using math3d::CBoundingBox;
using namespace mathtest;

namespace
{

constexpr float Largest = 3.4028235e38f;
using Six = std::array<float, 6>;

Six Limits(const CBoundingBox& box)
{
    return {box.GetMinX(), box.GetMaxX(), box.GetMinY(),
            box.GetMaxY(), box.GetMinZ(), box.GetMaxZ()};
}

const Six EmptyLimits = {Largest, -Largest, Largest, -Largest, Largest, -Largest};

CBoundingBox BoxOf(const std::vector<S3D>& points)
{
    CBoundingBox box;
    for (const S3D& point : points)
        box.Insert(point);
    return box;
}

/// 1 to 20 points somewhere in space: all coordinates may have one sign.
std::vector<S3D> CreatePointList(CRandom& random)
{
    const S3D offset = random.Vector3Between(-100.0f, 100.0f);
    std::vector<S3D> points(1 + random.Below(20));
    for (S3D& point : points)
        point = offset + random.Vector3Between(-50.0f, 50.0f);
    return points;
}

/// The points of a failing case.
std::string PrintPoints(const std::vector<S3D>& points)
{
    std::string text;
    for (const S3D& point : points)
        text += PrintInput(point);
    return text;
}

Six BruteForceLimits(const std::vector<S3D>& points)
{
    std::array<std::vector<float>, 3> axes;
    for (const S3D& point : points)
    {
        axes[0].push_back(point.x);
        axes[1].push_back(point.y);
        axes[2].push_back(point.z);
    }
    Six limits;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        std::sort(axes[axis].begin(), axes[axis].end());
        limits[2 * axis] = axes[axis].front();
        limits[2 * axis + 1] = axes[axis].back();
    }
    return limits;
}

// x from -1 to 2, y from 4 to 8, z from -30 to -20.
const CBoundingBox Sample = BoxOf({S3D(2.0f, 4.0f, -20.0f), S3D(-1.0f, 8.0f, -30.0f)});

} // namespace

TEST(CBoundingBox, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CBoundingBox>);
}

TEST(CBoundingBox, NewBoxHasTheExtremeFloatsTheWrongWayRound)
{
    EXPECT_EQ(Largest, std::numeric_limits<float>::max());
    EXPECT_EQ(Limits(CBoundingBox()), EmptyLimits);
}

TEST(CBoundingBox, NewBoxHasSizeOfMinusInfinity)
{
    const CBoundingBox box;
    EXPECT_SAME_BITS(S3D(-Infinity, -Infinity, -Infinity), box.GetSize());
    EXPECT_EQ(box.GetMaxLength(), -Infinity);
    EXPECT_EQ(box.GetRadius(), Infinity);
    EXPECT_SAME_BITS(S3D(), box.GetCenter());
}

TEST(CBoundingBox, NewBoxContainsNoPoint)
{
    const CBoundingBox box;
    for (const float x : {0.0f, 1.0f, -1.0f, Largest, -Largest, Infinity, -Infinity})
        EXPECT_FALSE(box.IsIn(S3D(x, x, x))) << x;
}

TEST(CBoundingBox, CoordinateNaNChangesNothingOnItsAxis)
{
    CBoundingBox box = Sample;
    box.Insert(S3D(NaN, 9.0f, NaN));
    EXPECT_EQ(Limits(box), (Six{-1.0f, 2.0f, 4.0f, 9.0f, -30.0f, -20.0f}));
}

TEST(CBoundingBox, ClearMakesAFilledBoxNew)
{
    CBoundingBox box = Sample;
    box.Clear();
    EXPECT_EQ(Limits(box), EmptyLimits);
}

TEST(CBoundingBox, AccessorsGiveEachLimit)
{
    EXPECT_EQ(Sample.GetMinX(), -1.0f);
    EXPECT_EQ(Sample.GetMaxX(), 2.0f);
    EXPECT_EQ(Sample.GetMinY(), 4.0f);
    EXPECT_EQ(Sample.GetMaxY(), 8.0f);
    EXPECT_EQ(Sample.GetMinZ(), -30.0f);
    EXPECT_EQ(Sample.GetMaxZ(), -20.0f);
}

TEST(CBoundingBox, FirstPointSetsAllSixLimits)
{
    const CBoundingBox box = BoxOf({S3D(1.0f, 2.0f, 3.0f)});
    EXPECT_EQ(Limits(box), (Six{1.0f, 1.0f, 2.0f, 2.0f, 3.0f, 3.0f}));
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), box.GetSize());
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), box.GetCenter());
    EXPECT_TRUE(box.IsIn(S3D(1.0f, 2.0f, 3.0f)));
}

TEST(CBoundingBox, PointInsideTheBoxChangesNothing)
{
    CBoundingBox box = Sample;
    box.Insert(S3D(0.0f, 5.0f, -25.0f));
    EXPECT_EQ(Limits(box), Limits(Sample));
}

TEST(CBoundingBox, InsertedPointsGiveTheirLimits)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases / 10; ++i)
    {
        const std::vector<S3D> points = CreatePointList(random);
        ASSERT_EQ(Limits(BoxOf(points)), BruteForceLimits(points)) << PrintPoints(points);
    }
}

TEST(CBoundingBox, SphereWidensAnEmptyBoxToItsCube)
{
    CBoundingBox box;
    box.InsertSphere(S3D(1.0f, 2.0f, 3.0f), 0.5f);
    EXPECT_EQ(Limits(box), (Six{0.5f, 1.5f, 1.5f, 2.5f, 2.5f, 3.5f}));
}

TEST(CBoundingBox, SphereInsideTheBoxChangesNothing)
{
    CBoundingBox box = Sample;
    box.InsertSphere(S3D(0.0f, 6.0f, -25.0f), 1.0f);
    EXPECT_EQ(Limits(box), Limits(Sample));
}

TEST(CBoundingBox, InsertedSpheresGiveTheLimitsOfTheirCubes)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases / 10; ++i)
    {
        CBoundingBox box;
        std::vector<S3D> corners;
        for (const S3D& center : CreatePointList(random))
        {
            const float radius = random.Between(0.0f, 60.0f);
            box.InsertSphere(center, radius);
            corners.push_back(center - S3D(radius, radius, radius));
            corners.push_back(center + S3D(radius, radius, radius));
        }
        ASSERT_EQ(Limits(box), BruteForceLimits(corners)) << PrintPoints(corners);
    }
}

TEST(CBoundingBox, BoxInsertedIntoAnEmptyOneIsCopied)
{
    CBoundingBox box;
    box.InsertBoundingBox(Sample);
    EXPECT_EQ(Limits(box), Limits(Sample));
}

TEST(CBoundingBox, EmptyBoxInsertedChangesNothing)
{
    CBoundingBox box = Sample;
    box.InsertBoundingBox(CBoundingBox());
    EXPECT_EQ(Limits(box), Limits(Sample));

    CBoundingBox empty;
    empty.InsertBoundingBox(CBoundingBox());
    EXPECT_EQ(Limits(empty), EmptyLimits);
}

TEST(CBoundingBox, InsertedBoxGivesTheLimitsOfBoth)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases / 10; ++i)
    {
        std::vector<S3D> points = CreatePointList(random);
        const std::vector<S3D> others = CreatePointList(random);
        CBoundingBox box = BoxOf(points);
        box.InsertBoundingBox(BoxOf(others));
        points.insert(points.end(), others.begin(), others.end());
        ASSERT_EQ(Limits(box), BruteForceLimits(points)) << PrintPoints(points);
    }
}

TEST(CBoundingBox, CenterIsTheMiddleOfEachAxis)
{
    EXPECT_SAME_BITS(S3D(0.5f, 6.0f, -25.0f), Sample.GetCenter());
}

TEST(CBoundingBox, CenterAddsBeforeItHalves)
{
    // The sum of the limits overflows, though the middle itself would not.
    const CBoundingBox box = BoxOf({S3D(3e38f, -3e38f, 1.0f), S3D(2e38f, -2e38f, 2.0f)});
    EXPECT_SAME_BITS(S3D(Infinity, -Infinity, 1.5f), box.GetCenter());
}

TEST(CBoundingBox, SizeIsTheLengthOfEachAxis)
{
    EXPECT_SAME_BITS(S3D(3.0f, 4.0f, 10.0f), Sample.GetSize());
}

TEST(CBoundingBox, MaxLengthIsTheLargestSizeWhicheverTheAxis)
{
    EXPECT_EQ(BoxOf({S3D(), S3D(3.0f, 2.0f, 1.0f)}).GetMaxLength(), 3.0f);
    EXPECT_EQ(BoxOf({S3D(), S3D(3.0f, 1.0f, 2.0f)}).GetMaxLength(), 3.0f);
    EXPECT_EQ(BoxOf({S3D(), S3D(2.0f, 3.0f, 1.0f)}).GetMaxLength(), 3.0f);
    EXPECT_EQ(BoxOf({S3D(), S3D(1.0f, 3.0f, 2.0f)}).GetMaxLength(), 3.0f);
    EXPECT_EQ(BoxOf({S3D(), S3D(2.0f, 1.0f, 3.0f)}).GetMaxLength(), 3.0f);
    EXPECT_EQ(BoxOf({S3D(), S3D(1.0f, 2.0f, 3.0f)}).GetMaxLength(), 3.0f);
}

TEST(CBoundingBox, RadiusIsHalfTheDiagonal)
{
    EXPECT_EQ(BoxOf({S3D(), S3D(2.0f, 3.0f, 6.0f)}).GetRadius(), 3.5f);
}

TEST(CBoundingBox, SizesFollowTheirFormulasToTheBit)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases / 10; ++i)
    {
        const std::vector<S3D> points = CreatePointList(random);
        const CBoundingBox box = BoxOf(points);
        const auto [minX, maxX, minY, maxY, minZ, maxZ] = BruteForceLimits(points);
        const S3D size(maxX - minX, maxY - minY, maxZ - minZ);
        const S3D center((minX + maxX) * 0.5f, (minY + maxY) * 0.5f, (minZ + maxZ) * 0.5f);
        ASSERT_SAME_BITS(size, box.GetSize()) << PrintPoints(points);
        ASSERT_SAME_BITS(center, box.GetCenter()) << PrintPoints(points);
        ASSERT_EQ(std::max({size.x, size.y, size.z}), box.GetMaxLength()) << PrintPoints(points);
        ASSERT_EQ(size.Length() * 0.5f, box.GetRadius()) << PrintPoints(points);
    }
}

TEST(CBoundingBox, IsInIncludesEachLimit)
{
    for (const float x : {-1.0f, 2.0f})
    {
        for (const float y : {4.0f, 8.0f})
        {
            for (const float z : {-30.0f, -20.0f})
                EXPECT_TRUE(Sample.IsIn(S3D(x, y, z))) << x << ' ' << y << ' ' << z;
        }
    }
}

TEST(CBoundingBox, IsInExcludesThePointBehindEachLimit)
{
    EXPECT_TRUE(Sample.IsIn(S3D(0.0f, 6.0f, -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(std::nextafter(-1.0f, -9.0f), 6.0f, -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(std::nextafter(2.0f, 9.0f), 6.0f, -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, std::nextafter(4.0f, 0.0f), -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, std::nextafter(8.0f, 9.0f), -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, 6.0f, std::nextafter(-30.0f, -99.0f))));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, 6.0f, std::nextafter(-20.0f, 0.0f))));
}

TEST(CBoundingBox, IsInExcludesWhatIsNoNumber)
{
    EXPECT_FALSE(Sample.IsIn(S3D(NaN, 6.0f, -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, NaN, -25.0f)));
    EXPECT_FALSE(Sample.IsIn(S3D(0.0f, 6.0f, NaN)));
}

TEST(CBoundingBox, IsInAgreesWithTheComparisonOfEveryPoint)
{
    CRandom random(5);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases / 10; ++i)
    {
        const std::vector<S3D> points = CreatePointList(random);
        const CBoundingBox box = BoxOf(points);
        for (const S3D& point : points)
            ASSERT_TRUE(box.IsIn(point)) << PrintPoints(points);

        const S3D other = points.front() + random.Vector3Between(-60.0f, 60.0f);
        std::vector<S3D> all = points;
        all.push_back(other);
        // Inside is what does not move a limit.
        const bool isInside = BruteForceLimits(all) == BruteForceLimits(points);
        ASSERT_EQ(box.IsIn(other), isInside) << PrintPoints(all);
        ++outcomes[isInside ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], 200);
    EXPECT_GT(outcomes[1], 200);
}
