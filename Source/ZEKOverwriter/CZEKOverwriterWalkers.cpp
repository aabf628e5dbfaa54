#include <algorithm>
#include <cstdint>
#include <limits>

#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

namespace zek
{

namespace
{

/// Moves a reader over bytes that are there.
void SkipAll(fileimage::CFileImageAnalyser& reader, std::int64_t size)
{
    while (size > 0)
    {
        const auto step = std::min<std::int64_t>(size, std::numeric_limits<int>::max());
        reader.Skip(static_cast<int>(step));
        size -= step;
    }
}

/// Walks from a reader's position on, and moves the reader to where the walk ended.
template <typename Sink, typename WalkPart>
bool WalkFrom(fileimage::CFileImageAnalyser& reader, Sink& sink, WalkPart walkPart)
{
    CZEKImageSource source(reader.GetReadPointer(), reader.GetCanReadSize(), reader.GetPos());
    CZEKWalk<CZEKImageSource, Sink> walk(source, sink);
    const bool isAccepted = walkPart(walk);
    SkipAll(reader, source.GetPos() - reader.GetPos());
    return isAccepted;
}

/// The same where nothing is to be kept.
template <typename WalkPart>
bool WalkFrom(fileimage::CFileImageAnalyser& reader, WalkPart walkPart)
{
    CZEKSink sink;
    return WalkFrom(reader, sink, walkPart);
}

/// Takes fields whose bytes are there.
template <typename WalkFields>
void WalkFieldsFrom(fileimage::CFileImageAnalyser& reader, WalkFields walkFields)
{
    WalkFrom(reader, [&](auto& walk) { return walk.Block("", walkFields); });
}

} // namespace

bool CZEKOverwriter::AnalyseHeader(fileimage::CFileImageAnalyser& reader, int& version)
{
    SZEKHeader header;
    const bool isAccepted =
        WalkFrom(reader, m_Flags, [&](auto& walk) { return WalkHeader(walk, header); });
    if (isAccepted)
        version = header.version;
    return isAccepted;
}

bool CZEKOverwriter::AnalyseSections(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, m_Flags, [&](auto& walk) { return WalkSections(walk, version); });
}

bool CZEKOverwriter::AnalyseNodeList(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, [&](auto& walk) { return WalkNodeList(walk, version); });
}

bool CZEKOverwriter::AnalyseNode(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, [&](auto& walk) { return WalkNode(walk, version); });
}

bool CZEKOverwriter::AnalyseCollider(
    fileimage::CFileImageAnalyser& reader, int version, EZEKColliderShape shape)
{
    SZEKCollider collider;
    collider.shape = shape;
    return WalkFrom(reader, [&](auto& walk) { return WalkCollider(walk, version, collider); });
}

bool CZEKOverwriter::AnalyseMeshList(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, [&](auto& walk) { return WalkMeshList(walk, version); });
}

bool CZEKOverwriter::AnalyseMesh(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, [&](auto& walk) { return WalkMesh(walk, version); });
}

bool CZEKOverwriter::AnalyseMeshSimple(fileimage::CFileImageAnalyser& reader, int)
{
    return WalkFrom(reader, [](auto& walk) { return WalkMeshSimple(walk); });
}

bool CZEKOverwriter::AnalyseMaterialList(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, m_Flags, [&](auto& walk) { return WalkMaterialList(walk, version); });
}

bool CZEKOverwriter::AnalyseMaterial(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, [&](auto& walk) { return WalkMaterial(walk, version); });
}

bool CZEKOverwriter::AnalyseShaderParameters(
    fileimage::CFileImageAnalyser& reader, int version, EZEKShaderType shaderType)
{
    return WalkFrom(
        reader, [&](auto& walk) { return WalkShaderParameters(walk, version, shaderType); });
}

STextureTransform
CZEKOverwriter::AnalyseTextureTransform(fileimage::CFileImageAnalyser& reader, int version)
{
    STextureTransform transform;
    WalkFieldsFrom(
        reader, [&](auto& fields)
        { transform = WalkTextureTransform(fields, version, "scale", "offset"); });
    return transform;
}

SColor CZEKOverwriter::AnalyseColor(fileimage::CFileImageAnalyser& reader)
{
    SColor color;
    WalkFieldsFrom(reader, [&](auto& fields) { color = fields.Color("color"); });
    return color;
}

bool CZEKOverwriter::AnalyseBoneTable(fileimage::CFileImageAnalyser& reader)
{
    return WalkFrom(reader, [](auto& walk) { return WalkBoneTable(walk); });
}

bool CZEKOverwriter::AnalyseTextureList(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, m_Flags, [&](auto& walk) { return WalkTextureList(walk, version); });
}

bool CZEKOverwriter::AnalyseLightmapList(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(reader, m_Flags, [&](auto& walk) { return WalkLightmapList(walk, version); });
}

bool CZEKOverwriter::AnalyseReflectionProbe(fileimage::CFileImageAnalyser& reader, int version)
{
    return WalkFrom(
        reader, m_Flags, [&](auto& walk) { return WalkReflectionProbes(walk, version); });
}

} // namespace zek
