#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/EZEKColliderType.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

namespace
{

constexpr int NodeFixedSize = S3DSize + SQuaternionSize + S3DSize + 3 * IntSize;
constexpr int NodeReservedBlockSize = 20;
constexpr int NodeReservedWordSize = 4;

// Demanded before the body of a collider, although a sphere's and those of old versions are
// shorter.
constexpr int ColliderDemand = 2 * IntSize + 2 * S3DSize;

bool IsColliderShape(int shape)
{
    return shape >= static_cast<int>(EZEKColliderShape::None) &&
           shape <= static_cast<int>(EZEKColliderShape::Mesh);
}

/// Reads an int that must be 0 or 1.
bool GetSwitch(fileimage::CFileImageAnalyser& reader, int& value)
{
    return reader.GetInt(value) && (value == 0 || value == 1);
}

} // namespace

bool CZEKOverwriter::AnalyseNodeList(fileimage::CFileImageAnalyser& reader, int version)
{
    int count;
    if (!reader.GetInt(count))
        return false;
    for (int i = 0; i < count; ++i)
    {
        if (!AnalyseNode(reader, version))
            return false;
    }
    return true;
}

bool CZEKOverwriter::AnalyseNode(fileimage::CFileImageAnalyser& reader, int version)
{
    std::string name;
    if (!reader.GetZeroTerminatedString(name))
        return false;

    if (!reader.IsCanRead(NodeFixedSize))
        return false;
    ReadS3D(reader);         // local position
    ReadSQuaternion(reader); // local rotation
    ReadS3D(reader);         // local scale
    reader.GetIntNoCheck();  // parent node index
    reader.GetIntNoCheck();  // mesh index
    const int shape = reader.GetIntNoCheck();

    if (!IsColliderShape(shape))
        return false;
    if (!AnalyseCollider(reader, version, static_cast<EZEKColliderShape>(shape)))
        return false;

    if (version >= version::NodeOffset)
    {
        int hasOffset;
        if (!GetSwitch(reader, hasOffset))
            return false;
        if (hasOffset == 1)
        {
            if (!reader.IsCanRead(S3DSize))
                return false;
            ReadS3D(reader);
        }
    }

    if (version >= version::NodeReference)
    {
        int isSelected;
        if (!GetSwitch(reader, isSelected))
            return false;
        int reference = -1;
        if (isSelected == 1 && !reader.GetInt(reference))
            return false;
        if (isSelected == 0 && version >= version::NodeAlternateReference &&
            !reader.GetInt(reference))
            return false;
    }

    if (version >= version::NodeReservedBlock && !reader.Skip(NodeReservedBlockSize))
        return false;
    return version < version::NodeReservedWord || reader.Skip(NodeReservedWordSize);
}

bool CZEKOverwriter::AnalyseCollider(
    fileimage::CFileImageAnalyser& reader, int version, EZEKColliderShape shape)
{
    if (shape == EZEKColliderShape::None)
        return true;
    if (!reader.IsCanRead(ColliderDemand))
        return false;

    EZEKColliderType type = GetUnstoredColliderType(shape);
    if (version >= version::ColliderType)
        type = static_cast<EZEKColliderType>(reader.GetIntNoCheck());
    static_cast<void>(type);
    if (version >= version::ColliderSecondInt)
        reader.GetIntNoCheck();

    ReadS3D(reader); // centre
    if (shape == EZEKColliderShape::Sphere)
        reader.GetFloatNoCheck(); // radius
    else
        ReadS3D(reader); // size

    if (shape == EZEKColliderShape::Mesh && version >= version::ColliderMesh)
    {
        int hasMesh;
        if (!reader.GetInt(hasMesh))
            return false;
        // Unlike the node's own switches, any value but 1 means no.
        if (hasMesh == 1)
            return AnalyseMeshSimple(reader, version);
    }
    return true;
}

} // namespace zek
