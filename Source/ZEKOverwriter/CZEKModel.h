#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/SZEKFlags.h"
#include "ZEKFormat/SZEKRefusal.h"
#include "ZEKOverwriter/CZEKMaterial.h"
#include "ZEKOverwriter/CZEKMesh.h"
#include "ZEKOverwriter/CZEKNode.h"
#include "ZEKOverwriter/CZEKTexture.h"

namespace zek
{

/// A lightmap or reflection probe: what it is called and which compressed variants of it exist, one
/// int per compression family: the byte of the file, which is 1 where a variant exists and may have
/// any value in a file that is wrong.
struct SZEKNamedItem
{
    std::string name;
    std::array<int, CompressionFamilyCount> compressionSupportedList = {};
};

/// A whole model in memory.
///
/// Its lists are those of the file: an index in one means the record at that place in another, and
/// no index is checked. Not kept are the processed marker, the lightmap switch, what has no meaning
/// that is known, and the morphs of a mesh without vertices, which move nothing. Loading takes at
/// most 24 bytes of memory for each byte of the file.
///
///     zek::CZEKModel model;
///     zek::SZEKRefusal refusal;
///     if (!model.Load(image.data(), size, refusal))
///         std::cerr << refusal.GetText() << '\n';
class CZEKModel
{
public:
    /// Loads an image of size bytes in place of what was there. On false the model is empty and the
    /// refusal says why; on true the refusal is as it was. Throws std::bad_alloc when memory runs
    /// out, and the model is empty.
    bool Load(const unsigned char* image, std::int64_t size, SZEKRefusal& refusal);

    /// The same from an open file.
    bool Load(filesystem::CRandomAccessFile& file, SZEKRefusal& refusal);

    /// The version of the file; 0 when nothing is loaded. From version 26 on a file has only
    /// textures, probes and lightmaps.
    int GetVersion() const { return m_Version; }

    const std::vector<CZEKNode>& GetNodeList() const { return m_NodeList; }

    /// A mesh has no place in a lightmap (-1, scale 1, offset 0), of which the file says nothing.
    const std::vector<CZEKMesh>& GetMeshList() const { return m_MeshList; }

    /// The collision meshes of the nodes, in the nodes' order. They have positions, perhaps
    /// normals, and primitives without a material; the bounding box is (0, 0, 0) to (0, 0, 0).
    const std::vector<CZEKMesh>& GetColliderMeshList() const { return m_ColliderMeshList; }

    /// For each node the index of its collision mesh in that list, or -1.
    const std::vector<int>& GetColliderMeshIndexList() const { return m_ColliderMeshIndexList; }

    /// A material is double-sided by its first flag and uses vertex colours by its second; the
    /// third is not kept.
    const std::vector<CZEKMaterial>& GetMaterialList() const { return m_MaterialList; }

    const std::vector<CZEKTexture>& GetTextureList() const { return m_TextureList; }

    const std::vector<std::string>& GetBoneNameList() const { return m_BoneNameList; }

    /// Before version 26 a probe is called by its index in decimal; before version 16 it has no
    /// variants.
    const std::vector<SZEKNamedItem>& GetProbeList() const { return m_ProbeList; }

    /// Empty before version 26, where the file states only how many there are.
    const std::vector<SZEKNamedItem>& GetLightmapList() const { return m_LightmapList; }

    /// The number of lightmaps as the file states it, which may be negative.
    int GetLightmapCount() const { return m_LightmapCount; }

private:
    class CLoader;

    template <typename Source>
    bool LoadFrom(Source& source, SZEKRefusal& refusal);

    int m_Version = 0;
    std::vector<CZEKNode> m_NodeList;
    std::vector<CZEKMesh> m_MeshList;
    std::vector<CZEKMesh> m_ColliderMeshList;
    std::vector<int> m_ColliderMeshIndexList;
    std::vector<CZEKMaterial> m_MaterialList;
    std::vector<CZEKTexture> m_TextureList;
    std::vector<std::string> m_BoneNameList;
    std::vector<SZEKNamedItem> m_ProbeList;
    std::vector<SZEKNamedItem> m_LightmapList;
    int m_LightmapCount = 0;
};

} // namespace zek
