#include "Independent/Math3D/CCamera.h"

#include <string>
#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using math3d::CCamera;
using namespace mathtest;

namespace
{

// A rotation is made of sines and cosines of a rounded angle and a product of quaternions, and its
// matrix of squares: a few units in the last place of 1, and of the angle's pi.
constexpr double RotationTolerance = 3e-6;

const Eigen::RowVector3d Right(1.0, 0.0, 0.0);
const Eigen::RowVector3d Up(0.0, 1.0, 0.0);
const Eigen::RowVector3d Forward(0.0, 0.0, 1.0);

double ToRadians(double degrees)
{
    return degrees * PiDouble / 180.0;
}

CCamera CreateCamera(CRandom& random)
{
    CCamera camera;
    camera.SetPos(random.Vector3Between(-50.0f, 50.0f));
    camera.SetRotate(CreateUnitQuaternion(random));
    return camera;
}

std::string PrintCamera(const CCamera& camera)
{
    return PrintInput(camera.GetPos(), camera.GetQuaternion());
}

} // namespace

TEST(CCamera, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CCamera>);
}

TEST(CCamera, DefaultStandsAtTheOriginUnturned)
{
    const CCamera camera;
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), camera.GetPos());
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), camera.GetQuaternion());
}

TEST(CCamera, DefaultLooksAlongPlusZWithTheIdentityAsItsMatrices)
{
    const CCamera camera;
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f), camera.GetViewVec());
    EXPECT_SAME_BITS(S3D(0.0f, 1.0f, 0.0f), camera.GetViewUpVec());
    EXPECT_SAME_BITS(S3D(1.0f, 0.0f, 0.0f), camera.GetViewRightVec());
    EXPECT_TRUE(camera.GetMatrix() == SMatrix()) << Print(camera.GetMatrix());
    EXPECT_TRUE(camera.GetInvMatrix() == SMatrix()) << Print(camera.GetInvMatrix());
    EXPECT_TRUE(camera.GetRotMatrix() == SMatrix()) << Print(camera.GetRotMatrix());
    EXPECT_TRUE(camera.GetRotInvMatrix() == SMatrix()) << Print(camera.GetRotInvMatrix());
}

// Position

TEST(CCamera, SetPosTakesThreeNumbers)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), camera.GetPos());
}

TEST(CCamera, SetPosTakesAVector)
{
    CCamera camera;
    camera.SetPos(S3D(1.0f, 2.0f, 3.0f));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), camera.GetPos());
}

TEST(CCamera, GetXYZGiveTheComponentsOfThePosition)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    EXPECT_EQ(camera.GetX(), 1.0f);
    EXPECT_EQ(camera.GetY(), 2.0f);
    EXPECT_EQ(camera.GetZ(), 3.0f);
}

TEST(CCamera, AddYMovesAlongTheWorldsYWhateverTheRotation)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    camera.AddAngleP(90.0f);
    camera.AddY(-5.0f);
    EXPECT_SAME_BITS(S3D(1.0f, -3.0f, 3.0f), camera.GetPos());
}

TEST(CCamera, AddForwardMovesADefaultCameraAlongPlusZ)
{
    CCamera camera;
    camera.AddForward(5.0f);
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 5.0f), camera.GetPos());
}

TEST(CCamera, AddForwardAddsToThePositionAndMayGoBack)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    camera.AddForward(-5.0f);
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, -2.0f), camera.GetPos());
}

TEST(CCamera, AddForwardMovesByTheTransformedDistanceToTheBit)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        CCamera camera = CreateCamera(random);
        const std::string input = PrintCamera(camera);
        const float distance = random.Between(-20.0f, 20.0f);
        const S3D step = S3D(0.0f, 0.0f, distance) * camera.GetRotInvMatrix();
        const S3D expected = camera.GetPos() + step;
        camera.AddForward(distance);
        ASSERT_SAME_BITS(expected, camera.GetPos()) << input << PrintInput(distance);
    }
}

TEST(CCamera, AddForwardMovesAlongTheViewInDoublePrecision)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        CCamera camera = CreateCamera(random);
        const std::string input = PrintCamera(camera);
        const float distance = random.Between(-20.0f, 20.0f);
        const Eigen::RowVector3d expected =
            ToDouble(camera.GetPos()) + Forward * distance * ToRotation(camera.GetQuaternion());
        camera.AddForward(distance);
        ASSERT_CLOSE(expected, ToDouble(camera.GetPos()), 25 * RotationTolerance)
            << input << PrintInput(distance);
    }
}

// Rotation

TEST(CCamera, SetRotateKeepsTheQuaternionAsItIs)
{
    const SQuaternion unnormalised(1.0f, 2.0f, 3.0f, 4.0f);
    CCamera camera;
    camera.SetRotate(unnormalised);
    EXPECT_SAME_BITS(unnormalised, camera.GetQuaternion());
}

TEST(CCamera, ResetRotateGivesTheIdentityAndKeepsThePosition)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    camera.SetRotate(SQuaternion(0.0f, 1.0f, 0.0f, 0.0f));
    camera.ResetRotate();
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), camera.GetQuaternion());
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), camera.GetPos());
}

TEST(CCamera, AddAngleTurnsTheViewFromForwardToTheRight)
{
    CCamera camera;
    camera.AddAngle(90.0f);
    EXPECT_CLOSE(Right, ToDouble(camera.GetViewVec()), RotationTolerance);
    EXPECT_CLOSE(Up, ToDouble(camera.GetViewUpVec()), RotationTolerance);
    EXPECT_CLOSE(-Forward, ToDouble(camera.GetViewRightVec()), RotationTolerance);
}

TEST(CCamera, AddAnglePTurnsTheViewFromForwardDownward)
{
    CCamera camera;
    camera.AddAngleP(90.0f);
    EXPECT_CLOSE(-Up, ToDouble(camera.GetViewVec()), RotationTolerance);
    EXPECT_CLOSE(Forward, ToDouble(camera.GetViewUpVec()), RotationTolerance);
    EXPECT_CLOSE(Right, ToDouble(camera.GetViewRightVec()), RotationTolerance);
}

TEST(CCamera, AddAngleTurnsAboutTheWorldsYAxis)
{
    // Looking down, the heading still turns about the vertical: the view stays, up turns.
    CCamera camera;
    camera.AddAngleP(90.0f);
    camera.AddAngle(90.0f);
    EXPECT_CLOSE(-Up, ToDouble(camera.GetViewVec()), RotationTolerance);
    EXPECT_CLOSE(Right, ToDouble(camera.GetViewUpVec()), RotationTolerance);
}

TEST(CCamera, AddAnglePTurnsAboutTheCamerasOwnXAxis)
{
    // Looking to the right, the pitch still lowers the view.
    CCamera camera;
    camera.AddAngle(90.0f);
    camera.AddAngleP(90.0f);
    EXPECT_CLOSE(-Up, ToDouble(camera.GetViewVec()), RotationTolerance);
    EXPECT_CLOSE(Right, ToDouble(camera.GetViewUpVec()), RotationTolerance);
}

TEST(CCamera, AddAngleMultipliesTheTurnFromTheLeftToTheBit)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        CCamera camera = CreateCamera(random);
        const std::string input = PrintCamera(camera);
        const float degrees = random.Between(-400.0f, 400.0f);
        const SQuaternion turn = SMatrix::CreateRotH(degrees).GetQuaternion();
        const SQuaternion expected = turn * camera.GetQuaternion();
        camera.AddAngle(degrees);
        ASSERT_SAME_BITS(expected, camera.GetQuaternion()) << input << PrintInput(degrees);
    }
}

TEST(CCamera, AddAnglePMultipliesTheTurnFromTheRightToTheBit)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        CCamera camera = CreateCamera(random);
        const std::string input = PrintCamera(camera);
        const float degrees = random.Between(-400.0f, 400.0f);
        const SQuaternion turn = SMatrix::CreateRotP(degrees).GetQuaternion();
        const SQuaternion expected = camera.GetQuaternion() * turn;
        camera.AddAngleP(degrees);
        ASSERT_SAME_BITS(expected, camera.GetQuaternion()) << input << PrintInput(degrees);
    }
}

TEST(CCamera, TurnsAgreeWithDoublePrecision)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        CCamera camera = CreateCamera(random);
        const std::string input = PrintCamera(camera);
        const Eigen::Matrix3d before = ToRotation(camera.GetQuaternion());
        const float heading = random.Between(-180.0f, 180.0f);
        const float pitch = random.Between(-180.0f, 180.0f);
        camera.AddAngle(heading);
        camera.AddAngleP(pitch);
        const Eigen::Matrix3d expected =
            Pitch(ToRadians(pitch)) * before * Heading(ToRadians(heading));
        ASSERT_CLOSE(expected, ToRotation(camera.GetQuaternion()), RotationTolerance)
            << input << PrintInput(heading, pitch);
    }
}

TEST(CCamera, HeadingsAndPitchesAddUpInAnyOrder)
{
    // One factor grows on the left, the other on the right: neither turn tilts the horizon.
    constexpr int turns = 20;
    CRandom random(6);
    for (int i = 0; i < RandomCases / 100; ++i)
    {
        CCamera camera;
        double heading = 0.0;
        double pitch = 0.0;
        for (int turn = 0; turn < turns; ++turn)
        {
            const float degrees = random.Between(-90.0f, 90.0f);
            if (random.Below(2) == 0)
            {
                camera.AddAngle(degrees);
                heading += degrees;
            }
            else
            {
                camera.AddAngleP(degrees);
                pitch += degrees;
            }
        }
        const Eigen::Matrix3d expected = Pitch(ToRadians(pitch)) * Heading(ToRadians(heading));
        ASSERT_CLOSE(expected, ToRotation(camera.GetQuaternion()), turns * RotationTolerance)
            << "case " << i;
        ASSERT_NEAR(camera.GetViewRightVec().y, 0.0f, turns * RotationTolerance) << "case " << i;
    }
}

// Matrices

TEST(CCamera, MatrixMovesThenTurnsTheWorldBack)
{
    // A point one ahead and two above a camera that looks to the right.
    CCamera camera;
    camera.SetPos(10.0f, 20.0f, 30.0f);
    camera.AddAngle(90.0f);
    EXPECT_CLOSE(
        Eigen::RowVector3d(0.0, 2.0, 1.0), ToDouble(S3D(11.0f, 22.0f, 30.0f) * camera.GetMatrix()),
        1e-5);
    EXPECT_CLOSE(
        Eigen::RowVector3d(11.0, 22.0, 30.0),
        ToDouble(S3D(0.0f, 2.0f, 1.0f) * camera.GetInvMatrix()), 1e-5);
}

TEST(CCamera, MatricesAreMadeOfTheRotationAndThePositionToTheBit)
{
    CRandom random(7);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        SCOPED_TRACE(PrintCamera(camera));
        const S3D pos = camera.GetPos();
        const SQuaternion rotate = camera.GetQuaternion();
        const SMatrix toWorld = rotate.GetMatrix();
        const SMatrix fromWorld =
            SQuaternion(-rotate.x, -rotate.y, -rotate.z, rotate.w).GetMatrix();
        ASSERT_SAME_BITS(toWorld, camera.GetRotInvMatrix());
        ASSERT_SAME_BITS(fromWorld, camera.GetRotMatrix());
        ASSERT_SAME_BITS(
            SMatrix::CreateMove(S3D(-pos.x, -pos.y, -pos.z)) * fromWorld, camera.GetMatrix());
        ASSERT_SAME_BITS(toWorld * SMatrix::CreateMove(pos), camera.GetInvMatrix());
    }
}

TEST(CCamera, RotationMatricesAgreeWithDoublePrecision)
{
    CRandom random(8);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const Eigen::Matrix4d expected =
            ToRigid(ToRotation(camera.GetQuaternion()), S3D(0.0f, 0.0f, 0.0f));
        ASSERT_CLOSE(expected, ToDouble(camera.GetRotInvMatrix()), RotationTolerance)
            << PrintCamera(camera);
        ASSERT_CLOSE(expected.transpose(), ToDouble(camera.GetRotMatrix()), RotationTolerance)
            << PrintCamera(camera);
    }
}

TEST(CCamera, MatrixTimesItsInverseIsTheIdentity)
{
    // The positions reach 50 on each axis.
    constexpr double tolerance = 50 * RotationTolerance;
    const Eigen::Matrix4d identity = Eigen::Matrix4d::Identity();
    CRandom random(9);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const SMatrix forth = camera.GetMatrix() * camera.GetInvMatrix();
        const SMatrix back = camera.GetInvMatrix() * camera.GetMatrix();
        ASSERT_CLOSE(identity, ToDouble(forth), tolerance) << PrintCamera(camera);
        ASSERT_CLOSE(identity, ToDouble(back), tolerance) << PrintCamera(camera);
    }
}

TEST(CCamera, MatrixTakesWorldPointsIntoCameraSpaceInDoublePrecision)
{
    CRandom random(10);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const S3D point = random.Vector3Between(-50.0f, 50.0f);
        const Eigen::RowVector3d expected = (ToDouble(point) - ToDouble(camera.GetPos())) *
                                            ToRotation(camera.GetQuaternion()).transpose();
        ASSERT_CLOSE(expected, ToDouble(point * camera.GetMatrix()), 50 * RotationTolerance)
            << PrintCamera(camera) << PrintInput(point);
    }
}

// View vectors

TEST(CCamera, ViewVectorsAreTheTransformedAxesToTheBit)
{
    CRandom random(11);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        SCOPED_TRACE(PrintCamera(camera));
        const SMatrix toWorld = camera.GetRotInvMatrix();
        ASSERT_SAME_BITS(S3D(1.0f, 0.0f, 0.0f) * toWorld, camera.GetViewRightVec());
        ASSERT_SAME_BITS(S3D(0.0f, 1.0f, 0.0f) * toWorld, camera.GetViewUpVec());
        ASSERT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f) * toWorld, camera.GetViewVec());
    }
}

TEST(CCamera, ViewVectorsAgreeWithDoublePrecision)
{
    CRandom random(12);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const Eigen::Matrix3d toWorld = ToRotation(camera.GetQuaternion());
        ASSERT_CLOSE(Right * toWorld, ToDouble(camera.GetViewRightVec()), RotationTolerance)
            << PrintCamera(camera);
        ASSERT_CLOSE(Up * toWorld, ToDouble(camera.GetViewUpVec()), RotationTolerance)
            << PrintCamera(camera);
        ASSERT_CLOSE(Forward * toWorld, ToDouble(camera.GetViewVec()), RotationTolerance)
            << PrintCamera(camera);
    }
}

TEST(CCamera, ViewVectorsDoNotDependOnThePosition)
{
    CRandom random(13);
    CCamera camera = CreateCamera(random);
    const S3D view = camera.GetViewVec();
    const S3D up = camera.GetViewUpVec();
    const S3D right = camera.GetViewRightVec();
    camera.SetPos(1000.0f, 2000.0f, 3000.0f);
    EXPECT_SAME_BITS(view, camera.GetViewVec());
    EXPECT_SAME_BITS(up, camera.GetViewUpVec());
    EXPECT_SAME_BITS(right, camera.GetViewRightVec());
}
