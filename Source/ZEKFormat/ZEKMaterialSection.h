#pragma once

#include "ZEKFormat/ZEKRecords.h"
#include "ZEKFormat/ZEKReflectionProbeSection.h"
#include "ZEKFormat/ZEKVersion.h"

/// The materials of a model file. What each function is given is a `CZEKWalk`, or its fields.
namespace zek
{

constexpr bool HasRoughnessIndex(EZEKShaderType shaderType, int version)
{
    return shaderType == EZEKShaderType::Shader7 ||
           (shaderType == EZEKShaderType::Shader0 && version >= version::MaterialRoughnessIndex);
}

/// Walks how a texture is placed. The V offset comes back flipped, 1 - offset - scale, from version
/// 19 on and for a V scale below 1.
template <typename Fields>
[[gnu::always_inline]] inline STextureTransform
WalkTextureTransform(Fields& fields, int version, const char* scaleName, const char* offsetName)
{
    STextureTransform transform;
    transform.scale = fields.UV(scaleName);
    transform.offset = fields.UV(offsetName);
    if (version >= version::MaterialFlippedOffset || transform.scale.v < 1.0f)
        transform.offset.v = 1.0f - transform.offset.v - transform.scale.v;
    return transform;
}

/// Walks what all materials have. The format demands for each of them the bytes of one of shader
/// type 7, though most have no roughness index.
///
/// Inline, so that values are not even read when the sink does not look at them: 10 MB of materials
/// take half the instructions.
template <typename Fields>
[[gnu::always_inline]] inline void
WalkMaterialFields(Fields& fields, int version, SZEKMaterial& material)
{
    material.shaderType = static_cast<EZEKShaderType>(
        fields.Int("shaderType", static_cast<int>(EZEKShaderType::Shader7)));
    material.blendMode = static_cast<EZEKBlendMode>(fields.Int("blendMode"));
    material.cutoff = fields.Float("cutoff");
    if (version >= version::MaterialFirstFlag)
        material.firstFlag = fields.Flag("firstFlag");
    if (version >= version::MaterialSecondFlag)
        material.secondFlag = fields.Flag("secondFlag");
    fields.Flag("thirdFlag");
    material.color = fields.Color("color");
    material.emissionColor = fields.Color("emissionColor");
    material.mainTextureIndex = fields.Int("mainTextureIndex");
    material.normalTextureIndex = fields.Int("normalTextureIndex");
    material.emissionTextureIndex = fields.Int("emissionTextureIndex");
    // Measuring these fields, which have one, has set it.
    material.roughnessTextureIndex = NoTexture;
    if (HasRoughnessIndex(material.shaderType, version))
        material.roughnessTextureIndex = fields.Int("roughnessTextureIndex");
    if (material.shaderType == EZEKShaderType::Shader1 && version >= version::MaterialShader1Block)
        fields.Int("shader1Index");
    if (version >= version::MaterialMainTransform)
        material.mainTransform =
            WalkTextureTransform(fields, version, "mainTextureScale", "mainTextureOffset");
    if (version >= version::MaterialSecondTransform)
        material.secondTransform =
            WalkTextureTransform(fields, version, "secondTextureScale", "secondTextureOffset");
}

template <typename Walk>
bool WalkUVList(Walk& walk)
{
    int hasUVList;
    if (!walk.Int("hasUVList", hasUVList))
        return false;
    if (hasUVList == 0)
        return true;

    int count;
    const auto walkFields = [&](auto& fields)
    {
        fields.Floats("uvListFloats", 2);
        count = fields.Int("uvCount");
    };
    return walk.Block("uvList", walkFields) &&
           walk.Array(
               "uvs", count, [](auto& fields) { fields.UV(""); }, [] {});
}

template <typename Walk>
bool WalkShader1Parameters(Walk& walk, int version)
{
    const auto walkFields = [](auto& fields)
    {
        fields.Floats("parameters.firstFloats", 2);
        fields.Color("parameters.firstColor");
        fields.Floats("parameters.secondFloats", 3);
        fields.Int("parameters.int");
        fields.Color("parameters.secondColor");
        fields.Float("parameters.lastFloat");
    };
    if (!walk.Block("parameters", walkFields))
        return false;
    if (version < version::MaterialShader1SubBlock)
        return true;

    int hasSubBlock;
    if (!walk.Int("parameters.hasSubBlock", hasSubBlock))
        return false;
    const auto walkSubBlock = [](auto& fields)
    {
        fields.Floats("parameters.subBlock.floats", 2);
        fields.Int("parameters.subBlock.int");
        fields.UV("parameters.subBlock.uv");
    };
    return hasSubBlock != 1 || walk.Block("parameters.subBlock", walkSubBlock);
}

template <typename Walk>
bool WalkShader2Parameters(Walk& walk, int version)
{
    const auto walkFields = [](auto& fields)
    {
        fields.Color("parameters.firstColor");
        fields.Floats("parameters.firstFloats", 2);
    };
    const auto walkNewFields = [](auto& fields)
    {
        fields.Color("parameters.secondColor");
        fields.Floats("parameters.secondFloats", 3);
        fields.Color("parameters.thirdColor");
    };
    return walk.Block("parameters", walkFields) &&
           (version < version::MaterialSecondColor || walk.Block("parameters", walkNewFields));
}

template <typename Walk>
bool WalkShader3Parameters(Walk& walk)
{
    const auto walkFields = [](auto& fields)
    {
        fields.Color("parameters.firstColor");
        fields.Color("parameters.secondColor");
        fields.Floats("parameters.floats", 5);
    };
    return walk.Block("parameters", walkFields);
}

template <typename Walk>
bool WalkShader6Parameters(Walk& walk)
{
    const auto walkFields = [](auto& fields)
    {
        fields.Float("parameters.float");
        fields.Int("parameters.int");
    };
    return walk.Block("parameters", walkFields);
}

/// Walks what a material record ends with. A shader type that is not known has nothing.
template <typename Walk>
bool WalkShaderParameters(Walk& walk, int version, EZEKShaderType shaderType)
{
    switch (shaderType)
    {
    case EZEKShaderType::Shader0:
    case EZEKShaderType::Shader7:
        return version < version::MaterialRoughnessParameters ||
               walk.Block("parameters", [](auto& f) { f.Floats("parameters.floats", 2); });
    case EZEKShaderType::Shader1:
        return version < version::MaterialShader1Block || WalkShader1Parameters(walk, version);
    case EZEKShaderType::Shader2:
        return WalkShader2Parameters(walk, version);
    case EZEKShaderType::Shader3:
        return WalkShader3Parameters(walk);
    case EZEKShaderType::Shader6:
        return WalkShader6Parameters(walk);
    case EZEKShaderType::Shader4:
    case EZEKShaderType::Shader5:
        break;
    }
    return true;
}

template <typename Walk>
bool WalkMaterial(Walk& walk, int version)
{
    std::string_view name;
    if (!walk.Text("name", name))
        return false;
    SZEKMaterial material;
    material.name = name;
    if (!walk.Block(
            "material", [&](auto& fields) { WalkMaterialFields(fields, version, material); }))
        return false;
    if (version >= version::MaterialUVList && !WalkUVList(walk))
        return false;
    int legacyInt;
    if (version >= version::MaterialLegacyInt && version < version::MaterialNoLegacyInt &&
        !walk.Int("legacyInt", legacyInt))
        return false;
    if (!WalkShaderParameters(walk, version, material.shaderType))
        return false;
    walk.GetSink().Material(material);
    return true;
}

/// Walks the materials and, where the version has it between their count and the first of them, the
/// reflection-probe section.
template <typename Walk>
bool WalkMaterialList(Walk& walk, int version)
{
    walk.GetSink().BeginSection("materials");
    int count;
    if (!walk.Int("materialCount", count))
        return false;
    if (version >= version::ReflectionProbeCount && version < version::TexturesOnly)
    {
        if (!WalkReflectionProbes(walk, version))
            return false;
        walk.GetSink().BeginSection("materials");
    }
    return walk.Records("materials", count, [&](int) { return WalkMaterial(walk, version); });
}

} // namespace zek
