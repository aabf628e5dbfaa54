#pragma once

#include "ZEKFormat/ZEKRecords.h"
#include "ZEKFormat/ZEKVersion.h"

/// The meshes of a model file. What each function is given is a `CZEKWalk`, or its fields.
namespace zek
{

constexpr int LargestVertexCountOf16BitIndices = 65536;

/// The material of a primitive of a collision mesh.
constexpr int NoMaterial = -1;

/// Demanded before version 15 where a mesh starts, though its header has ten bytes in every
/// version.
constexpr int OldMeshHeaderDemand = 30;

template <typename Fields>
void WalkMeshHeader(Fields& fields, SZEKMeshHeader& mesh)
{
    mesh.vertexCount = fields.Int("vertexCount");
    mesh.hasNormal = fields.Flag("hasNormal");
    mesh.hasTangent = fields.Flag("hasTangent");
    mesh.hasUV = fields.Flag("hasUV");
    mesh.hasUV2 = fields.Flag("hasUV2");
    mesh.hasColor = fields.Flag("hasColor");
    mesh.hasBoneWeight = fields.Flag("hasBoneWeight");
}

template <typename Fields>
void WalkVertex(Fields& fields, const SZEKMeshHeader& mesh, SZEKVertex& vertex)
{
    vertex.pos = fields.Vector("position");
    if (mesh.hasNormal)
        vertex.normal = fields.Vector("normal");
    if (mesh.hasTangent)
        vertex.tangent = fields.Vector("tangent");
    if (mesh.hasUV)
        vertex.uv = fields.UV("uv");
    if (mesh.hasUV2)
        vertex.uv2 = fields.UV("uv2");
    if (mesh.hasColor)
        vertex.color = fields.Color32("color");
    if (mesh.hasBoneWeight)
    {
        vertex.boneIndices = fields.BoneIndices("boneIndices");
        vertex.boneWeights = fields.BoneWeights("boneWeights");
    }
}

/// Walks the indices of a primitive, whose width the mesh's vertex count decides.
template <typename Walk>
bool WalkIndices(Walk& walk, int vertexCount)
{
    int count;
    if (!walk.Int("indexCount", count))
        return false;
    int index;
    const auto keep = [&] { walk.GetSink().Index(index); };
    if (vertexCount <= LargestVertexCountOf16BitIndices)
        return walk.Array(
            "indices", count, [&](auto& fields) { index = fields.Word(""); }, keep);
    return walk.Array(
        "indices", count, [&](auto& fields) { index = fields.Int(""); }, keep);
}

template <typename Walk>
bool WalkPrimitive(Walk& walk, int vertexCount)
{
    int materialIndex;
    if (!walk.Int("materialIndex", materialIndex))
        return false;
    walk.GetSink().BeginPrimitive(materialIndex);
    if (!WalkIndices(walk, vertexCount))
        return false;
    walk.GetSink().EndPrimitive();
    return true;
}

template <typename Walk>
bool WalkMorph(Walk& walk, int vertexCount)
{
    std::string_view name;
    if (!walk.Text("name", name))
        return false;
    walk.GetSink().BeginMorph(name);
    S3D position;
    if (!walk.Array(
            "positions", vertexCount, [&](auto& fields) { position = fields.Vector(""); },
            [&] { walk.GetSink().MorphPosition(position); }))
        return false;
    walk.GetSink().EndMorph();
    return true;
}

template <typename Walk>
bool WalkBoundingBox(Walk& walk)
{
    S3D min;
    S3D max;
    const auto walkFields = [&](auto& fields)
    {
        min = fields.Vector("boundingBoxMinPos");
        max = fields.Vector("boundingBoxMaxPos");
    };
    if (!walk.Block("boundingBox", walkFields))
        return false;
    walk.GetSink().BoundingBox(min, max);
    return true;
}

template <typename Walk>
bool WalkMesh(Walk& walk, int version)
{
    SZEKMeshHeader mesh;
    const auto walkHeader = [&](auto& fields) { WalkMeshHeader(fields, mesh); };
    const int headerDemand =
        version < version::MeshShortHeader ? OldMeshHeaderDemand : Walk::Measure(walkHeader);
    if (!walk.Block("header", headerDemand, walkHeader))
        return false;
    walk.GetSink().BeginMesh(mesh);

    SZEKVertex vertex;
    if (!walk.Array(
            "vertices", mesh.vertexCount, [&](auto& fields) { WalkVertex(fields, mesh, vertex); },
            [&] { walk.GetSink().Vertex(mesh, vertex); }))
        return false;
    if (!WalkBoundingBox(walk))
        return false;

    int primitiveCount;
    if (!walk.Int("primitiveCount", primitiveCount) ||
        !walk.Records(
            "primitives", primitiveCount,
            [&](int) { return WalkPrimitive(walk, mesh.vertexCount); }))
        return false;

    int morphCount;
    if (!walk.Int("morphCount", morphCount) ||
        !walk.Records("morphs", morphCount, [&](int) { return WalkMorph(walk, mesh.vertexCount); }))
        return false;
    walk.GetSink().EndMesh();
    return true;
}

/// Walks the reduced mesh of a collider, which is the same in all versions: of the vertices only
/// positions and normals, no bounding box, no materials, no morphs.
template <typename Walk>
bool WalkMeshSimple(Walk& walk)
{
    SZEKMeshHeader mesh;
    if (!walk.Block("header", [&](auto& fields) { WalkMeshHeader(fields, mesh); }))
        return false;
    mesh.hasTangent = mesh.hasUV = mesh.hasUV2 = mesh.hasColor = mesh.hasBoneWeight = false;
    walk.GetSink().BeginColliderMesh(mesh);

    // The format demands the bytes of one vertex, even of a mesh that has none; those of the others
    // are demanded one by one.
    SZEKVertex vertex;
    const auto walkVertex = [&](auto& fields) { WalkVertex(fields, mesh, vertex); };
    if (!walk.Demand("vertices", Walk::Measure(walkVertex)) ||
        !walk.ArrayOneByOne(
            "vertices", mesh.vertexCount, walkVertex, [&] { walk.GetSink().Vertex(mesh, vertex); }))
        return false;

    const auto walkPrimitive = [&](int)
    {
        walk.GetSink().BeginPrimitive(NoMaterial);
        if (!WalkIndices(walk, mesh.vertexCount))
            return false;
        walk.GetSink().EndPrimitive();
        return true;
    };
    int primitiveCount;
    if (!walk.Int("primitiveCount", primitiveCount) ||
        !walk.Records("primitives", primitiveCount, walkPrimitive))
        return false;
    walk.GetSink().EndColliderMesh();
    return true;
}

/// Walks the same as a part of a node.
template <typename Walk>
bool WalkColliderMesh(Walk& walk)
{
    walk.GetSink().BeginPart("colliderMesh");
    if (!WalkMeshSimple(walk))
        return false;
    walk.GetSink().EndPart();
    return true;
}

template <typename Walk>
bool WalkMeshList(Walk& walk, int version)
{
    walk.GetSink().BeginSection("meshes");
    int count;
    return walk.Int("meshCount", count) &&
           walk.Records("meshes", count, [&](int) { return WalkMesh(walk, version); });
}

} // namespace zek
