#include <array>
#include <utility>

#include "Independent/Math3D/SColor32.h"
#include "ZEKOverwriter/CZEKBoneWeight.h"
#include "ZEKOverwriter/CZEKMorph.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/CZEKPrimitive.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

namespace
{

constexpr int MeshHeaderSize = IntSize + 6 * ByteSize;

// What a mesh demands at its start before `version::MeshShortHeader`, although its header is no
// longer there.
constexpr int OldMeshHeaderDemand = 30;

constexpr int BoundingBoxSize = 2 * S3DSize;
constexpr int SColor32Size = 4 * ByteSize;
constexpr int BoneWeightSize = 4 * ShortSize + 4 * FloatSize;
constexpr int LargestVertexCountOf16BitIndices = 65536;
constexpr int NoMaterial = -1;

struct SMeshHeader
{
    int vertexCount;
    bool hasNormal;
    bool hasTangent;
    bool hasUV;
    bool hasUV2;
    bool hasColor;
    bool hasBoneWeight;
};

SMeshHeader ReadMeshHeader(fileimage::CFileImageAnalyser& reader)
{
    SMeshHeader header;
    header.vertexCount = reader.GetIntNoCheck();
    header.hasNormal = reader.GetByteNoCheck() != 0;
    header.hasTangent = reader.GetByteNoCheck() != 0;
    header.hasUV = reader.GetByteNoCheck() != 0;
    header.hasUV2 = reader.GetByteNoCheck() != 0;
    header.hasColor = reader.GetByteNoCheck() != 0;
    header.hasBoneWeight = reader.GetByteNoCheck() != 0;
    return header;
}

/// Returns the bytes that a vertex takes in the file.
int GetStride(const SMeshHeader& header)
{
    int stride = S3DSize;
    if (header.hasNormal)
        stride += S3DSize;
    if (header.hasTangent)
        stride += S3DSize;
    if (header.hasUV)
        stride += SUVSize;
    if (header.hasUV2)
        stride += SUVSize;
    if (header.hasColor)
        stride += SColor32Size;
    if (header.hasBoneWeight)
        stride += BoneWeightSize;
    return stride;
}

math3d::SColor32 ReadSColor32(fileimage::CFileImageAnalyser& reader)
{
    math3d::SColor32 color;
    color.r = reader.GetByteNoCheck();
    color.g = reader.GetByteNoCheck();
    color.b = reader.GetByteNoCheck();
    color.a = reader.GetByteNoCheck();
    return color;
}

CZEKBoneWeight ReadBoneWeight(fileimage::CFileImageAnalyser& reader)
{
    std::array<short, 4> indexList;
    for (short& index : indexList)
        index = reader.GetShortNoCheck();
    std::array<float, 4> weightList;
    for (float& weight : weightList)
        weight = reader.GetFloatNoCheck();
    return CZEKBoneWeight(indexList, weightList);
}

/// The vertices of a mesh, one list a stream; a stream that the mesh does not have is empty.
struct SVertexLists
{
    explicit SVertexLists(const SMeshHeader& header)
    {
        const std::size_t vertexCount = GetListSize(header.vertexCount);
        posList.resize(vertexCount);
        normalList.resize(header.hasNormal ? vertexCount : 0);
        tangentList.resize(header.hasTangent ? vertexCount : 0);
        uvList.resize(header.hasUV ? vertexCount : 0);
        uv2List.resize(header.hasUV2 ? vertexCount : 0);
        colorList.resize(header.hasColor ? vertexCount : 0);
        boneWeightList.reserve(header.hasBoneWeight ? vertexCount : 0);
    }

    std::vector<S3D> posList;
    std::vector<S3D> normalList;
    std::vector<S3D> tangentList;
    std::vector<SUV> uvList;
    std::vector<SUV> uv2List;
    std::vector<math3d::SColor32> colorList;
    std::vector<CZEKBoneWeight> boneWeightList;
};

/// Reads all vertices, whose bytes must be there.
void ReadVertices(
    fileimage::CFileImageAnalyser& reader, const SMeshHeader& header, SVertexLists& lists)
{
    for (std::size_t i = 0; i < lists.posList.size(); ++i)
    {
        lists.posList[i] = ReadS3D(reader);
        if (header.hasNormal)
            lists.normalList[i] = ReadS3D(reader);
        if (header.hasTangent)
            lists.tangentList[i] = ReadS3D(reader);
        if (header.hasUV)
            lists.uvList[i] = ReadSUV(reader);
        if (header.hasUV2)
            lists.uv2List[i] = ReadSUV(reader);
        if (header.hasColor)
            lists.colorList[i] = ReadSColor32(reader);
        if (header.hasBoneWeight)
            lists.boneWeightList.push_back(ReadBoneWeight(reader));
    }
}

/// Walks the index count and the indices of a primitive and appends it to the list. One without
/// indices is not kept, so that a file cannot ask for an object with a handful of bytes.
bool AnalyseIndices(
    fileimage::CFileImageAnalyser& reader,
    int vertexCount,
    int materialIndex,
    std::vector<CZEKPrimitive>& primitiveList)
{
    int indexCount;
    if (!reader.GetInt(indexCount))
        return false;

    const bool is16Bit = vertexCount <= LargestVertexCountOf16BitIndices;
    if (!IsCanReadList(reader, is16Bit ? ShortSize : IntSize, indexCount))
        return false;

    std::vector<unsigned short> indexListUSHORT(is16Bit ? GetListSize(indexCount) : 0);
    for (unsigned short& index : indexListUSHORT)
        index = reader.GetWordNoCheck();
    std::vector<int> indexListINT(is16Bit ? 0 : GetListSize(indexCount));
    for (int& index : indexListINT)
        index = reader.GetIntNoCheck();

    CZEKPrimitive primitive(materialIndex, std::move(indexListUSHORT), std::move(indexListINT));
    if (indexCount > 0)
        primitiveList.push_back(std::move(primitive));
    return true;
}

/// Walks a morph of a mesh and appends it to the list. One without positions is not kept, so that
/// a file cannot ask for an object with a lone byte.
bool AnalyseMorph(
    fileimage::CFileImageAnalyser& reader, int vertexCount, std::vector<CZEKMorph>& morphList)
{
    std::string name;
    if (!reader.GetZeroTerminatedString(name))
        return false;

    if (!IsCanReadList(reader, S3DSize, vertexCount))
        return false;
    std::vector<S3D> posList(GetListSize(vertexCount));
    for (S3D& pos : posList)
        pos = ReadS3D(reader);

    CZEKMorph morph(std::move(name), std::move(posList));
    if (vertexCount > 0)
        morphList.push_back(std::move(morph));
    return true;
}

} // namespace

bool CZEKOverwriter::AnalyseMeshList(fileimage::CFileImageAnalyser& reader, int version)
{
    int count;
    if (!reader.GetInt(count))
        return false;
    for (int i = 0; i < count; ++i)
    {
        if (!AnalyseMesh(reader, version))
            return false;
    }
    return true;
}

bool CZEKOverwriter::AnalyseMesh(fileimage::CFileImageAnalyser& reader, int version)
{
    if (!reader.IsCanRead(
            version < version::MeshShortHeader ? OldMeshHeaderDemand : MeshHeaderSize))
        return false;
    const SMeshHeader header = ReadMeshHeader(reader);

    if (!IsCanReadList(reader, GetStride(header), header.vertexCount))
        return false;
    SVertexLists vertexLists(header);
    ReadVertices(reader, header, vertexLists);

    if (!reader.IsCanRead(BoundingBoxSize))
        return false;
    ReadS3D(reader); // minimum
    ReadS3D(reader); // maximum

    int primitiveCount;
    if (!reader.GetInt(primitiveCount))
        return false;
    std::vector<CZEKPrimitive> primitiveList;
    ReserveRecords(primitiveList, reader, 2 * IntSize + ShortSize, primitiveCount);
    for (int i = 0; i < primitiveCount; ++i)
    {
        int materialIndex;
        if (!reader.GetInt(materialIndex))
            return false;
        if (!AnalyseIndices(reader, header.vertexCount, materialIndex, primitiveList))
            return false;
    }

    int morphCount;
    if (!reader.GetInt(morphCount))
        return false;
    std::vector<CZEKMorph> morphList;
    ReserveRecords(morphList, reader, ByteSize + S3DSize, morphCount);
    for (int i = 0; i < morphCount; ++i)
    {
        if (!AnalyseMorph(reader, header.vertexCount, morphList))
            return false;
    }
    return true;
}

bool CZEKOverwriter::AnalyseMeshSimple(fileimage::CFileImageAnalyser& reader, int)
{
    if (!reader.IsCanRead(MeshHeaderSize))
        return false;
    const SMeshHeader header = ReadMeshHeader(reader);

    // The format demands the bytes of one vertex, even of a mesh that has none; the loop looks
    // for those of the others.
    const int vertexSize = header.hasNormal ? 2 * S3DSize : S3DSize;
    if (!reader.IsCanRead(vertexSize))
        return false;
    std::vector<S3D> posList;
    std::vector<S3D> normalList;
    ReserveRecords(posList, reader, vertexSize, header.vertexCount);
    ReserveRecords(normalList, reader, vertexSize, header.hasNormal ? header.vertexCount : 0);
    for (int i = 0; i < header.vertexCount; ++i)
    {
        if (!reader.IsCanRead(vertexSize))
            return false;
        posList.push_back(ReadS3D(reader));
        if (header.hasNormal)
            normalList.push_back(ReadS3D(reader));
    }

    int primitiveCount;
    if (!reader.GetInt(primitiveCount))
        return false;
    std::vector<CZEKPrimitive> primitiveList;
    ReserveRecords(primitiveList, reader, IntSize + ShortSize, primitiveCount);
    for (int i = 0; i < primitiveCount; ++i)
    {
        if (!AnalyseIndices(reader, header.vertexCount, NoMaterial, primitiveList))
            return false;
    }
    return true;
}

} // namespace zek
