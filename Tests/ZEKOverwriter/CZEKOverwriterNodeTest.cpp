#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

constexpr MemberWalker AnalyseNodeList = &CZEKOverwriter::AnalyseNodeList;
constexpr MemberWalker AnalyseNode = &CZEKOverwriter::AnalyseNode;

constexpr int None = -1;
constexpr int Box = 0;
constexpr int Sphere = 1;
constexpr int Mesh = 2;

/// A node with a name of two bytes, terminator included.
SNode MakeNode(int shape)
{
    SNode node;
    node.name = "n";
    node.colliderShape = shape;
    return node;
}

CModelBuilder BuildNode(int version, const SNode& node)
{
    CModelBuilder builder(version);
    builder.AddNode(node);
    return builder;
}

/// Expects a walked node to take just size bytes.
void ExpectSize(std::int64_t size, int version, const SNode& node)
{
    testsupport::ExpectSize(size, AnalyseNode, BuildNode(version, node).GetImage(), version);
}

/// Expects a node to be accepted when all its bytes are there and not when one is missing.
void ExpectNeedsLastByte(int version, const SNode& node)
{
    const Bytes image = BuildNode(version, node).GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseNode, image, version)) << "version " << version;
    EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, -1), version)) << "version " << version;
}

/// Walks a node, followed by bytes enough, after one of its ints got another value.
std::int64_t WalkWithInt(int version, const SNode& node, const std::string& name, int value)
{
    const Bytes image = SetInt(BuildNode(version, node), name, value);
    return Walk(AnalyseNode, Extend(image, 100), version);
}

} // namespace

TEST(CZEKOverwriterNodeList, CountOfZeroOrLessIsAnEmptySection)
{
    for (int count : {0, -1, LowestInt})
    {
        for (int version : {0, 7, 25})
        {
            EXPECT_EQ(4, Walk(AnalyseNodeList, IntAlone(count), version)) << count;
            EXPECT_EQ(4, Walk(AnalyseNodeList, Extend(IntAlone(count), 200), version)) << count;
        }
    }
}

TEST(CZEKOverwriterNodeList, CountNeedsFourBytes)
{
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseNodeList, Cut(IntAlone(0), size), 7)) << size;
}

TEST(CZEKOverwriterNodeList, RecordsStandBackToBack)
{
    CModelBuilder builder(17);
    builder.AddNodeList({MakeNode(None), MakeNode(Box), MakeNode(None)});
    const Bytes image = builder.GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseNodeList, image, 17));
    EXPECT_EQ(SizeOf(image), Walk(AnalyseNodeList, Extend(image, 200), 17));
}

TEST(CZEKOverwriterNodeList, MalformedSecondNodeIsRefused)
{
    CModelBuilder builder(17);
    builder.AddNodeList({MakeNode(None), MakeNode(None), MakeNode(None)});
    EXPECT_EQ(
        Refused, Walk(AnalyseNodeList, Extend(SetInt(builder, "colliderShape", 3, 1), 200), 17));
}

TEST(CZEKOverwriterNodeList, CountAboveTheRecordsThereIsRefused)
{
    CModelBuilder builder(17);
    builder.AddNodeList({MakeNode(None), MakeNode(None)});
    EXPECT_EQ(Refused, Walk(AnalyseNodeList, SetInt(builder, "nodeCount", 3), 17));
}

TEST(CZEKOverwriterNode, NameWithoutTerminatorIsRefused)
{
    EXPECT_EQ(Refused, Walk(AnalyseNode, Bytes(100, 'n'), 7));
    EXPECT_EQ(Refused, Walk(AnalyseNode, Bytes(), 7));
}

TEST(CZEKOverwriterNode, EmptyNameIsAccepted)
{
    SNode node = MakeNode(None);
    node.name = "";
    ExpectSize(53, 7, node);
}

TEST(CZEKOverwriterNode, FixedFieldsNeedFiftyTwoBytes)
{
    const Bytes image = BuildNode(7, MakeNode(None)).GetImage();
    EXPECT_EQ(54, Walk(AnalyseNode, image, 7));
    for (int size = 2; size < 54; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, size), 7)) << size;
}

TEST(CZEKOverwriterNode, ShapeOutsideMinusOneToTwoIsRefused)
{
    for (int shape : {LowestInt, -3, -2, 3, 4, 0x10000, HighestInt})
    {
        for (int version : {0, 5, 7, 19, 20, 25})
        {
            EXPECT_EQ(Refused, WalkWithInt(version, MakeNode(None), "colliderShape", shape))
                << "shape " << shape << ", version " << version;
        }
    }
}

TEST(CZEKOverwriterNode, SizeOfEachShapeInEachVersion)
{
    struct SRow
    {
        int version;
        int none;
        int box;
        int sphere;
        int mesh;
    };
    // The name and the fixed fields take 54 bytes. What else differs from row to row:
    const SRow rows[] = {
        {0, 54, 78, 70, 78},      // centre and size, or centre and radius
        {5, 54, 78, 70, 78},      //
        {6, 54, 82, 74, 82},      // collider type
        {7, 54, 82, 74, 82},      //
        {8, 58, 86, 78, 86},      // offset flag
        {11, 58, 86, 78, 86},     //
        {12, 62, 90, 82, 90},     // reference selector
        {14, 62, 90, 82, 90},     //
        {15, 82, 110, 102, 110},  // reserved block
        {16, 86, 114, 106, 114},  // alternate reference
        {17, 90, 118, 110, 118},  // reserved word
        {19, 90, 118, 110, 118},  //
        {20, 90, 118, 110, 122},  // has-mesh int
        {22, 90, 118, 110, 122},  //
        {23, 90, 122, 114, 126},  // second collider int
        {25, 90, 122, 114, 126},  //
        {100, 90, 122, 114, 126}, //
    };
    for (const SRow& row : rows)
    {
        ExpectSize(row.none, row.version, MakeNode(None));
        ExpectSize(row.box, row.version, MakeNode(Box));
        ExpectSize(row.sphere, row.version, MakeNode(Sphere));
        ExpectSize(row.mesh, row.version, MakeNode(Mesh));
    }
}

TEST(CZEKOverwriterNode, EmbeddedMeshOfAMeshColliderIsWalkedFromVersion20)
{
    SNode node = MakeNode(Mesh);
    node.hasMesh = 1;
    node.mesh.vertexCount = 1;
    node.mesh.primitives = {{0, 0, 0}};
    // 10 of the header, 12 of the vertex, 4 of the primitive count, 4 + 6 of the primitive
    ExpectSize(118, 19, node);
    ExpectSize(122 + 36, 20, node);
    ExpectSize(126 + 36, 23, node);
    node.mesh.streams = {1, 0, 0, 0, 0, 0};
    ExpectSize(122 + 48, 20, node);
}

TEST(CZEKOverwriterNode, ColliderBodyNeedsThirtyTwoBytesInEveryVersion)
{
    // Version 7 ends with the body, so that only the demand can ask for more than the record has.
    struct SRow
    {
        int version;
        int shape;
        int bodySize;
    };
    const SRow rows[] = {
        {0, Box, 24}, {0, Sphere, 16}, {0, Mesh, 24}, {5, Box, 24}, {5, Sphere, 16}, {5, Mesh, 24},
        {6, Box, 28}, {6, Sphere, 20}, {6, Mesh, 28}, {7, Box, 28}, {7, Sphere, 20}, {7, Mesh, 28},
    };
    for (const SRow& row : rows)
    {
        const Bytes image = BuildNode(row.version, MakeNode(row.shape)).GetImage();
        for (int missing = 0; missing < 32 - row.bodySize; ++missing)
        {
            EXPECT_EQ(
                Refused,
                Walk(AnalyseNode, Extend(image, static_cast<std::size_t>(missing)), row.version))
                << "version " << row.version << ", shape " << row.shape << ", " << missing;
        }
        EXPECT_EQ(
            54 + row.bodySize,
            Walk(
                AnalyseNode, Extend(image, static_cast<std::size_t>(32 - row.bodySize)),
                row.version))
            << "version " << row.version << ", shape " << row.shape;
    }
}

TEST(CZEKOverwriterNode, SphereOfVersion5ThatEndsTheFileIsRefused)
{
    const Bytes image = BuildNode(5, MakeNode(Sphere)).GetImage();
    ASSERT_EQ(54 + 16, SizeOf(image));
    EXPECT_EQ(Refused, Walk(AnalyseNode, image, 5));
    EXPECT_EQ(Refused, Walk(AnalyseNode, Extend(image, 15), 5));
    EXPECT_EQ(70, Walk(AnalyseNode, Extend(image, 16), 5));
}

TEST(CZEKOverwriterNode, SphereOfVersion8ThatEndsTheFileIsRefused)
{
    // 20 bytes of body and 4 of the offset flag
    const Bytes image = BuildNode(8, MakeNode(Sphere)).GetImage();
    EXPECT_EQ(Refused, Walk(AnalyseNode, image, 8));
    EXPECT_EQ(Refused, Walk(AnalyseNode, Extend(image, 7), 8));
    EXPECT_EQ(78, Walk(AnalyseNode, Extend(image, 8), 8));
}

TEST(CZEKOverwriterNode, FieldsAreDemandedAsAWholeBeforeAnyIsRead)
{
    const Bytes none = BuildNode(7, MakeNode(None)).GetImage();
    EXPECT_EQ(2, WhereRefused(AnalyseNode, Cut(none, 53), 7));
    for (int shape : {Box, Sphere, Mesh})
    {
        for (int version : {5, 6, 22, 23})
        {
            const Bytes image = Extend(BuildNode(version, MakeNode(shape)).GetImage(), 32);
            EXPECT_EQ(54, WhereRefused(AnalyseNode, Cut(image, 54 + 31), version))
                << "version " << version << ", shape " << shape;
        }
    }
    SNode node = MakeNode(None);
    node.offsetFlag = 1;
    EXPECT_EQ(58, WhereRefused(AnalyseNode, Cut(BuildNode(8, node).GetImage(), 69), 8));
}

TEST(CZEKOverwriterNode, NodeWithoutColliderMayEndTheFile)
{
    for (int version : {0, 7, 8, 12, 15, 16, 17, 25})
        ExpectNeedsLastByte(version, MakeNode(None));
}

TEST(CZEKOverwriterNode, BoxOfVersion23FillsTheDemandByItself)
{
    ExpectNeedsLastByte(23, MakeNode(Box));
}

TEST(CZEKOverwriterNode, ColliderTypeAndSecondIntMayHaveAnyValue)
{
    for (int shape : {Box, Sphere, Mesh})
    {
        const std::int64_t size = SizeOf(BuildNode(23, MakeNode(shape)).GetImage());
        for (int value : {LowestInt, -1, 2, HighestInt})
        {
            EXPECT_EQ(size, WalkWithInt(23, MakeNode(shape), "colliderType", value));
            EXPECT_EQ(size, WalkWithInt(23, MakeNode(shape), "colliderSecondInt", value));
        }
    }
}

TEST(CZEKOverwriterNode, ColliderIsWalkedAlone)
{
    const auto walk = [](const Bytes& bytes, int version, zek::EZEKColliderShape shape)
    {
        return Walk(
            [shape](CZEKOverwriter& overwriter, fileimage::CFileImageAnalyser& reader, int v)
            { return overwriter.AnalyseCollider(reader, v, shape); },
            bytes, version);
    };
    using Shape = zek::EZEKColliderShape;
    EXPECT_EQ(0, walk(Bytes(), 23, Shape::None));
    EXPECT_EQ(24, walk(Bytes(100), 5, Shape::Box));
    EXPECT_EQ(20, walk(Bytes(100), 6, Shape::Sphere));
    EXPECT_EQ(32, walk(Bytes(100), 20, Shape::Mesh));
    EXPECT_EQ(36, walk(Bytes(100), 23, Shape::Mesh));
    EXPECT_EQ(Refused, walk(Bytes(31), 5, Shape::Sphere));
    EXPECT_EQ(Refused, walk(Bytes(35), 23, Shape::Mesh));
}

TEST(CZEKOverwriterNode, HasMeshValuesOtherThanOneMeanNoMesh)
{
    for (int hasMesh : {0, 2, -1, 257, LowestInt, HighestInt})
        EXPECT_EQ(122, WalkWithInt(20, MakeNode(Mesh), "colliderHasMesh", hasMesh)) << hasMesh;
}

TEST(CZEKOverwriterNode, MissingHasMeshIntIsRefused)
{
    // From version 23 on the int stands after the 32 bytes that were demanded.
    const CModelBuilder builder = BuildNode(23, MakeNode(Mesh));
    const auto offset = static_cast<std::int64_t>(builder.GetOffset("colliderHasMesh"));
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(builder.GetImage(), offset + size), 23)) << size;
}

TEST(CZEKOverwriterNode, FailingEmbeddedMeshIsRefused)
{
    SNode node = MakeNode(Mesh);
    node.hasMesh = 1;
    EXPECT_EQ(Refused, WalkWithInt(20, node, "colliderMesh.vertexCount", 1000));
    EXPECT_EQ(Refused, WalkWithInt(20, node, "colliderMesh.primitives.indexCount", 1000));
}

TEST(CZEKOverwriterNode, OffsetVectorFollowsOffsetFlagOfOne)
{
    SNode node = MakeNode(None);
    node.offsetFlag = 1;
    ExpectSize(54, 7, node);
    ExpectSize(58 + 12, 8, node);
    ExpectSize(90 + 12, 25, node);
}

TEST(CZEKOverwriterNode, OffsetVectorNeedsTwelveBytes)
{
    SNode node = MakeNode(None);
    node.offsetFlag = 1;
    const Bytes image = BuildNode(8, node).GetImage();
    EXPECT_EQ(70, Walk(AnalyseNode, image, 8));
    for (int size = 58; size < 70; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, size), 8)) << size;
}

TEST(CZEKOverwriterNode, OffsetFlagOtherThanZeroAndOneIsRefused)
{
    for (int flag : {2, -1, 256, 257, LowestInt, HighestInt})
    {
        for (int version : {8, 12, 25})
        {
            EXPECT_EQ(Refused, WalkWithInt(version, MakeNode(None), "hasOffset", flag))
                << "flag " << flag << ", version " << version;
        }
    }
}

TEST(CZEKOverwriterNode, OffsetFlagOfTwoFailsTheWholePass)
{
    SModel model = MakeFullModel(8);
    model.textures[0].flags = {1, 1, 1, 1};
    const CModelBuilder builder = CModelBuilder::Build(model);
    Bytes image = SetInt(builder, "hasOffset", 2);
    const Bytes before = image;
    EXPECT_FALSE(CZEKOverwriter().OverwriteImage(image, "no-such-folder/model.bin"));
    EXPECT_EQ(before, image);
}

TEST(CZEKOverwriterNode, MissingOffsetFlagIsRefused)
{
    for (int missing = 1; missing <= 4; ++missing)
    {
        const Bytes image = BuildNode(8, MakeNode(None)).GetImage();
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, -missing), 8)) << missing;
    }
}

TEST(CZEKOverwriterNode, SelectedReferenceFollowsSelectorOfOne)
{
    SNode node = MakeNode(None);
    node.referenceSelector = 1;
    ExpectSize(58, 11, node);
    ExpectSize(66, 12, node);
    ExpectSize(66, 14, node);
    ExpectSize(86, 15, node);
    ExpectSize(86, 16, node);
    ExpectSize(90, 17, node);
    ExpectNeedsLastByte(12, node);
}

TEST(CZEKOverwriterNode, AlternateReferenceFollowsSelectorOfZeroOnlyFromVersion16)
{
    ExpectSize(62, 12, MakeNode(None));
    ExpectSize(62, 14, MakeNode(None));
    ExpectSize(82, 15, MakeNode(None)); // the reserved block, no reference
    ExpectSize(86, 16, MakeNode(None));
    ExpectNeedsLastByte(16, MakeNode(None));
}

TEST(CZEKOverwriterNode, MissingReferenceIsRefused)
{
    const CModelBuilder builder = BuildNode(16, MakeNode(None));
    const auto offset = static_cast<std::int64_t>(builder.GetOffset("alternateReference"));
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(builder.GetImage(), offset + size), 16)) << size;
}

TEST(CZEKOverwriterNode, ReferenceSelectorOtherThanZeroAndOneIsRefused)
{
    for (int selector : {2, -1, 256, 257, LowestInt, HighestInt})
    {
        for (int version : {12, 15, 16, 25})
        {
            EXPECT_EQ(Refused, WalkWithInt(version, MakeNode(None), "referenceSelector", selector))
                << "selector " << selector << ", version " << version;
        }
    }
}

TEST(CZEKOverwriterNode, ReferencesMayHaveAnyValue)
{
    for (int value : {LowestInt, -1, HighestInt})
    {
        EXPECT_EQ(86, WalkWithInt(16, MakeNode(None), "alternateReference", value));
        SNode node = MakeNode(None);
        node.referenceSelector = 1;
        EXPECT_EQ(86, WalkWithInt(16, node, "selectedReference", value));
    }
}

TEST(CZEKOverwriterNode, ReservedBlockNeedsTwentyBytes)
{
    const Bytes image = BuildNode(15, MakeNode(None)).GetImage();
    for (int missing = 1; missing <= 20; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, -missing), 15)) << missing;
}

TEST(CZEKOverwriterNode, ReservedWordNeedsFourBytes)
{
    const Bytes image = BuildNode(17, MakeNode(None)).GetImage();
    for (int missing = 1; missing <= 4; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseNode, Cut(image, -missing), 17)) << missing;
}

TEST(CZEKOverwriterNode, ParentAndMeshMayHaveAnyIndex)
{
    for (int index : {LowestInt, -1, 1000, HighestInt})
    {
        EXPECT_EQ(54, WalkWithInt(7, MakeNode(None), "nodes.parentNodeIndex", index));
        EXPECT_EQ(54, WalkWithInt(7, MakeNode(None), "nodes.meshIndex", index));
    }
}
