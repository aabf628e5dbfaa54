#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Support/CModelFields.h"
#include "Support/SModel.h"

/// What a model file of each version consists of, for the tests: field by field, with the names of
/// the listing. `CModelBuilder` writes a model by it and `CModelMap` reads one, whichever is given
/// as the codec. It shares nothing with the library's own walk, so that either shows a mistake in
/// the other.
///
/// The codec demands each field by itself where no demand for a whole block precedes it.
namespace testsupport
{

template <typename Codec>
void DescribeFlag(Codec& codec, const char* name, unsigned char& value)
{
    codec.Bytes(name, &value, 1);
}

template <typename Codec>
void DescribeStreamFlags(Codec& codec, StreamFlags& streams)
{
    const char* const names[] = {"hasNormal", "hasTangent", "hasUV",
                                 "hasUV2",    "hasColor",   "hasBoneWeight"};
    for (std::size_t i = 0; i < streams.size(); ++i)
        DescribeFlag(codec, names[i], streams[i]);
}

template <typename Codec>
void DescribeFlags(Codec& codec, Flags& flags)
{
    codec.Demand("flags", 4);
    codec.Bytes("flags", flags.data(), 4);
}

template <typename Codec>
void DescribeIndices(Codec& codec, int vertexCount, std::vector<int>& indices)
{
    const bool isWide = vertexCount > 65536;
    const SCount count = codec.Count("indexCount", indices);
    codec.Array(
        "indices", isWide ? 4 : 2, count.value,
        [&](std::size_t i)
        {
            if (i == indices.size())
                indices.emplace_back();
            if (isWide)
                codec.Int("", indices[i]);
            else
                codec.Word("", indices[i]);
        });
}

template <typename Codec>
void DescribeSimpleMesh(Codec& codec, SSimpleMesh& mesh)
{
    codec.Demand("header", 10);
    codec.Int("vertexCount", mesh.vertexCount);
    DescribeStreamFlags(codec, mesh.streams);

    // One vertex is demanded of every mesh, and then each where it is read.
    const int vertexSize = mesh.streams[0] != 0 ? 24 : 12;
    codec.Demand("vertices", vertexSize);
    codec.ArrayOneByOne(
        "vertices", vertexSize, mesh.vertexCount,
        [&](std::size_t)
        {
            codec.Floats("position", 3);
            if (mesh.streams[0] != 0)
                codec.Floats("normal", 3);
        });
    codec.Records(
        "primitives", codec.Count("primitiveCount", mesh.primitives), mesh.primitives,
        [&](std::vector<int>& indices) { DescribeIndices(codec, mesh.vertexCount, indices); });
}

template <typename Codec>
void DescribeCollider(Codec& codec, SNode& node)
{
    codec.Demand("collider", 32);
    if (codec.GetVersion() >= 6)
        codec.Int("colliderType", node.colliderType);
    if (codec.GetVersion() >= 23)
        codec.Int("colliderSecondInt", node.colliderSecondInt);
    codec.Floats("colliderCenter", 3);
    if (node.colliderShape == 1)
        codec.Floats("colliderRadius", 1);
    else
        codec.Floats("colliderSize", 3);
    if (node.colliderShape != 2 || codec.GetVersion() < 20)
        return;
    codec.Int("colliderHasMesh", node.hasMesh);
    if (node.hasMesh == 1)
    {
        codec.Enter("colliderMesh");
        DescribeSimpleMesh(codec, node.mesh);
        codec.Leave();
    }
}

template <typename Codec>
void DescribeNode(Codec& codec, SNode& node)
{
    codec.Text("name", node.name);
    codec.Demand("transform", 52);
    codec.Floats("localPos", 3);
    codec.Floats("localRotate", 4);
    codec.Floats("localScale", 3);
    codec.Int("parentNodeIndex", node.parentIndex);
    codec.Int("meshIndex", node.meshIndex);
    codec.Int("colliderShape", node.colliderShape);
    codec.Expect(
        node.colliderShape >= -1 && node.colliderShape <= 2, "colliderShape", node.colliderShape,
        "-1, 0, 1 or 2");
    if (node.colliderShape != -1)
        DescribeCollider(codec, node);

    if (codec.GetVersion() >= 8)
    {
        codec.Switch("hasOffset", node.offsetFlag);
        if (node.offsetFlag == 1)
            codec.Floats("offset", 3);
    }
    if (codec.GetVersion() >= 12)
    {
        codec.Switch("referenceSelector", node.referenceSelector);
        if (node.referenceSelector == 1)
            codec.Int("selectedReference", node.selectedReference);
        if (node.referenceSelector == 0 && codec.GetVersion() >= 16)
            codec.Int("alternateReference", node.alternateReference);
    }
    if (codec.GetVersion() >= 15)
        codec.Filler("reservedBlock", 20);
    if (codec.GetVersion() >= 17)
        codec.Filler("reservedWord", 4);
}

template <typename Codec>
void DescribeNodeList(Codec& codec, std::vector<SNode>& nodes)
{
    codec.Section("nodes");
    codec.Records(
        "nodes", codec.Count("nodeCount", nodes), nodes,
        [&](SNode& node) { DescribeNode(codec, node); });
}

template <typename Codec>
void DescribeVertex(Codec& codec, const StreamFlags& streams)
{
    codec.Floats("position", 3);
    if (streams[0] != 0)
        codec.Floats("normal", 3);
    if (streams[1] != 0)
        codec.Floats("tangent", 3);
    if (streams[2] != 0)
        codec.Floats("uv", 2);
    if (streams[3] != 0)
        codec.Floats("uv2", 2);
    if (streams[4] != 0)
        codec.Filler("color", 4);
    if (streams[5] != 0)
    {
        codec.Shorts("boneIndices", 4);
        codec.Floats("boneWeights", 4);
    }
}

template <typename Codec>
void DescribeMorph(Codec& codec, int vertexCount, std::string& name)
{
    codec.Text("name", name);
    codec.Array("positions", 12, vertexCount, [&](std::size_t) { codec.Floats("", 3); });
}

template <typename Codec>
void DescribeMesh(Codec& codec, SMesh& mesh)
{
    codec.Demand("header", codec.GetVersion() < 15 ? 30 : 10);
    codec.Int("vertexCount", mesh.vertexCount);
    DescribeStreamFlags(codec, mesh.streams);

    int vertexSize = 12;
    const int streamSizes[] = {12, 12, 8, 8, 4, 24};
    for (std::size_t i = 0; i < mesh.streams.size(); ++i)
        vertexSize += mesh.streams[i] != 0 ? streamSizes[i] : 0;
    codec.Array(
        "vertices", vertexSize, mesh.vertexCount,
        [&](std::size_t) { DescribeVertex(codec, mesh.streams); });
    codec.Demand("boundingBox", 24);
    codec.Floats("boundingBoxMinPos", 3);
    codec.Floats("boundingBoxMaxPos", 3);

    codec.Records(
        "primitives", codec.Count("primitiveCount", mesh.primitives), mesh.primitives,
        [&](SPrimitive& primitive)
        {
            codec.Int("materialIndex", primitive.materialIndex);
            DescribeIndices(codec, mesh.vertexCount, primitive.indices);
        });
    codec.Records(
        "morphs", codec.Count("morphCount", mesh.morphNames), mesh.morphNames,
        [&](std::string& name) { DescribeMorph(codec, mesh.vertexCount, name); });
}

template <typename Codec>
void DescribeMeshList(Codec& codec, std::vector<SMesh>& meshes)
{
    codec.Section("meshes");
    codec.Records(
        "meshes", codec.Count("meshCount", meshes), meshes,
        [&](SMesh& mesh) { DescribeMesh(codec, mesh); });
}

/// A scale or an offset, of which only v has a meaning here.
template <typename Codec>
void DescribeUV(Codec& codec, const char* name, float u, float& v)
{
    float uv[] = {u, v};
    codec.Floats(name, uv, 2);
    v = uv[1];
}

template <typename Codec>
void DescribeMaterialFields(Codec& codec, SMaterial& material)
{
    const int version = codec.GetVersion();
    codec.Demand(
        "material", 61 + (version >= 3 ? 1 : 0) + (version >= 13 ? 1 : 0) +
                        (version >= 4 ? 16 : 0) + (version >= 7 ? 16 : 0));
    codec.Int("shaderType", material.shaderType);
    codec.Int("blendMode", material.blendMode);
    codec.Floats("cutoff", &material.cutoff, 1);
    if (version >= 3)
        DescribeFlag(codec, "firstFlag", material.flags[0]);
    if (version >= 13)
        DescribeFlag(codec, "secondFlag", material.flags[1]);
    DescribeFlag(codec, "thirdFlag", material.flags[2]);
    codec.Floats("color", 4);
    codec.Floats("emissionColor", 4);
    codec.Int("mainTextureIndex", material.mainTextureIndex);
    codec.Int("normalTextureIndex", material.normalTextureIndex);
    codec.Int("emissionTextureIndex", material.emissionTextureIndex);
    if (material.shaderType == 7 || (material.shaderType == 0 && version >= 14))
        codec.Int("roughnessTextureIndex", material.roughnessTextureIndex);
    if (material.shaderType == 1 && version >= 24)
        codec.Int("shader1Index", material.shader1Index);
    if (version >= 4)
    {
        DescribeUV(codec, "mainTextureScale", 1.0f, material.mainScaleV);
        DescribeUV(codec, "mainTextureOffset", 0.0f, material.mainOffsetV);
    }
    if (version >= 7)
    {
        DescribeUV(codec, "secondTextureScale", 1.0f, material.secondScaleV);
        DescribeUV(codec, "secondTextureOffset", 0.0f, material.secondOffsetV);
    }
}

template <typename Codec>
void DescribeUVList(Codec& codec, SMaterial& material)
{
    codec.Int("hasUVList", material.uvListFlag);
    if (material.uvListFlag == 0)
        return;
    codec.Demand("uvList", 12);
    codec.Floats("uvListFloats", 2);
    codec.Int("uvCount", material.uvCount);
    codec.Array("uvs", 8, material.uvCount, [&](std::size_t) { codec.Floats("", 2); });
}

template <typename Codec>
void DescribeShader1Parameters(Codec& codec, SMaterial& material)
{
    codec.Demand("parameters", 60);
    codec.Floats("parameters.firstFloats", 2);
    codec.Floats("parameters.firstColor", 4);
    codec.Floats("parameters.secondFloats", 3);
    codec.Int("parameters.int", material.parameterInt);
    codec.Floats("parameters.secondColor", 4);
    codec.Floats("parameters.lastFloat", 1);
    if (codec.GetVersion() < 25)
        return;
    codec.Int("parameters.hasSubBlock", material.subFlag);
    if (material.subFlag != 1)
        return;
    codec.Demand("parameters.subBlock", 20);
    codec.Floats("parameters.subBlock.floats", 2);
    codec.Int("parameters.subBlock.int", material.parameterInt);
    codec.Floats("parameters.subBlock.uv", 2);
}

template <typename Codec>
void DescribeShader2Parameters(Codec& codec)
{
    codec.Demand("parameters", 24);
    codec.Floats("parameters.firstColor", 4);
    codec.Floats("parameters.firstFloats", 2);
    if (codec.GetVersion() < 9)
        return;
    codec.Demand("parameters", 44);
    codec.Floats("parameters.secondColor", 4);
    codec.Floats("parameters.secondFloats", 3);
    codec.Floats("parameters.thirdColor", 4);
}

template <typename Codec>
void DescribeShader3Parameters(Codec& codec)
{
    codec.Demand("parameters", 52);
    codec.Floats("parameters.firstColor", 4);
    codec.Floats("parameters.secondColor", 4);
    codec.Floats("parameters.floats", 5);
}

template <typename Codec>
void DescribeShader6Parameters(Codec& codec, SMaterial& material)
{
    codec.Demand("parameters", 8);
    codec.Floats("parameters.float", 1);
    codec.Int("parameters.int", material.parameterInt);
}

template <typename Codec>
void DescribeShaderParameters(Codec& codec, SMaterial& material)
{
    if ((material.shaderType == 0 || material.shaderType == 7) && codec.GetVersion() >= 2)
    {
        codec.Demand("parameters", 8);
        codec.Floats("parameters.floats", 2);
    }
    if (material.shaderType == 1 && codec.GetVersion() >= 24)
        DescribeShader1Parameters(codec, material);
    if (material.shaderType == 2)
        DescribeShader2Parameters(codec);
    if (material.shaderType == 3)
        DescribeShader3Parameters(codec);
    if (material.shaderType == 6)
        DescribeShader6Parameters(codec, material);
}

template <typename Codec>
void DescribeMaterial(Codec& codec, SMaterial& material)
{
    codec.Text("name", material.name);
    DescribeMaterialFields(codec, material);
    if (codec.GetVersion() >= 10)
        DescribeUVList(codec, material);
    if (codec.GetVersion() >= 11 && codec.GetVersion() < 24)
        codec.Int("legacyInt", material.legacyInt);
    DescribeShaderParameters(codec, material);
}

template <typename Codec>
void DescribeProbe(Codec& codec, SProbe& probe)
{
    codec.Int("value", probe.value);
    codec.Demand("vectors", 24);
    codec.Floats("firstVector", &probe.floats[0], 3);
    codec.Floats("secondVector", &probe.floats[3], 3);
    if (codec.GetVersion() >= 16)
    {
        codec.Int("secondValue", probe.secondValue);
        DescribeFlags(codec, probe.flags);
    }
    if (codec.GetVersion() >= 26)
        codec.Text("name", probe.name);
}

template <typename Codec>
void DescribeProbeSection(Codec& codec, std::vector<SProbe>& probes)
{
    codec.Section("probes");
    if (codec.GetVersion() < 11)
        return;
    const SCount count = codec.Count("probeCount", probes);
    if (codec.GetVersion() >= 12)
        codec.Records("probes", count, probes, [&](SProbe& probe) { DescribeProbe(codec, probe); });
}

template <typename Codec>
void DescribeMaterialList(
    Codec& codec, std::vector<SMaterial>& materials, std::vector<SProbe>& probes)
{
    codec.Section("materials");
    const SCount count = codec.Count("materialCount", materials);
    if (codec.GetVersion() >= 11 && codec.GetVersion() < 26)
    {
        DescribeProbeSection(codec, probes);
        codec.Section("materials");
    }
    codec.Records(
        "materials", count, materials,
        [&](SMaterial& material) { DescribeMaterial(codec, material); });
}

template <typename Codec>
void DescribeBoneTable(Codec& codec, bool& isThere, std::vector<SBone>& bones)
{
    codec.Section("bones");
    if (!codec.IsThere(isThere))
        return;
    codec.Records(
        "bones", codec.Count("boneCount", bones), bones,
        [&](SBone& bone)
        {
            codec.Text("name", bone.name);
            codec.Int("value", bone.value);
        });
}

template <typename Codec>
void DescribeTextureList(Codec& codec, std::vector<STexture>& textures)
{
    codec.Section("textures");
    codec.Records(
        "textures", codec.Count("textureCount", textures), textures,
        [&](STexture& texture)
        {
            codec.Text("name", texture.name);
            if (codec.GetVersion() >= 1)
                codec.Int("clamp", texture.clamp);
            if (codec.GetVersion() >= 5)
                DescribeFlags(codec, texture.flags);
        });
}

template <typename Codec>
void DescribeLightmapList(
    Codec& codec, std::vector<SLightmap>& lightmaps, int& lightmapSwitch, int& trailingInt)
{
    codec.Section("lightmaps");
    const SCount count = codec.Count("lightmapCount", lightmaps);
    const auto describe = [&](SLightmap& lightmap)
    {
        codec.Text("name", lightmap.name);
        DescribeFlags(codec, lightmap.flags);
    };
    if (codec.GetVersion() >= 26)
        codec.Records("lightmaps", count, lightmaps, describe);
    if (codec.GetVersion() >= 18)
        codec.Int("lightmapSwitch", lightmapSwitch);
    if (codec.GetVersion() >= 22)
        codec.Int("trailingInt", trailingInt);
}

template <typename Codec>
void DescribeHeader(Codec& codec, int& version, int& marker, int& zero)
{
    codec.Section("header");
    std::string magic = "ZEK";
    codec.Text("magic", magic);
    codec.Expect(magic == "ZEK", "magic", magic, "\"ZEK\"");
    codec.Int("version", version);
    codec.SetVersion(version);
    codec.Expect(version >= 7, "version", version, "7 or more");
    if (version >= 21)
        codec.Int("processedMarker", marker);
    if (version >= 26)
    {
        codec.Int("zero", zero);
        codec.Expect(zero == 0, "zero", zero, "0");
    }
}

/// A whole file but for what follows the last section.
template <typename Codec>
void DescribeFile(Codec& codec, SModel& model)
{
    DescribeHeader(codec, model.version, model.marker, model.headerZero);
    if (model.version < 26)
    {
        DescribeNodeList(codec, model.nodes);
        DescribeMeshList(codec, model.meshes);
        DescribeMaterialList(codec, model.materials, model.probes);
        DescribeTextureList(codec, model.textures);
        DescribeBoneTable(codec, model.hasBoneTable, model.bones);
    }
    else
    {
        DescribeTextureList(codec, model.textures);
        DescribeProbeSection(codec, model.probes);
    }
    DescribeLightmapList(codec, model.lightmaps, model.lightmapSwitch, model.lightmapTrailingInt);
}

} // namespace testsupport
