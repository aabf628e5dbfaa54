#pragma once

#include <utility>
#include <vector>

#include "Independent/Math3D/S2D.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SColor32.h"
#include "Independent/Math3D/SUV.h"
#include "ZEKOverwriter/CZEKBoneWeight.h"
#include "ZEKOverwriter/CZEKMorph.h"
#include "ZEKOverwriter/CZEKPrimitive.h"

namespace zek
{

/// A mesh of a model. Immutable. Every list of vertex data has one entry per vertex, or none when
/// the mesh has no such data.
class CZEKMesh
{
public:
    /// Takes every field as the getter of its name gives it back.
    CZEKMesh(
        std::vector<S3D> posList,
        std::vector<S3D> normalList,
        std::vector<S3D> tangentList,
        std::vector<SUV> uvList,
        std::vector<SUV> uv2List,
        std::vector<math3d::SColor32> colorList,
        std::vector<CZEKBoneWeight> boneWeightList,
        std::vector<CZEKPrimitive> primitiveList,
        std::vector<CZEKMorph> morphList,
        const S3D& boundingBoxMinPos,
        const S3D& boundingBoxMaxPos,
        int lightmapIndex,
        const S2D& lightmapScale,
        const S2D& lightmapOffset)
        : m_PosList(std::move(posList))
        , m_NormalList(std::move(normalList))
        , m_TangentList(std::move(tangentList))
        , m_UVList(std::move(uvList))
        , m_UV2List(std::move(uv2List))
        , m_ColorList(std::move(colorList))
        , m_BoneWeightList(std::move(boneWeightList))
        , m_ZEKPrimitiveList(std::move(primitiveList))
        , m_MorphList(std::move(morphList))
        , m_BoundingBoxMinPos(boundingBoxMinPos)
        , m_BoundingBoxMaxPos(boundingBoxMaxPos)
        , m_LightmapIndex(lightmapIndex)
        , m_LightmapScale(lightmapScale)
        , m_LightmapOffset(lightmapOffset)
    {
    }

    CZEKMesh(const CZEKMesh&) = default;
    CZEKMesh(CZEKMesh&&) = default;
    CZEKMesh& operator=(const CZEKMesh&) = default;
    CZEKMesh& operator=(CZEKMesh&&) = default;
    virtual ~CZEKMesh() = default;

    /// The positions of the vertices.
    const std::vector<S3D>& GetPosList() const { return m_PosList; }

    /// The normals.
    const std::vector<S3D>& GetNormalList() const { return m_NormalList; }

    /// The tangents.
    const std::vector<S3D>& GetTangentList() const { return m_TangentList; }

    /// The texture coordinates.
    const std::vector<SUV>& GetUVList() const { return m_UVList; }

    /// The second texture coordinates.
    const std::vector<SUV>& GetUV2List() const { return m_UV2List; }

    /// The colours.
    const std::vector<math3d::SColor32>& GetColorList() const { return m_ColorList; }

    /// The bones that move each vertex; empty when the mesh is not skinned.
    const std::vector<CZEKBoneWeight>& GetBoneWeightList() const { return m_BoneWeightList; }

    /// The sub-meshes.
    const std::vector<CZEKPrimitive>& GetZEKPrimitiveList() const { return m_ZEKPrimitiveList; }

    /// The blend shapes.
    const std::vector<CZEKMorph>& GetMorphList() const { return m_MorphList; }

    /// The least corner of the box around all vertices.
    const S3D& GetBoundingBoxMinPos() const { return m_BoundingBoxMinPos; }

    /// The greatest corner of that box.
    const S3D& GetBoundingBoxMaxPos() const { return m_BoundingBoxMaxPos; }

    /// Index into the model's lightmaps; -1 for none.
    int GetLightmapIndex() const { return m_LightmapIndex; }

    /// The size of the mesh's part of its lightmap, 1 being the whole.
    const S2D& GetLightmapScale() const { return m_LightmapScale; }

    /// Where that part starts.
    const S2D& GetLightmapOffset() const { return m_LightmapOffset; }

private:
    std::vector<S3D> m_PosList;
    std::vector<S3D> m_NormalList;
    std::vector<S3D> m_TangentList;
    std::vector<SUV> m_UVList;
    std::vector<SUV> m_UV2List;
    std::vector<math3d::SColor32> m_ColorList;
    std::vector<CZEKBoneWeight> m_BoneWeightList;
    std::vector<CZEKPrimitive> m_ZEKPrimitiveList;
    std::vector<CZEKMorph> m_MorphList;
    S3D m_BoundingBoxMinPos;
    S3D m_BoundingBoxMaxPos;
    int m_LightmapIndex;
    S2D m_LightmapScale;
    S2D m_LightmapOffset;
};

} // namespace zek
