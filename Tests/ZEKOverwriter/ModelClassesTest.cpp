// The classes that hold what a model file holds: each keeps what its constructor is given.

#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "ZEKOverwriter/CZEKBoneWeight.h"
#include "ZEKOverwriter/CZEKCollider.h"
#include "ZEKOverwriter/CZEKMaterial.h"
#include "ZEKOverwriter/CZEKMesh.h"
#include "ZEKOverwriter/CZEKMorph.h"
#include "ZEKOverwriter/CZEKNode.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/CZEKPrimitive.h"
#include "ZEKOverwriter/CZEKTexture.h"

using namespace zek;

namespace
{

/// What all the classes have in common.
template <typename Class>
constexpr bool IsValueWithVirtualDestructor = std::conjunction_v<
    std::is_polymorphic<Class>,
    std::has_virtual_destructor<Class>,
    std::is_copy_constructible<Class>,
    std::is_copy_assignable<Class>,
    std::is_nothrow_move_constructible<Class>,
    std::is_nothrow_move_assignable<Class>,
    std::negation<std::is_default_constructible<Class>>>;

static_assert(IsValueWithVirtualDestructor<CZEKTexture>);
static_assert(IsValueWithVirtualDestructor<CZEKMaterial>);
static_assert(IsValueWithVirtualDestructor<CZEKMesh>);
static_assert(IsValueWithVirtualDestructor<CZEKPrimitive>);
static_assert(IsValueWithVirtualDestructor<CZEKBoneWeight>);
static_assert(IsValueWithVirtualDestructor<CZEKMorph>);
static_assert(IsValueWithVirtualDestructor<CZEKNode>);
static_assert(IsValueWithVirtualDestructor<CZEKCollider>);
static_assert(std::has_virtual_destructor_v<CZEKOverwriter>);

/// Tells whether a getter can be called on a const object and returns just this type.
template <typename Result, typename Class, typename Getter>
constexpr bool IsGetter(Getter (Class::*)() const)
{
    return std::is_same_v<Result, Getter>;
}

static_assert(IsGetter<const std::string&>(&CZEKTexture::GetFileName));
static_assert(IsGetter<bool>(&CZEKTexture::IsClamp));
static_assert(IsGetter<const std::vector<int>&>(&CZEKTexture::GetTextureCompressionSupportedList));

static_assert(IsGetter<const std::string&>(&CZEKMaterial::GetName));
static_assert(IsGetter<EZEKShaderType>(&CZEKMaterial::GetShaderType));
static_assert(IsGetter<EZEKBlendMode>(&CZEKMaterial::GetBlendMode));
static_assert(IsGetter<float>(&CZEKMaterial::GetCutoff));
static_assert(IsGetter<bool>(&CZEKMaterial::IsDoubleSided));
static_assert(IsGetter<bool>(&CZEKMaterial::IsUseVertexColor));
static_assert(IsGetter<const SColor&>(&CZEKMaterial::GetColor));
static_assert(IsGetter<const SColor&>(&CZEKMaterial::GetEmissionColor));
static_assert(IsGetter<int>(&CZEKMaterial::GetTextureIndexMain));
static_assert(IsGetter<int>(&CZEKMaterial::GetTextureIndexNormal));
static_assert(IsGetter<int>(&CZEKMaterial::GetTextureIndexEmission));
static_assert(IsGetter<int>(&CZEKMaterial::GetTextureIndexRoughness));
static_assert(IsGetter<const SUV&>(&CZEKMaterial::GetTextureScaleMain));
static_assert(IsGetter<const SUV&>(&CZEKMaterial::GetTextureOffsetMain));
static_assert(IsGetter<const SUV&>(&CZEKMaterial::GetTexture1ScaleMain));
static_assert(IsGetter<const SUV&>(&CZEKMaterial::GetTexture1OffsetMain));

static_assert(IsGetter<const std::vector<S3D>&>(&CZEKMesh::GetPosList));
static_assert(IsGetter<const std::vector<S3D>&>(&CZEKMesh::GetNormalList));
static_assert(IsGetter<const std::vector<S3D>&>(&CZEKMesh::GetTangentList));
static_assert(IsGetter<const std::vector<SUV>&>(&CZEKMesh::GetUVList));
static_assert(IsGetter<const std::vector<SUV>&>(&CZEKMesh::GetUV2List));
static_assert(IsGetter<const std::vector<math3d::SColor32>&>(&CZEKMesh::GetColorList));
static_assert(IsGetter<const std::vector<CZEKBoneWeight>&>(&CZEKMesh::GetBoneWeightList));
static_assert(IsGetter<const std::vector<CZEKPrimitive>&>(&CZEKMesh::GetZEKPrimitiveList));
static_assert(IsGetter<const std::vector<CZEKMorph>&>(&CZEKMesh::GetMorphList));
static_assert(IsGetter<const S3D&>(&CZEKMesh::GetBoundingBoxMinPos));
static_assert(IsGetter<const S3D&>(&CZEKMesh::GetBoundingBoxMaxPos));
static_assert(IsGetter<int>(&CZEKMesh::GetLightmapIndex));
static_assert(IsGetter<const S2D&>(&CZEKMesh::GetLightmapScale));
static_assert(IsGetter<const S2D&>(&CZEKMesh::GetLightmapOffset));

static_assert(IsGetter<int>(&CZEKPrimitive::GetMaterialIndex));
static_assert(IsGetter<const std::vector<unsigned short>&>(&CZEKPrimitive::GetIndexListUSHORT));
static_assert(IsGetter<const std::vector<int>&>(&CZEKPrimitive::GetIndexListINT));

static_assert(IsGetter<const std::array<short, 4>&>(&CZEKBoneWeight::GetIndexList));
static_assert(IsGetter<const std::array<float, 4>&>(&CZEKBoneWeight::GetWeightList));

static_assert(IsGetter<const std::string&>(&CZEKMorph::GetName));
static_assert(IsGetter<const std::vector<S3D>&>(&CZEKMorph::GetPosList));

static_assert(IsGetter<const std::string&>(&CZEKNode::GetName));
static_assert(IsGetter<const S3D&>(&CZEKNode::GetLocalPos));
static_assert(IsGetter<const SQuaternion&>(&CZEKNode::GetLocalRotate));
static_assert(IsGetter<const S3D&>(&CZEKNode::GetLocalScale));
static_assert(IsGetter<int>(&CZEKNode::GetParentNodeIndex));
static_assert(IsGetter<int>(&CZEKNode::GetMeshIndex));
static_assert(IsGetter<const CZEKCollider&>(&CZEKNode::GetCollider));

static_assert(IsGetter<EZEKColliderShape>(&CZEKCollider::GetShape));
static_assert(IsGetter<EZEKColliderType>(&CZEKCollider::GetType));
static_assert(IsGetter<const S3D&>(&CZEKCollider::GetCenter));
static_assert(IsGetter<const S3D&>(&CZEKCollider::GetSize));

/// Hands an object, and others made of it by each way to copy and to move, to a check, which
/// compares every field.
template <typename Class, typename Check>
void ExpectCopiesAreAlike(const Class& object, const Class& other, const Check& check)
{
    check(object);
    Class copy(object);
    check(copy);
    const Class moved(std::move(copy));
    check(moved);
    Class assigned = other;
    assigned = object;
    check(assigned);
    Class movedTo = other;
    movedTo = std::move(assigned);
    check(movedTo);
}

CZEKCollider MakeCollider()
{
    return CZEKCollider(
        EZEKColliderShape::Sphere, static_cast<EZEKColliderType>(7), S3D(1.0f, 2.0f, 3.0f),
        S3D(4.0f, 5.0f, 6.0f));
}

CZEKCollider MakeOtherCollider()
{
    return CZEKCollider(EZEKColliderShape::None, static_cast<EZEKColliderType>(0), S3D(), S3D());
}

void CheckCollider(const CZEKCollider& collider)
{
    EXPECT_EQ(EZEKColliderShape::Sphere, collider.GetShape());
    EXPECT_EQ(static_cast<EZEKColliderType>(7), collider.GetType());
    EXPECT_EQ(S3D(1.0f, 2.0f, 3.0f), collider.GetCenter());
    EXPECT_EQ(S3D(4.0f, 5.0f, 6.0f), collider.GetSize());
}

CZEKBoneWeight MakeBoneWeight()
{
    return CZEKBoneWeight({1, -2, 3, 32767}, {0.5f, 0.25f, 0.125f, 0.0f});
}

void CheckBoneWeight(const CZEKBoneWeight& boneWeight)
{
    EXPECT_EQ((std::array<short, 4>{1, -2, 3, 32767}), boneWeight.GetIndexList());
    EXPECT_EQ((std::array<float, 4>{0.5f, 0.25f, 0.125f, 0.0f}), boneWeight.GetWeightList());
}

CZEKPrimitive MakePrimitive()
{
    const std::vector<unsigned short> shortIndices = {0, 1, 65535};
    const std::vector<int> indices = {65536, 2};
    return CZEKPrimitive(5, shortIndices, indices);
}

void CheckPrimitive(const CZEKPrimitive& primitive)
{
    EXPECT_EQ(5, primitive.GetMaterialIndex());
    EXPECT_EQ((std::vector<unsigned short>{0, 1, 65535}), primitive.GetIndexListUSHORT());
    EXPECT_EQ((std::vector<int>{65536, 2}), primitive.GetIndexListINT());
}

CZEKMorph MakeMorph()
{
    const std::string name = "smile";
    const std::vector<S3D> positions = {S3D(1.0f, 2.0f, 3.0f), S3D(4.0f, 5.0f, 6.0f)};
    return CZEKMorph(name, positions);
}

void CheckMorph(const CZEKMorph& morph)
{
    EXPECT_EQ("smile", morph.GetName());
    EXPECT_EQ((std::vector<S3D>{S3D(1.0f, 2.0f, 3.0f), S3D(4.0f, 5.0f, 6.0f)}), morph.GetPosList());
}

CZEKMesh MakeMesh()
{
    return CZEKMesh(
        {S3D(1.0f, 0.0f, 0.0f)}, {S3D(2.0f, 0.0f, 0.0f)}, {S3D(3.0f, 0.0f, 0.0f)},
        {SUV(4.0f, 0.5f)}, {SUV(5.0f, 0.5f)}, {math3d::SColor32(6, 7, 8, 9)}, {MakeBoneWeight()},
        {MakePrimitive()}, {MakeMorph()}, S3D(10.0f, 0.0f, 0.0f), S3D(11.0f, 0.0f, 0.0f), 12,
        S2D(13.0f, 0.5f), S2D(14.0f, 0.5f));
}

CZEKMesh MakeOtherMesh()
{
    return CZEKMesh({}, {}, {}, {}, {}, {}, {}, {}, {}, S3D(), S3D(), -1, S2D(), S2D());
}

void CheckMesh(const CZEKMesh& mesh)
{
    EXPECT_EQ((std::vector<S3D>{S3D(1.0f, 0.0f, 0.0f)}), mesh.GetPosList());
    EXPECT_EQ((std::vector<S3D>{S3D(2.0f, 0.0f, 0.0f)}), mesh.GetNormalList());
    EXPECT_EQ((std::vector<S3D>{S3D(3.0f, 0.0f, 0.0f)}), mesh.GetTangentList());
    EXPECT_EQ((std::vector<SUV>{SUV(4.0f, 0.5f)}), mesh.GetUVList());
    EXPECT_EQ((std::vector<SUV>{SUV(5.0f, 0.5f)}), mesh.GetUV2List());
    ASSERT_EQ(1u, mesh.GetColorList().size());
    EXPECT_EQ(6, mesh.GetColorList()[0].r);
    EXPECT_EQ(7, mesh.GetColorList()[0].g);
    EXPECT_EQ(8, mesh.GetColorList()[0].b);
    EXPECT_EQ(9, mesh.GetColorList()[0].a);
    ASSERT_EQ(1u, mesh.GetBoneWeightList().size());
    CheckBoneWeight(mesh.GetBoneWeightList()[0]);
    ASSERT_EQ(1u, mesh.GetZEKPrimitiveList().size());
    CheckPrimitive(mesh.GetZEKPrimitiveList()[0]);
    ASSERT_EQ(1u, mesh.GetMorphList().size());
    CheckMorph(mesh.GetMorphList()[0]);
    EXPECT_EQ(S3D(10.0f, 0.0f, 0.0f), mesh.GetBoundingBoxMinPos());
    EXPECT_EQ(S3D(11.0f, 0.0f, 0.0f), mesh.GetBoundingBoxMaxPos());
    EXPECT_EQ(12, mesh.GetLightmapIndex());
    EXPECT_EQ(S2D(13.0f, 0.5f), mesh.GetLightmapScale());
    EXPECT_EQ(S2D(14.0f, 0.5f), mesh.GetLightmapOffset());
}

CZEKMaterial MakeMaterial(bool isDoubleSided, bool isUseVertexColor)
{
    return CZEKMaterial(
        "skin", static_cast<EZEKShaderType>(3), static_cast<EZEKBlendMode>(4), 0.5f, isDoubleSided,
        isUseVertexColor, SColor(1.0f, 2.0f, 3.0f, 4.0f), SColor(5.0f, 6.0f, 7.0f, 8.0f), 9, 10, 11,
        12, SUV(13.0f, 14.0f), SUV(15.0f, 16.0f), SUV(17.0f, 18.0f), SUV(19.0f, 20.0f));
}

void CheckMaterial(const CZEKMaterial& material)
{
    EXPECT_EQ("skin", material.GetName());
    EXPECT_EQ(static_cast<EZEKShaderType>(3), material.GetShaderType());
    EXPECT_EQ(static_cast<EZEKBlendMode>(4), material.GetBlendMode());
    EXPECT_EQ(0.5f, material.GetCutoff());
    EXPECT_TRUE(material.IsDoubleSided());
    EXPECT_FALSE(material.IsUseVertexColor());
    EXPECT_EQ(SColor(1.0f, 2.0f, 3.0f, 4.0f), material.GetColor());
    EXPECT_EQ(SColor(5.0f, 6.0f, 7.0f, 8.0f), material.GetEmissionColor());
    EXPECT_EQ(9, material.GetTextureIndexMain());
    EXPECT_EQ(10, material.GetTextureIndexNormal());
    EXPECT_EQ(11, material.GetTextureIndexEmission());
    EXPECT_EQ(12, material.GetTextureIndexRoughness());
    EXPECT_EQ(SUV(13.0f, 14.0f), material.GetTextureScaleMain());
    EXPECT_EQ(SUV(15.0f, 16.0f), material.GetTextureOffsetMain());
    EXPECT_EQ(SUV(17.0f, 18.0f), material.GetTexture1ScaleMain());
    EXPECT_EQ(SUV(19.0f, 20.0f), material.GetTexture1OffsetMain());
}

CZEKMaterial MakeOtherMaterial()
{
    return CZEKMaterial(
        "", EZEKShaderType(), EZEKBlendMode(), 0.0f, false, true, SColor(), SColor(), -1, -1, -1,
        -1, SUV(), SUV(), SUV(), SUV());
}

} // namespace

TEST(CZEKTexture, KeepsEveryField)
{
    ExpectCopiesAreAlike(
        CZEKTexture("wood.png", true, {1, 0, 0, 255}), CZEKTexture("", false, {}),
        [](const CZEKTexture& texture)
        {
            EXPECT_EQ("wood.png", texture.GetFileName());
            EXPECT_TRUE(texture.IsClamp());
            EXPECT_EQ(
                (std::vector<int>{1, 0, 0, 255}), texture.GetTextureCompressionSupportedList());
        });
    EXPECT_FALSE(CZEKTexture("wood.png", false, {1, 1, 1, 1}).IsClamp());
}

TEST(CZEKMaterial, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakeMaterial(true, false), MakeOtherMaterial(), CheckMaterial);
}

TEST(CZEKMaterial, TellsItsTwoFlagsApart)
{
    EXPECT_FALSE(MakeMaterial(false, true).IsDoubleSided());
    EXPECT_TRUE(MakeMaterial(false, true).IsUseVertexColor());
}

TEST(CZEKMesh, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakeMesh(), MakeOtherMesh(), CheckMesh);
}

TEST(CZEKMesh, CopyHasListsOfItsOwn)
{
    const CZEKMesh mesh = MakeMesh();
    const CZEKMesh copy(mesh);
    EXPECT_NE(mesh.GetPosList().data(), copy.GetPosList().data());
    EXPECT_NE(mesh.GetZEKPrimitiveList().data(), copy.GetZEKPrimitiveList().data());
    EXPECT_NE(
        mesh.GetZEKPrimitiveList()[0].GetIndexListINT().data(),
        copy.GetZEKPrimitiveList()[0].GetIndexListINT().data());
}

TEST(CZEKPrimitive, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakePrimitive(), CZEKPrimitive(-1, {}, {}), CheckPrimitive);
}

TEST(CZEKPrimitive, KeepsListsThatItTakesOver)
{
    CheckPrimitive(CZEKPrimitive(5, std::vector<unsigned short>{0, 1, 65535}, {65536, 2}));
}

TEST(CZEKBoneWeight, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakeBoneWeight(), CZEKBoneWeight({}, {}), CheckBoneWeight);
}

TEST(CZEKMorph, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakeMorph(), CZEKMorph("", {}), CheckMorph);
}

TEST(CZEKMorph, KeepsNameAndListThatItTakesOver)
{
    CheckMorph(CZEKMorph(
        std::string("smile"), std::vector<S3D>{S3D(1.0f, 2.0f, 3.0f), S3D(4.0f, 5.0f, 6.0f)}));
}

TEST(CZEKNode, KeepsEveryField)
{
    const CZEKNode node(
        "hip", S3D(1.0f, 2.0f, 3.0f), SQuaternion(4.0f, 5.0f, 6.0f, 7.0f), S3D(8.0f, 9.0f, 10.0f),
        11, 12, MakeCollider());
    const CZEKNode other("", S3D(), SQuaternion(), S3D(), -1, -1, MakeOtherCollider());
    ExpectCopiesAreAlike(
        node, other,
        [](const CZEKNode& copy)
        {
            EXPECT_EQ("hip", copy.GetName());
            EXPECT_EQ(S3D(1.0f, 2.0f, 3.0f), copy.GetLocalPos());
            EXPECT_EQ(4.0f, copy.GetLocalRotate().x);
            EXPECT_EQ(5.0f, copy.GetLocalRotate().y);
            EXPECT_EQ(6.0f, copy.GetLocalRotate().z);
            EXPECT_EQ(7.0f, copy.GetLocalRotate().w);
            EXPECT_EQ(S3D(8.0f, 9.0f, 10.0f), copy.GetLocalScale());
            EXPECT_EQ(11, copy.GetParentNodeIndex());
            EXPECT_EQ(12, copy.GetMeshIndex());
            CheckCollider(copy.GetCollider());
        });
}

TEST(CZEKCollider, KeepsEveryField)
{
    ExpectCopiesAreAlike(MakeCollider(), MakeOtherCollider(), CheckCollider);
}
