#include "Independent/Math3D/S4D.h"

#include <cstddef>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/SMatrix.h"

using namespace mathtest;

TEST(S4D, IsFourFloatsInOrderWithoutAVirtualTable)
{
    static_assert(!std::is_polymorphic_v<S4D>);
    static_assert(std::is_standard_layout_v<S4D>);
    static_assert(std::is_trivially_copyable_v<S4D>);
    static_assert(sizeof(S4D) == 4 * sizeof(float));
    static_assert(offsetof(S4D, x) == 0);
    static_assert(offsetof(S4D, y) == 4);
    static_assert(offsetof(S4D, z) == 8);
    static_assert(offsetof(S4D, w) == 12);
}

TEST(S4D, CanBeBuiltWithoutValues)
{
    static_assert(std::is_trivially_default_constructible_v<S4D>);
    S4D vector;
    vector.Set(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_SAME_BITS(S4D(1.0f, 2.0f, 3.0f, 4.0f), vector);
}

TEST(S4D, ConstructorAndSetTakeTheFieldsInOrder)
{
    const S4D constructed(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(1.0f, constructed.x);
    EXPECT_EQ(2.0f, constructed.y);
    EXPECT_EQ(3.0f, constructed.z);
    EXPECT_EQ(4.0f, constructed.w);
    S4D assigned(0.0f, 0.0f, 0.0f, 0.0f);
    assigned.Set(5.0f, 6.0f, 7.0f, 8.0f);
    EXPECT_EQ(5.0f, assigned.x);
    EXPECT_EQ(6.0f, assigned.y);
    EXPECT_EQ(7.0f, assigned.z);
    EXPECT_EQ(8.0f, assigned.w);
}

TEST(S4D, PointHasWOne)
{
    static_assert(std::is_constructible_v<S4D, const S3D&>);
    EXPECT_SAME_BITS(S4D(1.0f, 2.0f, 3.0f, 1.0f), S4D(S3D(1.0f, 2.0f, 3.0f)));
}

TEST(S4D, SumIsFormedByComponent)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S4D a = random.Vector4();
        const S4D b = random.Vector4();
        const S4D expected(a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w);
        ASSERT_SAME_BITS(expected, a + b) << PrintInput(a, b);
    }
}

TEST(S4D, RowVectorTimesMatrixIsNotDivided)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S4D vector = random.Vector4();
        const SMatrix matrix = random.Matrix();
        float sums[4];
        for (int column = 0; column < 4; ++column)
        {
            const float fromX = vector.x * matrix.m[0][column];
            const float fromY = vector.y * matrix.m[1][column];
            const float fromZ = vector.z * matrix.m[2][column];
            const float fromW = vector.w * matrix.m[3][column];
            const float xy = fromX + fromY;
            const float xyz = xy + fromZ;
            sums[column] = xyz + fromW;
        }
        ASSERT_SAME_BITS(S4D(sums[0], sums[1], sums[2], sums[3]), vector * matrix)
            << PrintInput(vector, matrix);
    }
}

TEST(S4D, IndexZeroToThreeGivesReferencesToXYZW)
{
    static_assert(std::is_same_v<decltype(std::declval<S4D&>()[0]), float&>);
    static_assert(std::is_same_v<decltype(std::declval<const S4D&>()[0]), const float&>);
    S4D vector(1.0f, 2.0f, 3.0f, 4.0f);
    const S4D& constant = vector;
    float* const fields[] = {&vector.x, &vector.y, &vector.z, &vector.w};
    for (int index = 0; index < 4; ++index)
    {
        EXPECT_EQ(fields[index], &vector[index]) << index;
        EXPECT_EQ(fields[index], &constant[index]) << index;
    }
    vector[3] = 9.0f;
    EXPECT_SAME_BITS(S4D(1.0f, 2.0f, 3.0f, 9.0f), vector);
}

TEST(S4D, AnyOtherIndexGivesX)
{
    S4D vector(1.0f, 2.0f, 3.0f, 4.0f);
    const S4D& constant = vector;
    for (const int index : {4, 5, 1000, IntMax, -1, -2, -3, IntMin, IntMin + 1})
    {
        EXPECT_EQ(&vector.x, &vector[index]) << index;
        EXPECT_EQ(&vector.x, &constant[index]) << index;
    }
}

TEST(S4D, PointIsDividedByW)
{
    EXPECT_SAME_BITS(S3D(1.0f, 2.0f, 3.0f), S4D(2.0f, 4.0f, 6.0f, 2.0f).GetS3D());
}

TEST(S4D, PointWithWZeroIsNotDivided)
{
    EXPECT_SAME_BITS(S3D(2.0f, 4.0f, 6.0f), S4D(2.0f, 4.0f, 6.0f, 0.0f).GetS3D());
    EXPECT_SAME_BITS(S3D(2.0f, 4.0f, 6.0f), S4D(2.0f, 4.0f, 6.0f, -0.0f).GetS3D());
}

TEST(S4D, PointIsMultipliedByTheReciprocalOfW)
{
    // 5 / 3 would be 0x1.aaaaaap+0.
    EXPECT_EQ(0x1.aaaaacp+0f, S4D(5.0f, 0.0f, 0.0f, 3.0f).GetS3D().x);
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const S4D vector = random.Vector4();
        const float factor = vector.w == 0.0f ? 1.0f : 1.0f / vector.w;
        const S3D expected(vector.x * factor, vector.y * factor, vector.z * factor);
        ASSERT_SAME_BITS(expected, vector.GetS3D()) << PrintInput(vector);
    }
}

TEST(S4D, PointCanBeTakenWithoutDivision)
{
    EXPECT_SAME_BITS(S3D(2.0f, 4.0f, 6.0f), S4D(2.0f, 4.0f, 6.0f, 2.0f).GetS3DNotDivideW());
}

TEST(S4D, ColourIsXYZWAsRGBA)
{
    EXPECT_SAME_BITS(SColor(0.1f, 0.2f, 0.3f, 0.4f), S4D(0.1f, 0.2f, 0.3f, 0.4f).GetSColor());
}
