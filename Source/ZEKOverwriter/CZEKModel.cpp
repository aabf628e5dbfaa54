#include "ZEKOverwriter/CZEKModel.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZEKFormat/ZEKVersion.h"
#include "ZEKOverwriter/ReserveRecords.h"

namespace zek
{

namespace
{

constexpr int NoLightmap = -1;
constexpr int NoColliderMesh = -1;

/// The smallest node, in bytes: no name, a transform, and since nodes can have a mesh, whose lists
/// take room beside theirs, two switches, a reference and the reserved bytes.
constexpr int SmallestOldNodeSize = 1 + 52;
constexpr int SmallestNodeSize = SmallestOldNodeSize + 4 + 4 + 4 + 20 + 4;

std::array<int, CompressionFamilyCount> GetFlags(const SZEKFlags& flags)
{
    std::array<int, CompressionFamilyCount> values;
    std::copy(flags.values.begin(), flags.values.end(), values.begin());
    return values;
}

/// The lists of a mesh while it is walked.
struct SMeshLists
{
    std::vector<S3D> posList;
    std::vector<S3D> normalList;
    std::vector<S3D> tangentList;
    std::vector<SUV> uvList;
    std::vector<SUV> uv2List;
    std::vector<math3d::SColor32> colorList;
    std::vector<CZEKBoneWeight> boneWeightList;
    std::vector<CZEKPrimitive> primitiveList;
    std::vector<CZEKMorph> morphList;
    S3D boundingBoxMinPos;
    S3D boundingBoxMaxPos;

    /// Makes a mesh of them, which has no place in a lightmap: the file says nothing of it.
    CZEKMesh TakeMesh()
    {
        return CZEKMesh(
            std::move(posList), std::move(normalList), std::move(tangentList), std::move(uvList),
            std::move(uv2List), std::move(colorList), std::move(boneWeightList),
            std::move(primitiveList), std::move(morphList), boundingBoxMinPos, boundingBoxMaxPos,
            NoLightmap, S2D(1.0f, 1.0f), S2D(0.0f, 0.0f));
    }
};

} // namespace

/// Fills a model from a walk.
class CZEKModel::CLoader : public CZEKRefusalSink
{
public:
    explicit CLoader(CZEKModel& model) : m_Model(model) {}

    bool WantsElements(std::string_view name) const { return name != "uvs"; }

    void BeginRecords(std::string_view kind, int count, std::int64_t left);

    void Header(const SZEKHeader& header) { m_Model.m_Version = header.version; }

    void Node(const SZEKNode& node)
    {
        const SZEKCollider& collider = node.collider;
        m_Model.m_NodeList.emplace_back(
            std::string(node.name), node.localPos, node.localRotate, node.localScale,
            node.parentNodeIndex, node.meshIndex,
            CZEKCollider(collider.shape, collider.type, collider.center, collider.size));
        m_Model.m_ColliderMeshIndexList.push_back(std::exchange(m_ColliderMesh, NoColliderMesh));
    }

    void BeginColliderMesh(const SZEKMeshHeader& header)
    {
        BeginMesh(header);
        m_SmallestPrimitiveSize = 4;
    }

    void EndColliderMesh()
    {
        m_ColliderMesh = static_cast<int>(m_Model.m_ColliderMeshList.size());
        m_Model.m_ColliderMeshList.push_back(m_Lists.TakeMesh());
    }

    void BeginMesh(const SZEKMeshHeader& header)
    {
        m_Header = header;
        m_Lists = SMeshLists();
        m_SmallestPrimitiveSize = 4 + 4;
    }

    void Vertex(const SZEKMeshHeader& header, const SZEKVertex& vertex);

    void BoundingBox(const S3D& min, const S3D& max)
    {
        m_Lists.boundingBoxMinPos = min;
        m_Lists.boundingBoxMaxPos = max;
    }

    void BeginPrimitive(int materialIndex) { m_MaterialIndex = materialIndex; }

    void Index(int index)
    {
        if (m_Header.vertexCount <= LargestVertexCountOf16BitIndices)
            m_IndexListUSHORT.push_back(static_cast<unsigned short>(index));
        else
            m_IndexListINT.push_back(index);
    }

    void EndPrimitive()
    {
        m_Lists.primitiveList.emplace_back(
            m_MaterialIndex, std::exchange(m_IndexListUSHORT, {}),
            std::exchange(m_IndexListINT, {}));
    }

    void BeginMorph(std::string_view name) { m_MorphName = name; }
    void MorphPosition(const S3D& position) { m_MorphPosList.push_back(position); }

    void EndMorph()
    {
        if (m_Header.vertexCount > 0)
            m_Lists.morphList.emplace_back(
                std::move(m_MorphName), std::exchange(m_MorphPosList, {}));
    }

    void EndMesh() { m_Model.m_MeshList.push_back(m_Lists.TakeMesh()); }

    void Material(const SZEKMaterial& material)
    {
        m_Model.m_MaterialList.emplace_back(
            std::string(material.name), material.shaderType, material.blendMode, material.cutoff,
            material.firstFlag, material.secondFlag, material.color, material.emissionColor,
            material.mainTextureIndex, material.normalTextureIndex, material.emissionTextureIndex,
            material.roughnessTextureIndex, material.mainTransform.scale,
            material.mainTransform.offset, material.secondTransform.scale,
            material.secondTransform.offset);
    }

    void Texture(const SZEKTexture& texture)
    {
        const auto& flags = texture.flags.values;
        m_Model.m_TextureList.emplace_back(
            std::string(texture.name), texture.clamp == 1,
            std::vector<int>(flags.begin(), flags.end()));
    }

    void Bone(std::string_view name) { m_Model.m_BoneNameList.emplace_back(name); }

    void Probe(const SZEKProbe& probe)
    {
        m_Model.m_ProbeList.push_back({GetProbeName(probe), GetFlags(probe.flags)});
    }

    void Lightmap(const SZEKLightmap& lightmap)
    {
        m_Model.m_LightmapList.push_back({std::string(lightmap.name), GetFlags(lightmap.flags)});
    }

    void LightmapCount(int count) { m_Model.m_LightmapCount = count; }

private:
    CZEKModel& m_Model;
    int m_ColliderMesh = NoColliderMesh;
    SZEKMeshHeader m_Header;
    SMeshLists m_Lists;
    int m_SmallestPrimitiveSize = 0;
    int m_MaterialIndex = 0;
    std::vector<unsigned short> m_IndexListUSHORT;
    std::vector<int> m_IndexListINT;
    std::string m_MorphName;
    std::vector<S3D> m_MorphPosList;
};

void CZEKModel::CLoader::BeginRecords(std::string_view kind, int count, std::int64_t left)
{
    const auto reserve = [&](auto& list, int smallestSize)
    { ReserveRecords(list, count, left, smallestSize); };
    if (kind == "nodes")
    {
        const int smallestSize =
            m_Model.m_Version < version::ColliderMesh ? SmallestOldNodeSize : SmallestNodeSize;
        reserve(m_Model.m_NodeList, smallestSize);
        reserve(m_Model.m_ColliderMeshIndexList, smallestSize);
    }
    else if (kind == "meshes")
        reserve(m_Model.m_MeshList, 10 + 24 + 4 + 4);
    else if (kind == "primitives")
        reserve(m_Lists.primitiveList, m_SmallestPrimitiveSize);
    else if (kind == "morphs")
        reserve(m_Lists.morphList, 1 + 12);
    else if (kind == "materials")
        reserve(m_Model.m_MaterialList, 1 + 57);
    else if (kind == "textures")
        reserve(m_Model.m_TextureList, SmallestTextureSize);
    else if (kind == "bones")
        reserve(m_Model.m_BoneNameList, 1 + 4);
    else if (kind == "probes")
        reserve(m_Model.m_ProbeList, SmallestProbeSize);
    else if (kind == "lightmaps")
        reserve(m_Model.m_LightmapList, SmallestLightmapSize);
}

void CZEKModel::CLoader::Vertex(const SZEKMeshHeader& header, const SZEKVertex& vertex)
{
    m_Lists.posList.push_back(vertex.pos);
    if (header.hasNormal)
        m_Lists.normalList.push_back(vertex.normal);
    if (header.hasTangent)
        m_Lists.tangentList.push_back(vertex.tangent);
    if (header.hasUV)
        m_Lists.uvList.push_back(vertex.uv);
    if (header.hasUV2)
        m_Lists.uv2List.push_back(vertex.uv2);
    if (header.hasColor)
        m_Lists.colorList.push_back(vertex.color);
    if (header.hasBoneWeight)
        m_Lists.boneWeightList.emplace_back(vertex.boneIndices, vertex.boneWeights);
}

bool CZEKModel::Load(const unsigned char* image, std::int64_t size, SZEKRefusal& refusal)
{
    CZEKImageSource source(image, size);
    return LoadFrom(source, refusal);
}

bool CZEKModel::Load(filesystem::CRandomAccessFile& file, SZEKRefusal& refusal)
{
    CZEKFileSource source(file);
    return LoadFrom(source, refusal);
}

template <typename Source>
bool CZEKModel::LoadFrom(Source& source, SZEKRefusal& refusal)
{
    *this = CZEKModel(); // gives back its memory first
    CZEKModel model;
    CLoader loader(model);
    CZEKWalk<Source, CLoader> walk(source, loader);
    if (WalkFile(walk))
    {
        *this = std::move(model);
        return true;
    }
    refusal = loader.GetRefusal();
    return false;
}

} // namespace zek
