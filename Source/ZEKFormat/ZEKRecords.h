#pragma once

#include <array>
#include <string>
#include <string_view>

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SColor.h"
#include "Independent/Math3D/SColor32.h"
#include "Independent/Math3D/SQuaternion.h"
#include "Independent/Math3D/SUV.h"
#include "ZEKFormat/EZEKBlendMode.h"
#include "ZEKFormat/EZEKColliderShape.h"
#include "ZEKFormat/EZEKColliderType.h"
#include "ZEKFormat/EZEKShaderType.h"
#include "ZEKFormat/STextureTransform.h"
#include "ZEKFormat/SZEKFlags.h"
#include "ZEKFormat/SZEKPlace.h"

/// What the records of a model file come to while they are walked: those of their fields that mean
/// something, in file order. What the file's version does not have keeps the value given here.
/// Texts are valid until the walk comes to the next one, and no record has two.
namespace zek
{

// The indices of what a record does not have.
constexpr int NoNode = -1;
constexpr int NoMesh = -1;
constexpr int NoTexture = -1;

struct SZEKHeader
{
    int version = 0;
    SZEKPlace processedMarker; ///< nowhere before version 21
    int processedMarkerValue = 0;
};

struct SZEKCollider
{
    EZEKColliderShape shape = EZEKColliderShape::None;
    EZEKColliderType type = EZEKColliderType(0);
    S3D center;
    S3D size;
};

struct SZEKNode
{
    std::string_view name;
    S3D localPos;
    SQuaternion localRotate;
    S3D localScale;
    int parentNodeIndex = NoNode;
    int meshIndex = NoMesh;
    SZEKCollider collider;
};

/// The start of a mesh: what its vertices consist of.
struct SZEKMeshHeader
{
    int vertexCount = 0;
    bool hasNormal = false;
    bool hasTangent = false;
    bool hasUV = false;
    bool hasUV2 = false;
    bool hasColor = false;
    bool hasBoneWeight = false;
};

/// A vertex; what the mesh does not have is as it was.
struct SZEKVertex
{
    S3D pos;
    S3D normal;
    S3D tangent;
    SUV uv;
    SUV uv2;
    math3d::SColor32 color;
    std::array<short, 4> boneIndices = {};
    std::array<float, 4> boneWeights = {};
};

struct SZEKMaterial
{
    std::string_view name;
    EZEKShaderType shaderType = EZEKShaderType::Shader0;
    EZEKBlendMode blendMode = EZEKBlendMode(0);
    float cutoff = 0.0f;
    bool firstFlag = false;
    bool secondFlag = true;
    SColor color;
    SColor emissionColor;
    int mainTextureIndex = NoTexture;
    int normalTextureIndex = NoTexture;
    int emissionTextureIndex = NoTexture;
    int roughnessTextureIndex = NoTexture;
    STextureTransform mainTransform;
    STextureTransform secondTransform;
};

struct SZEKTexture
{
    std::string_view name;
    int clamp = 0;
    SZEKFlags flags; ///< nowhere before version 5
};

struct SZEKLightmap
{
    std::string_view name;
    SZEKFlags flags;
};

struct SZEKProbe
{
    int index = 0;
    bool hasName = false; ///< from version 26 on
    std::string_view name;
    SZEKFlags flags; ///< nowhere before version 16
};

/// Returns the name of a probe: before version 26, its index in decimal.
inline std::string GetProbeName(const SZEKProbe& probe)
{
    return probe.hasName ? std::string(probe.name) : std::to_string(probe.index);
}

} // namespace zek
