#include "Independent/Math3D/CSphere.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using math3d::CSphere;
using namespace mathtest;

namespace
{

/// A sphere and a ray.
struct SCase
{
    S3D pos;
    float radius;
    S3D origin;
    S3D direction;

    bool IsCollision() const { return CSphere(pos, radius).IsCollision(origin, direction); }

    std::string Print() const { return PrintInput(pos, radius, origin, direction); }
};

S3D CreatePoint(CRandom& random)
{
    return random.Vector3Between(-10.0f, 10.0f);
}

const CSphere UnitSphere(S3D(0.0f, 0.0f, 0.0f), 1.0f);
const S3D Forward(0.0f, 0.0f, 1.0f);
const S3D Backward(0.0f, 0.0f, -1.0f);

} // namespace

TEST(CSphere, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CSphere>);
}

TEST(CSphere, DefaultIsThePointAtTheOrigin)
{
    const CSphere sphere;
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), sphere.GetPos());
    EXPECT_EQ(sphere.GetRadius(), 0.0f);
}

TEST(CSphere, ConstructorKeepsPositionAndRadius)
{
    const CSphere sphere(S3D(1.0f, 2.0f, 3.0f), 4.0f);
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), sphere.GetPos());
    EXPECT_EQ(sphere.GetRadius(), 4.0f);
}

TEST(CSphere, SetReplacesPositionAndRadius)
{
    CSphere sphere(S3D(1.0f, 2.0f, 3.0f), 4.0f);
    sphere.Set(S3D(5.0f, 6.0f, 7.0f), 8.0f);
    EXPECT_SAME_BITS(S3D(5.0f, 6.0f, 7.0f), sphere.GetPos());
    EXPECT_EQ(sphere.GetRadius(), 8.0f);
}

TEST(CSphere, RayTowardTheSphereCollides)
{
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, -5.0f), Forward));
}

TEST(CSphere, RayAwayFromTheSphereDoesNotCollide)
{
    EXPECT_FALSE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, -5.0f), Backward));
    EXPECT_FALSE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, std::nextafter(1.0f, 2.0f)), Forward));
}

TEST(CSphere, RayWithNaNCollides)
{
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(NaN, 0.0f, 0.0f), Forward));
}

TEST(CSphere, RayFromTheCentreCollidesInAnyDirection)
{
    CRandom random(1);
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(UnitSphere.IsCollision(S3D(), CreateDirection(random)));
}

TEST(CSphere, RayFromInsideCollidesEvenWhenItPointsOutward)
{
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, 0.9f), Forward));
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, 0.9f), Backward));
}

TEST(CSphere, RayFromTheSurfaceCollidesEvenWhenItPointsOutward)
{
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, 1.0f), Forward));
}

TEST(CSphere, RayBesideTheSphereDoesNotCollide)
{
    EXPECT_FALSE(UnitSphere.IsCollision(S3D(0.0f, 1.001f, -5.0f), Forward));
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 0.999f, -5.0f), Forward));
}

TEST(CSphere, TangentRayCollides)
{
    EXPECT_TRUE(UnitSphere.IsCollision(S3D(0.0f, 1.0f, -5.0f), Forward));
}

TEST(CSphere, TangentRayThatPointsAwayDoesNotCollide)
{
    EXPECT_FALSE(UnitSphere.IsCollision(S3D(0.0f, 1.0f, 5.0f), Forward));
}

TEST(CSphere, RayIsMeasuredFromTheSpheresPosition)
{
    const CSphere sphere(S3D(10.0f, 20.0f, 30.0f), 2.0f);
    EXPECT_TRUE(sphere.IsCollision(S3D(10.0f, 21.5f, 0.0f), Forward));
    EXPECT_FALSE(sphere.IsCollision(S3D(10.0f, 22.5f, 0.0f), Forward));
    EXPECT_FALSE(sphere.IsCollision(S3D(10.0f, 21.5f, 40.0f), Forward));
    EXPECT_FALSE(sphere.IsCollision(S3D(0.0f, 0.0f, -5.0f), Forward));
}

TEST(CSphere, SphereOfNoRadiusIsHitOnlyInItsCentre)
{
    const CSphere point(S3D(0.0f, 0.0f, 0.0f), 0.0f);
    EXPECT_TRUE(point.IsCollision(S3D(0.0f, 0.0f, -5.0f), Forward));
    EXPECT_FALSE(point.IsCollision(S3D(0.0f, 0.001f, -5.0f), Forward));
}

TEST(CSphere, DirectionIsTakenAsItIs)
{
    // Half a direction shortens b = m . dir from 5 to 2.5, and 2.5 * 2.5 - 24 is negative.
    EXPECT_FALSE(UnitSphere.IsCollision(S3D(0.0f, 0.0f, -5.0f), Forward * 0.5f));
}

TEST(CSphere, AxisRaysOnTheGridAreDecidedExactly)
{
    CRandom random(2);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        SCase ray = {
            random.GridVector(3), static_cast<float>(random.Whole(0, 5)), random.GridVector(6),
            Forward};
        if (random.Whole(0, 1) == 1)
            ray.direction = Backward;
        // Whole numbers: every square is exact.
        const S3D offset = ray.origin - ray.pos;
        const float square = ray.radius * ray.radius;
        const bool startsInside = offset.Length2() <= square;
        const bool pointsAway = offset.z * ray.direction.z > 0.0f;
        const bool lineMeets = offset.x * offset.x + offset.y * offset.y <= square;
        const bool collides = startsInside || (lineMeets && !pointsAway);
        ASSERT_EQ(ray.IsCollision(), collides) << ray.Print();
        ++outcomes[collides ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 10);
    EXPECT_GT(outcomes[1], RandomCases / 10);
}

TEST(CSphere, GrazingRaysAreDecidedByTheFormulaToTheBit)
{
    CRandom random(3);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        // Toward a point of the silhouette, so that rounding decides.
        SCase ray = {CreatePoint(random), random.Between(0.1f, 3.0f), CreatePoint(random), Forward};
        const S3D side = S3D::CrossProduct(ray.pos - ray.origin, CreateDirection(random));
        const S3D offset = ray.origin - ray.pos;
        // The tangent touches where the radius stands upright on it.
        const float share = ray.radius * ray.radius / offset.Length2();
        if (share > 0.9f)
            continue;
        const S3D touch =
            ray.pos + offset * share + side.GetNormalize() * (ray.radius * std::sqrt(1.0f - share));
        ray.direction = (touch - ray.origin).GetNormalize();

        const float b = S3D::DotProduct(offset, ray.direction);
        const float c = S3D::DotProduct(offset, offset) - ray.radius * ray.radius;
        const bool collides = !(c > 0.0f && b > 0.0f) && !(b * b - c < 0.0f);
        ASSERT_EQ(ray.IsCollision(), collides) << ray.Print();
        ++outcomes[collides ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 10);
    EXPECT_GT(outcomes[1], RandomCases / 10);
}

TEST(CSphere, RandomRaysAgreeWithDoublePrecision)
{
    // Rays that pass or start closer to the surface than this are left out.
    constexpr double margin = 1e-3;
    CRandom random(4);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases; ++i)
    {
        const SCase ray = {
            CreatePoint(random), random.Between(0.5f, 8.0f), CreatePoint(random),
            CreateDirection(random)};
        const Eigen::RowVector3d offset = ToDouble(ray.origin) - ToDouble(ray.pos);
        const Eigen::RowVector3d direction = ToDouble(ray.direction).normalized();
        // The ray's closest point to the centre, which is its start when it points away.
        const double closest = std::max(0.0, -offset.dot(direction));
        const double distance = (offset + direction * closest).norm();
        if (std::abs(distance - ray.radius) < margin ||
            std::abs(offset.norm() - ray.radius) < margin)
            continue;
        const bool collides = distance < ray.radius;
        ASSERT_EQ(ray.IsCollision(), collides) << ray.Print();
        ++outcomes[collides ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], RandomCases / 20);
    EXPECT_GT(outcomes[1], RandomCases / 20);
}
