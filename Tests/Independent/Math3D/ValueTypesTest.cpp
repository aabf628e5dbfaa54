#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/Math3D/CBezier.h"
#include "Independent/Math3D/CBoundingBox.h"
#include "Independent/Math3D/CCamera.h"
#include "Independent/Math3D/CDualQuaternion.h"
#include "Independent/Math3D/CProjection.h"
#include "Independent/Math3D/CSphere.h"
#include "Independent/Math3D/CTransform.h"
#include "Independent/Math3D/S2D.h"
#include "Independent/Math3D/S2DI.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/S4D.h"
#include "Independent/Math3D/SColor.h"
#include "Independent/Math3D/SColor32.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SPlane.h"
#include "Independent/Math3D/SQuaternion.h"
#include "Independent/Math3D/SRect.h"
#include "Independent/Math3D/SSize.h"
#include "Independent/Math3D/SUV.h"

// What holds for all types alike: to compile is the test.

using namespace math3d;

namespace
{

// What takes no root and no angle is a constant expression, for the types without a virtual
// destructor, of which there may be constants at all.
constexpr S3D Sum = S3D(1.0f, 2.0f, 3.0f) + S3D(1.0f, 1.0f, 1.0f);
constexpr SQuaternion Conjugate = SQuaternion(1.0f, 2.0f, 3.0f, 4.0f).GetInverse();
constexpr SMatrix Move = SMatrix::CreateMove(S3D(1.0f, 2.0f, 3.0f));
constexpr S4D Moved = S4D(S3D(1.0f, 1.0f, 1.0f)) * Move;

constexpr S3D MoveInPlace(S3D point, const SMatrix& matrix)
{
    point *= matrix;
    return point;
}

constexpr SUV AddInPlace(SUV sum, const SUV& other)
{
    sum += other;
    return sum;
}

constexpr SColor ModulateInPlace(SColor product, const SColor& other)
{
    product *= other;
    return product;
}

static_assert(Sum == S3D(2.0f, 3.0f, 4.0f));
static_assert(Conjugate.x == -1.0f && Conjugate.w == 4.0f);
static_assert(Move.GetMove() == S3D(1.0f, 2.0f, 3.0f));
static_assert(Moved.GetS3D() == S3D(2.0f, 3.0f, 4.0f));
static_assert(Move.GetOpenGLMatrix().GetMove() == S3D(1.0f, 2.0f, -3.0f));
static_assert(MoveInPlace(S3D(1.0f, 1.0f, 1.0f), Move) == S3D(2.0f, 3.0f, 4.0f));
static_assert(S3D(1.0f, 2.0f, 3.0f).MulMatrixRot(Move) == S3D(1.0f, 2.0f, 3.0f));
static_assert(SQuaternion().GetMatrix() == SMatrix());
static_assert(AddInPlace(SUV(1.0f, 2.0f), SUV(1.0f, 1.0f)) == SUV(2.0f, 3.0f));
static_assert(SRect(1, 2, 3, 4) != SRect());
static_assert(SPlane(0.0f, 1.0f, 0.0f, 0.0f).TestFrontPos(S3D()));
static_assert(SColor::Lerp(SColor(), SColor(), 0.5f) == SColor());
static_assert(
    ModulateInPlace(SColor(1.0f, 2.0f, 3.0f, 4.0f), SColor(5.0f, 6.0f, 7.0f, 8.0f)) ==
    SColor(5.0f, 12.0f, 21.0f, 32.0f));
static_assert(SColor(1.0f, 0.0f, 0.0f, 0.0f).GetDWORD() == 0x00FF0000);
static_assert(SColor(1.0f, 0.0f, 0.0f, 0.0f).GetRGBA() == 0x000000FF);

template <typename Type>
constexpr void CheckSpecialMembers()
{
    constexpr bool holdsAList = std::is_same_v<Type, CProjection>;
    static_assert(std::is_nothrow_default_constructible_v<Type>);
    static_assert(std::is_copy_constructible_v<Type>);
    static_assert(std::is_copy_assignable_v<Type>);
    static_assert(std::is_nothrow_copy_constructible_v<Type> != holdsAList);
    static_assert(std::is_nothrow_copy_assignable_v<Type> != holdsAList);
    static_assert(std::is_nothrow_move_constructible_v<Type>);
    static_assert(std::is_nothrow_move_assignable_v<Type>);
    static_assert(std::is_nothrow_destructible_v<Type>);
    // A plain type is plain in all respects.
    static_assert(std::is_trivially_copyable_v<Type> != std::has_virtual_destructor_v<Type>);
}

template <typename... Types>
constexpr void CheckSpecialMembersOfAll()
{
    (CheckSpecialMembers<Types>(), ...);
}

} // namespace

TEST(ValueTypes, AreCopiedAndMovedWithoutExceptions)
{
    CheckSpecialMembersOfAll<
        S2D, S2DI, S3D, S4D, SUV, SSize, SRect, SColor, SColor32, SMatrix, SQuaternion, SPlane,
        CDualQuaternion, CTransform, CSphere, CBoundingBox, CBezier, CCamera, CProjection>();
}
