#include "Independent/Math3D/CTransform.h"

#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using namespace mathtest;
using math3d::CTransform;

TEST(CTransform, IsScaleRotationAndPositionBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<CTransform>);
    static_assert(sizeof(CTransform) == sizeof(void*) + 2 * sizeof(S3D) + sizeof(SQuaternion));
}

TEST(CTransform, DefaultIsTheIdentity)
{
    const CTransform transform;
    EXPECT_SAME_BITS(S3D(1.0f, 1.0f, 1.0f), transform.GetScale());
    EXPECT_SAME_BITS(SQuaternion(0.0f, 0.0f, 0.0f, 1.0f), transform.GetRotate());
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 0.0f), transform.GetPos());
    EXPECT_EQ(SMatrix(), transform.GetMatrix());
}

TEST(CTransform, ConstructorTakesScaleRotationAndPosition)
{
    const CTransform transform(
        S3D(1.0f, 2.0f, 3.0f), SQuaternion(4.0f, 5.0f, 6.0f, 7.0f), S3D(8.0f, 9.0f, 10.0f));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), transform.GetScale());
    EXPECT_SAME_BITS(SQuaternion(4.0f, 5.0f, 6.0f, 7.0f), transform.GetRotate());
    EXPECT_SAME_BITS(S3D(8.0f, 9.0f, 10.0f), transform.GetPos());
}

TEST(CTransform, EachSetterChangesItsPartAlone)
{
    CTransform transform;
    transform.SetScale(S3D(1.0f, 2.0f, 3.0f));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), transform.GetScale());
    EXPECT_SAME_BITS(SQuaternion(), transform.GetRotate());
    EXPECT_SAME_BITS(S3D(), transform.GetPos());
    transform.SetRotate(SQuaternion(4.0f, 5.0f, 6.0f, 7.0f));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), transform.GetScale());
    EXPECT_SAME_BITS(SQuaternion(4.0f, 5.0f, 6.0f, 7.0f), transform.GetRotate());
    EXPECT_SAME_BITS(S3D(), transform.GetPos());
    transform.SetPos(S3D(8.0f, 9.0f, 10.0f));
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), transform.GetScale());
    EXPECT_SAME_BITS(SQuaternion(4.0f, 5.0f, 6.0f, 7.0f), transform.GetRotate());
    EXPECT_SAME_BITS(S3D(8.0f, 9.0f, 10.0f), transform.GetPos());
}

TEST(CTransform, MatrixScalesThenRotatesThenMoves)
{
    const CTransform transform(
        S3D(2.0f, 3.0f, 4.0f), SQuaternion::CreateZRotation(Pi / 2.0f), S3D(10.0f, 20.0f, 30.0f));
    const S3D moved = S3D(1.0f, 0.0f, 0.0f) * transform.GetMatrix();
    EXPECT_LT(S3D::Distance(S3D(10.0f, 22.0f, 30.0f), moved), 1e-5f);
}

TEST(CTransform, MatrixIsTheProductOfItsThreeMatrices)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D scale = random.Vector3Between(-10.0f, 10.0f);
        const SQuaternion rotate = CreateUnitQuaternion(random);
        const S3D pos = random.Vector3Between(-10.0f, 10.0f);
        const SMatrix scaleThenRotate = SMatrix::CreateScale(scale) * rotate.GetMatrix();
        const SMatrix expected = scaleThenRotate * SMatrix::CreateMove(pos);
        ASSERT_SAME_BITS(expected, CTransform(scale, rotate, pos).GetMatrix())
            << PrintInput(scale, rotate, pos);
    }
}

TEST(CTransform, MatrixIsThatOfDoublePrecision)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S3D scale = random.Vector3Between(-10.0f, 10.0f);
        const SQuaternion rotate = CreateUnitQuaternion(random);
        const S3D pos = random.Vector3Between(-10.0f, 10.0f);
        Eigen::Matrix4d expected = ToRigid(ToRotation(rotate), pos);
        expected.topRows<3>() =
            ToDouble(scale).asDiagonal() * Eigen::MatrixXd(expected.topRows<3>());
        // The rotation's 1e-6 times a scale of up to 10.
        ASSERT_CLOSE(expected, ToDouble(CTransform(scale, rotate, pos).GetMatrix()), 1e-5)
            << PrintInput(scale, rotate, pos);
    }
}
