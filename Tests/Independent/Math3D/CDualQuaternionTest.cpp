#include "Independent/Math3D/CDualQuaternion.h"

#include <type_traits>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"

using namespace mathtest;
using math3d::CDualQuaternion;

namespace
{

void ExpectParts(const SQuaternion& real, const SQuaternion& dual, const CDualQuaternion& actual)
{
    EXPECT_SAME_BITS(real, actual.GetRealPart());
    EXPECT_SAME_BITS(dual, actual.GetDualPart());
}

SQuaternion Conjugate(const SQuaternion& q)
{
    return SQuaternion(-q.x, -q.y, -q.z, q.w);
}

SQuaternion Add(const SQuaternion& a, const SQuaternion& b)
{
    return SQuaternion(a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w);
}

/// A random motion as its two parts.
struct SMotion
{
    explicit SMotion(CRandom& random)
        : rotation(CreateUnitQuaternion(random))
        , translation(random.Vector3Between(-10.0f, 10.0f))
    {
    }

    CDualQuaternion ToDualQuaternion() const { return CDualQuaternion(rotation, translation); }

    Eigen::Matrix4d ToOracle() const { return ToRigid(ToRotation(rotation), translation); }

    SQuaternion rotation;
    S3D translation;
};

/// Some roundings of translations of up to 10, doubled by the way through the dual part.
const double MotionTolerance = 2e-5;

} // namespace

TEST(CDualQuaternion, IsTwoQuaternionsBehindAVirtualDestructor)
{
    static_assert(std::has_virtual_destructor_v<CDualQuaternion>);
    static_assert(sizeof(CDualQuaternion) == sizeof(void*) + 2 * sizeof(SQuaternion));
}

TEST(CDualQuaternion, DefaultIsTheIdentityMotion)
{
    const CDualQuaternion motion;
    ExpectParts(SQuaternion(0, 0, 0, 1), SQuaternion(0, 0, 0, 0), motion);
    EXPECT_EQ(SMatrix(), motion.GetMatrix());
}

TEST(CDualQuaternion, TwoQuaternionsAreTheRealAndTheDualPart)
{
    ExpectParts(
        SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8),
        CDualQuaternion(SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8)));
}

TEST(CDualQuaternion, AssignmentAndCopyTakeBothParts)
{
    const CDualQuaternion source(SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8));
    const CDualQuaternion copy(source);
    CDualQuaternion assigned;
    EXPECT_EQ(&assigned, &(assigned = source));
    ExpectParts(SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8), copy);
    ExpectParts(SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8), assigned);
}

TEST(CDualQuaternion, TranslationAloneIsHalvedIntoTheDualPart)
{
    const CDualQuaternion motion(SQuaternion(), S3D(2.0f, 0.0f, 0.0f));
    EXPECT_SAME_BITS(SQuaternion(), motion.GetRealPart());
    EXPECT_EQ(1.0f, motion.GetDualPart().x);
    EXPECT_EQ(0.0f, motion.GetDualPart().y);
    EXPECT_EQ(0.0f, motion.GetDualPart().z);
    EXPECT_EQ(0.0f, motion.GetDualPart().w);
}

TEST(CDualQuaternion, DualPartIsHalfTheTranslationTimesTheRotation)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion r = random.Quaternion();
        const S3D t = random.Vector3();
        float x = t.x * r.w;
        x = x + t.y * r.z;
        x = x - t.z * r.y;
        float y = -t.x * r.z;
        y = y + t.y * r.w;
        y = y + t.z * r.x;
        float z = t.x * r.y;
        z = z - t.y * r.x;
        z = z + t.z * r.w;
        float w = t.x * r.x;
        w = w + t.y * r.y;
        w = w + t.z * r.z;
        const CDualQuaternion motion(r, t);
        ASSERT_SAME_BITS(r, motion.GetRealPart()) << PrintInput(r, t);
        ASSERT_SAME_BITS(SQuaternion(0.5f * x, 0.5f * y, 0.5f * z, -0.5f * w), motion.GetDualPart())
            << PrintInput(r, t);
    }
}

TEST(CDualQuaternion, SumHasTheProductOfTheDualParts)
{
    const CDualQuaternion a(SQuaternion(1, 2, 3, 4), SQuaternion(1, 0, 0, 0));
    const CDualQuaternion b(SQuaternion(10, 20, 30, 40), SQuaternion(0, 1, 0, 0));
    const CDualQuaternion sum = a + b;
    EXPECT_SAME_BITS(SQuaternion(11, 22, 33, 44), sum.GetRealPart());
    // i * j is k; the other way round it would be -k.
    EXPECT_EQ(0.0f, sum.GetDualPart().x);
    EXPECT_EQ(0.0f, sum.GetDualPart().y);
    EXPECT_EQ(1.0f, sum.GetDualPart().z);
    EXPECT_EQ(0.0f, sum.GetDualPart().w);
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion realA = random.Quaternion();
        const SQuaternion dualA = random.Quaternion();
        const SQuaternion realB = random.Quaternion();
        const SQuaternion dualB = random.Quaternion();
        const CDualQuaternion actual =
            CDualQuaternion(realA, dualA) + CDualQuaternion(realB, dualB);
        ASSERT_SAME_BITS(Add(realA, realB), actual.GetRealPart())
            << PrintInput(realA, dualA, realB, dualB);
        ASSERT_SAME_BITS(dualA * dualB, actual.GetDualPart())
            << PrintInput(realA, dualA, realB, dualB);
    }
}

TEST(CDualQuaternion, ProductHasTheRightOperandsPartsOnTheLeft)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion realA = random.Quaternion();
        const SQuaternion dualA = random.Quaternion();
        const SQuaternion realB = random.Quaternion();
        const SQuaternion dualB = random.Quaternion();
        const CDualQuaternion a(realA, dualA);
        const CDualQuaternion b(realB, dualB);
        CDualQuaternion inPlace = a;
        EXPECT_EQ(&inPlace, &(inPlace *= b));
        for (const CDualQuaternion& product : {a * b, inPlace})
        {
            ASSERT_SAME_BITS(realB * realA, product.GetRealPart())
                << PrintInput(realA, dualA, realB, dualB);
            ASSERT_SAME_BITS(Add(realB * dualA, dualB * realA), product.GetDualPart())
                << PrintInput(realA, dualA, realB, dualB);
        }
    }
}

TEST(CDualQuaternion, MotionCanBeMultipliedByItselfInPlace)
{
    CDualQuaternion motion(SQuaternion(1, 2, 3, 4), SQuaternion(5, 6, 7, 8));
    const CDualQuaternion expected = motion * motion;
    motion *= motion;
    ExpectParts(expected.GetRealPart(), expected.GetDualPart(), motion);
}

TEST(CDualQuaternion, InverseIsFormedInOrder)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SQuaternion real = random.Quaternion();
        const SQuaternion dual = random.Quaternion();
        float dot = real.x * dual.x;
        dot = dot + real.y * dual.y;
        dot = dot + real.z * dual.z;
        dot = dot + real.w * dual.w;
        const float k = -2.0f * dot;
        const SQuaternion c = Conjugate(real);
        const SQuaternion scaled(c.x * k, c.y * k, c.z * k, c.w * k);
        const CDualQuaternion inverse = CDualQuaternion(real, dual).GetInverse();
        ASSERT_SAME_BITS(c, inverse.GetRealPart()) << PrintInput(real, dual);
        ASSERT_SAME_BITS(Add(Conjugate(dual), scaled), inverse.GetDualPart())
            << PrintInput(real, dual);
    }
}

TEST(CDualQuaternion, InverseOfAMotionIsTheMotionBack)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMotion motion(random);
        const CDualQuaternion inverse = motion.ToDualQuaternion().GetInverse();
        ASSERT_CLOSE(
            Eigen::Matrix4d(motion.ToOracle().inverse()), ToDouble(inverse.GetMatrix()),
            MotionTolerance)
            << PrintInput(motion.rotation, motion.translation);
        ASSERT_CLOSE(
            Eigen::Matrix4d::Identity(),
            ToDouble((motion.ToDualQuaternion() * inverse).GetMatrix()), MotionTolerance)
            << PrintInput(motion.rotation, motion.translation);
    }
}

TEST(CDualQuaternion, MatrixIsRotationThenTranslation)
{
    CRandom random(6);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMotion motion(random);
        const SMatrix matrix = motion.ToDualQuaternion().GetMatrix();
        ASSERT_CLOSE(motion.ToOracle(), ToDouble(matrix), MotionTolerance)
            << PrintInput(motion.rotation, motion.translation);
        ASSERT_CLOSE(
            ToDouble(motion.rotation.GetMatrix() * SMatrix::CreateMove(motion.translation)),
            ToDouble(matrix), MotionTolerance)
            << PrintInput(motion.rotation, motion.translation);
    }
}

TEST(CDualQuaternion, MatrixOfAQuarterTurnThenAMoveTakesXToYAndMovesIt)
{
    const CDualQuaternion motion(SQuaternion::CreateZRotation(Pi / 2.0f), S3D(10.0f, 20.0f, 30.0f));
    const S3D moved = S3D(1.0f, 0.0f, 0.0f) * motion.GetMatrix();
    EXPECT_LT(S3D::Distance(S3D(10.0f, 21.0f, 30.0f), moved), 1e-5f);
}

TEST(CDualQuaternion, CompositionIsTheProductOfTheMatrices)
{
    CRandom random(7);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SMotion a(random);
        const SMotion b(random);
        const CDualQuaternion product = a.ToDualQuaternion() * b.ToDualQuaternion();
        ASSERT_CLOSE(
            Eigen::Matrix4d(a.ToOracle() * b.ToOracle()), ToDouble(product.GetMatrix()),
            2.0 * MotionTolerance)
            << PrintInput(a.rotation, a.translation, b.rotation, b.translation);
    }
}
