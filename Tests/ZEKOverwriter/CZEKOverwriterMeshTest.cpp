#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

constexpr MemberWalker AnalyseMeshList = &CZEKOverwriter::AnalyseMeshList;
constexpr MemberWalker AnalyseMesh = &CZEKOverwriter::AnalyseMesh;
constexpr MemberWalker AnalyseMeshSimple = &CZEKOverwriter::AnalyseMeshSimple;

constexpr int Version = 15;

/// A mesh without primitives and morphs takes, beside its vertices, 10 bytes of header, 24 of
/// bounding box and two counts.
constexpr int BareMeshSize = 10 + 24 + 4 + 4;

/// A simple mesh without primitives takes, beside its vertices, 10 bytes of header and a count.
constexpr int BareSimpleMeshSize = 10 + 4;

constexpr int MostVerticesFor16Bit = 65536;

CModelBuilder BuildMesh(const SMesh& mesh)
{
    CModelBuilder builder(Version);
    builder.AddMesh(mesh);
    return builder;
}

CModelBuilder BuildSimpleMesh(const SSimpleMesh& mesh)
{
    CModelBuilder builder(Version);
    builder.AddSimpleMesh(mesh);
    return builder;
}

SMesh MakeMesh(int vertexCount, const StreamFlags& streams, const std::vector<int>& indices)
{
    SMesh mesh;
    mesh.vertexCount = vertexCount;
    mesh.streams = streams;
    mesh.primitives = {SPrimitive{0, indices}};
    return mesh;
}

SMesh MakeBareMesh(int vertexCount, const StreamFlags& streams = {})
{
    SMesh mesh = MakeMesh(vertexCount, streams, {});
    mesh.primitives = {};
    return mesh;
}

SSimpleMesh MakeSimpleMesh(
    int vertexCount,
    const StreamFlags& streams = {},
    const std::vector<std::vector<int>>& primitives = {})
{
    SSimpleMesh mesh;
    mesh.vertexCount = vertexCount;
    mesh.streams = streams;
    mesh.primitives = primitives;
    return mesh;
}

/// Expects a mesh to be accepted when all its bytes are there and not when one is missing.
void ExpectMeshSize(std::int64_t size, const SMesh& mesh)
{
    const Bytes image = BuildMesh(mesh).GetImage();
    EXPECT_EQ(size, SizeOf(image));
    EXPECT_EQ(size, Walk(AnalyseMesh, image, Version));
    EXPECT_EQ(size, Walk(AnalyseMesh, Extend(image, 100), Version));
    EXPECT_EQ(Refused, Walk(AnalyseMesh, Cut(image, -1), Version));
}

void ExpectSimpleMeshSize(std::int64_t size, const SSimpleMesh& mesh)
{
    const Bytes image = BuildSimpleMesh(mesh).GetImage();
    EXPECT_EQ(size, SizeOf(image));
    EXPECT_EQ(size, Walk(AnalyseMeshSimple, image, Version));
    EXPECT_EQ(size, Walk(AnalyseMeshSimple, Extend(image, 100), Version));
    EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, Cut(image, -1), Version));
}

/// The bytes of a mesh whose vertex count holds no vertices: no primitives and no morphs.
Bytes BuildMeshWithoutVertices(int vertexCount, const StreamFlags& streams = {})
{
    return SetInt(BuildMesh(MakeBareMesh(0, streams)), "meshes.vertexCount", vertexCount);
}

/// Walks a mesh of three vertices whose last primitive has no indices but says that it has.
std::int64_t WalkWithIndexCount(int indexCount, std::size_t bytesAfterCount)
{
    CModelBuilder builder(Version);
    builder.AddSimpleMesh(MakeSimpleMesh(3, {}, {{}}));
    const Bytes image = SetInt(builder, "colliderMesh.primitives.indexCount", indexCount);
    return Walk(AnalyseMeshSimple, Extend(image, bytesAfterCount), Version);
}

/// The same with 32-bit indices.
std::int64_t WalkWithWideIndexCount(int indexCount, std::size_t bytesAfterCount)
{
    CModelBuilder builder(Version);
    builder.AddSimpleMesh(MakeSimpleMesh(MostVerticesFor16Bit + 1, {}, {{}}));
    const Bytes image = SetInt(builder, "colliderMesh.primitives.indexCount", indexCount);
    return Walk(AnalyseMeshSimple, Extend(image, bytesAfterCount), Version);
}

constexpr std::int64_t UpToIndexCount = BareSimpleMeshSize + 3 * 12 + 4;
constexpr std::int64_t UpToWideIndexCount =
    BareSimpleMeshSize + std::int64_t{MostVerticesFor16Bit + 1} * 12 + 4;

} // namespace

TEST(CZEKOverwriterMeshList, CountOfZeroOrLessIsAnEmptySection)
{
    for (int count : {0, -1, LowestInt})
    {
        for (int version : {0, 14, 15, 25})
        {
            EXPECT_EQ(4, Walk(AnalyseMeshList, IntAlone(count), version)) << count;
            EXPECT_EQ(4, Walk(AnalyseMeshList, Extend(IntAlone(count), 100), version)) << count;
        }
    }
}

TEST(CZEKOverwriterMeshList, CountNeedsFourBytes)
{
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseMeshList, Cut(IntAlone(0), size), Version)) << size;
}

TEST(CZEKOverwriterMeshList, RecordsStandBackToBack)
{
    CModelBuilder builder(Version);
    builder.AddMeshList({MakeBareMesh(1), SMesh(), MakeBareMesh(2, {1, 1, 1, 1, 1, 1})});
    const Bytes image = builder.GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseMeshList, image, Version));
    EXPECT_EQ(SizeOf(image), Walk(AnalyseMeshList, Extend(image, 100), Version));
}

TEST(CZEKOverwriterMeshList, MalformedSecondMeshIsRefused)
{
    CModelBuilder builder(Version);
    builder.AddMeshList({MakeBareMesh(1), MakeBareMesh(1), MakeBareMesh(1)});
    EXPECT_EQ(
        Refused, Walk(AnalyseMeshList, SetInt(builder, "meshes.vertexCount", 1000, 1), Version));
}

TEST(CZEKOverwriterMeshList, CountAboveTheRecordsThereIsRefused)
{
    CModelBuilder builder(Version);
    builder.AddMeshList({SMesh(), SMesh()});
    EXPECT_EQ(Refused, Walk(AnalyseMeshList, SetInt(builder, "meshCount", 3), Version));
}

TEST(CZEKOverwriterMesh, HeaderDemandsThirtyBytesBeforeVersion15AndTenFromThen)
{
    // A whole mesh has more than 30 bytes, so only the place of the failure tells the two apart.
    const Bytes image = BuildMesh(MakeBareMesh(0)).GetImage();
    for (int version : {0, 7, 14})
    {
        EXPECT_EQ(0, WhereRefused(AnalyseMesh, Cut(image, 9), version)) << version;
        EXPECT_EQ(0, WhereRefused(AnalyseMesh, Cut(image, 29), version)) << version;
        EXPECT_EQ(10, WhereRefused(AnalyseMesh, Cut(image, 30), version)) << version;
    }
    for (int version : {15, 25})
    {
        EXPECT_EQ(0, WhereRefused(AnalyseMesh, Cut(image, 9), version)) << version;
        EXPECT_EQ(10, WhereRefused(AnalyseMesh, Cut(image, 10), version)) << version;
        EXPECT_EQ(10, WhereRefused(AnalyseMesh, Cut(image, 29), version)) << version;
    }
}

TEST(CZEKOverwriterMesh, RecordIsTheSameInAllVersions)
{
    SMesh mesh = MakeMesh(2, {1, 1, 1, 1, 1, 1}, {0, 1, 1});
    mesh.morphNames = {"smile"};
    const Bytes image = BuildMesh(mesh).GetImage();
    for (int version = 0; version <= UnknownVersion; ++version)
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMesh, image, version)) << version;
}

TEST(CZEKOverwriterMesh, EachStreamAddsItsBytesToAVertex)
{
    struct SRow
    {
        StreamFlags streams;
        int stride;
    };
    const SRow rows[] = {
        {{0, 0, 0, 0, 0, 0}, 12},      // position
        {{1, 0, 0, 0, 0, 0}, 12 + 12}, // normal
        {{0, 1, 0, 0, 0, 0}, 12 + 12}, // tangent
        {{0, 0, 1, 0, 0, 0}, 12 + 8},  // UV
        {{0, 0, 0, 1, 0, 0}, 12 + 8},  // UV2
        {{0, 0, 0, 0, 1, 0}, 12 + 4},  // colour
        {{0, 0, 0, 0, 0, 1}, 12 + 24}, // bone weight
        {{1, 1, 1, 1, 1, 1}, 80},      // all
    };
    for (const SRow& row : rows)
    {
        SCOPED_TRACE(row.stride);
        for (int vertexCount : {0, 1, 2, 100})
        {
            const SMesh mesh = MakeBareMesh(vertexCount, row.streams);
            ExpectMeshSize(BareMeshSize + vertexCount * row.stride, mesh);
        }
    }
}

TEST(CZEKOverwriterMesh, EveryCombinationOfStreamsIsWalked)
{
    const int sizes[] = {12, 12, 8, 8, 4, 24};
    for (unsigned int mask = 0; mask < 64; ++mask)
    {
        StreamFlags streams = {};
        int stride = 12;
        for (unsigned int i = 0; i < 6; ++i)
        {
            streams[i] = static_cast<unsigned char>(mask >> i & 1u);
            stride += streams[i] * sizes[i];
        }
        SCOPED_TRACE(mask);
        ExpectMeshSize(BareMeshSize + 3 * stride, MakeBareMesh(3, streams));
    }
}

TEST(CZEKOverwriterMesh, AnyStreamByteThatIsNotZeroCountsAsSet)
{
    for (const unsigned char flag : Bytes{2, 0x80, 0xff})
    {
        const StreamFlags streams = {flag, flag, flag, flag, flag, flag};
        ExpectMeshSize(BareMeshSize + 80, MakeBareMesh(1, streams));
    }
}

TEST(CZEKOverwriterMesh, BoundingBoxNeedsTwentyFourBytes)
{
    const Bytes image = BuildMesh(MakeBareMesh(2)).GetImage();
    for (int size = 10; size < 10 + 24 + 24; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseMesh, Cut(image, size), Version)) << size;
    EXPECT_EQ(10 + 24, WhereRefused(AnalyseMesh, Cut(image, 10 + 24 + 23), Version));
}

TEST(CZEKOverwriterMesh, VerticesAreDemandedAsAWholeBeforeAnyIsRead)
{
    const int sizes[] = {12, 12, 8, 8, 4, 24};
    for (std::size_t stream = 0; stream < 6; ++stream)
    {
        StreamFlags streams = {};
        streams[stream] = 1;
        const Bytes image = BuildMesh(MakeBareMesh(4, streams)).GetImage();
        const int end = 10 + 4 * (12 + sizes[stream]);
        EXPECT_EQ(10, WhereRefused(AnalyseMesh, Cut(image, end - 1), Version)) << stream;
        EXPECT_EQ(end, WhereRefused(AnalyseMesh, Cut(image, end), Version)) << stream;
    }
}

TEST(CZEKOverwriterMesh, IndicesAndMorphPositionsAreDemandedAsAWholeBeforeAnyIsRead)
{
    SMesh mesh = MakeMesh(3, {}, {0, 1, 2});
    mesh.morphNames = {"smile"};
    const Bytes image = BuildMesh(mesh).GetImage();
    constexpr int indices = 10 + 36 + 24 + 4 + 8;
    EXPECT_EQ(indices, WhereRefused(AnalyseMesh, Cut(image, indices + 5), Version));
    constexpr int positions = indices + 6 + 4 + 6;
    EXPECT_EQ(positions, WhereRefused(AnalyseMesh, Cut(image, positions + 35), Version));
}

TEST(CZEKOverwriterMesh, PrimitiveAndMorphCountsOfZeroOrLessMeanNone)
{
    const CModelBuilder builder = BuildMesh(MakeBareMesh(2));
    for (int count : {0, -1, LowestInt})
    {
        for (const char* name : {"meshes.primitiveCount", "morphCount"})
        {
            const Bytes image = SetInt(builder, name, count);
            EXPECT_EQ(BareMeshSize + 24, Walk(AnalyseMesh, image, Version)) << name << count;
            EXPECT_EQ(BareMeshSize + 24, Walk(AnalyseMesh, Extend(image, 100), Version)) << name;
        }
    }
}

TEST(CZEKOverwriterMesh, PrimitiveIsAMaterialIndexAndAListOfIndices)
{
    SMesh mesh = MakeMesh(3, {}, {0, 1, 2});
    ExpectMeshSize(BareMeshSize + 36 + (4 + 4 + 6), mesh);
    mesh.primitives.push_back(SPrimitive{-1, {0, 1, 2, 2, 1, 0}});
    ExpectMeshSize(BareMeshSize + 36 + (4 + 4 + 6) + (4 + 4 + 12), mesh);
}

TEST(CZEKOverwriterMesh, IndexCountOfZeroOrLessMeansAnEmptyPrimitive)
{
    const CModelBuilder builder = BuildMesh(MakeMesh(3, {}, {}));
    for (int count : {0, -1, -1000, LowestInt})
    {
        const Bytes image = SetInt(builder, "meshes.primitives.indexCount", count);
        EXPECT_EQ(BareMeshSize + 36 + 8, Walk(AnalyseMesh, image, Version)) << count;
    }
}

TEST(CZEKOverwriterMesh, MissingBytesOfAPrimitiveAreRefused)
{
    const CModelBuilder builder = BuildMesh(MakeMesh(3, {}, {0, 1, 2}));
    const auto end = static_cast<std::int64_t>(builder.GetOffset("morphCount"));
    for (int missing = 1; missing <= 14; ++missing)
    {
        EXPECT_EQ(Refused, Walk(AnalyseMesh, Cut(builder.GetImage(), end - missing), Version))
            << missing;
    }
}

TEST(CZEKOverwriterMesh, MaterialAndVertexIndicesMayHaveAnyValue)
{
    SMesh mesh = MakeMesh(3, {}, {0xffff, 0x8000, 3});
    mesh.primitives[0].materialIndex = LowestInt;
    ExpectMeshSize(BareMeshSize + 36 + 14, mesh);
}

TEST(CZEKOverwriterMesh, IndicesAre16BitUpTo65536VerticesAnd32BitAbove)
{
    ExpectMeshSize(BareMeshSize + 65536 * 12 + 4 + 4 + 3 * 2, MakeMesh(65536, {}, {0, 1, 65535}));
    ExpectMeshSize(BareMeshSize + 65537 * 12 + 4 + 4 + 3 * 4, MakeMesh(65537, {}, {0, 1, 65536}));
}

TEST(CZEKOverwriterMesh, MorphIsANameAndAPositionPerVertex)
{
    SMesh mesh = MakeBareMesh(3);
    mesh.morphNames = {"smile", ""};
    ExpectMeshSize(BareMeshSize + 36 + (6 + 36) + (1 + 36), mesh);
}

TEST(CZEKOverwriterMesh, MorphOfAMeshWithoutVerticesIsItsName)
{
    SMesh mesh = MakeBareMesh(0);
    mesh.morphNames = {"smile", ""};
    ExpectMeshSize(BareMeshSize + 6 + 1, mesh);
}

TEST(CZEKOverwriterMesh, MorphNameWithoutTerminatorIsRefused)
{
    CModelBuilder builder = BuildMesh(MakeBareMesh(0));
    builder.AddBytes("morphs.name", "a name to the end");
    EXPECT_EQ(Refused, Walk(AnalyseMesh, SetInt(builder, "morphCount", 1), Version));
}

TEST(CZEKOverwriterMesh, MissingBytesOfMorphPositionsAreRefused)
{
    SMesh mesh = MakeBareMesh(2, {1, 0, 0, 0, 0, 0});
    mesh.morphNames = {"smile"};
    const Bytes image = BuildMesh(mesh).GetImage();
    for (int missing = 1; missing <= 24; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMesh, Cut(image, -missing), Version)) << missing;
}

TEST(CZEKOverwriterMesh, VertexCountOfZeroOrLessMeansNoVertices)
{
    for (int vertexCount : {0, -1, -1000, LowestInt})
    {
        const Bytes bare = BuildMeshWithoutVertices(vertexCount);
        EXPECT_EQ(BareMeshSize, Walk(AnalyseMesh, bare, Version)) << vertexCount;
        const Bytes all = BuildMeshWithoutVertices(vertexCount, {1, 1, 1, 1, 1, 1});
        EXPECT_EQ(BareMeshSize, Walk(AnalyseMesh, all, Version)) << vertexCount;
    }
}

TEST(CZEKOverwriterMesh, NegativeVertexCountLeaves16BitIndicesAndMorphsOfNamesAlone)
{
    SMesh mesh = MakeMesh(0, {}, {0, 1, 2});
    mesh.morphNames = {"smile"};
    for (int vertexCount : {-1, -65537, LowestInt})
    {
        const Bytes image = SetInt(BuildMesh(mesh), "meshes.vertexCount", vertexCount);
        EXPECT_EQ(BareMeshSize + (4 + 4 + 6) + 6, Walk(AnalyseMesh, image, Version)) << vertexCount;
    }
}

TEST(CZEKOverwriterMesh, VertexCountWhoseProductWrapsBelowTheBytesLeftIsRefused)
{
    // In 32 bits, 12 times these counts is 8, 8, 0 and negative.
    for (int vertexCount : {0x55555556, 0x15555556, 0x40000000, 0x0aaaaaab})
    {
        const Bytes image = Extend(BuildMeshWithoutVertices(vertexCount), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version)) << vertexCount;
    }
    // 80 times these is 0, 80, 80 and 80.
    for (int vertexCount : {0x10000000, 0x10000001, 0x30000001, 0x70000001})
    {
        const Bytes image = Extend(BuildMeshWithoutVertices(vertexCount, {1, 1, 1, 1, 1, 1}), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version)) << vertexCount;
    }
}

TEST(CZEKOverwriterMesh, HighestVertexCountIsRefusedWithEveryStride)
{
    for (const StreamFlags& streams : {StreamFlags{}, StreamFlags{1, 1, 1, 1, 1, 1}})
    {
        const Bytes image = Extend(BuildMeshWithoutVertices(HighestInt, streams), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version));
    }
}

TEST(CZEKOverwriterMesh, NegativeVertexCountWhoseProductWrapsAboveTheBytesLeftIsRefused)
{
    // -0x0aaaaaab * 12 is 0x7ffffffc in 32 bits.
    const Bytes image = Extend(BuildMeshWithoutVertices(-0x0aaaaaab), 1000);
    EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version));
}

TEST(CZEKOverwriterMesh, NegativeVertexCountWhoseProductWrapsToBytesThatAreThereIsAccepted)
{
    // -0x55555555 * 12 is 4 in 32 bits, -0x55555550 * 12 is 64.
    EXPECT_EQ(BareMeshSize, Walk(AnalyseMesh, BuildMeshWithoutVertices(-0x55555555), Version));
    const Bytes image = BuildMeshWithoutVertices(-0x55555550);
    EXPECT_EQ(Refused, Walk(AnalyseMesh, Extend(image, 10 + 63 - BareMeshSize), Version));
    EXPECT_EQ(BareMeshSize, Walk(AnalyseMesh, Extend(image, 10 + 64 - BareMeshSize), Version));
}

TEST(CZEKOverwriterMesh, MorphsDemandTheWrappedProductOfANegativeVertexCount)
{
    // -0x0aaaaaab * 24 is -8 in 32 bits and passes, but * 12 is 0x7ffffffc.
    SMesh mesh = MakeBareMesh(0, {1, 0, 0, 0, 0, 0});
    EXPECT_EQ(
        BareMeshSize,
        Walk(AnalyseMesh, SetInt(BuildMesh(mesh), "meshes.vertexCount", -0x0aaaaaab), Version));
    mesh.morphNames = {"smile"};
    const Bytes image = SetInt(BuildMesh(mesh), "meshes.vertexCount", -0x0aaaaaab);
    EXPECT_EQ(Refused, Walk(AnalyseMesh, Extend(image, 1000), Version));
}

TEST(CZEKOverwriterMesh, IndexCountWhoseProductWrapsBelowTheBytesLeftIsRefused)
{
    // In 32 bits, twice these counts is -2, negative and negative.
    const CModelBuilder builder = BuildMesh(MakeMesh(3, {}, {}));
    for (int count : {HighestInt, 0x40000000, 0x60000000})
    {
        const Bytes image = Extend(SetInt(builder, "meshes.primitives.indexCount", count), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version)) << count;
    }
}

TEST(CZEKOverwriterMesh, WideIndexCountWhoseProductWrapsBelowTheBytesLeftIsRefused)
{
    // In 32 bits, four times these counts is -4, 0, 4 and negative.
    const CModelBuilder builder = BuildMesh(MakeMesh(MostVerticesFor16Bit + 1, {}, {}));
    for (int count : {HighestInt, 0x40000000, 0x40000001, 0x20000000})
    {
        const Bytes image = Extend(SetInt(builder, "meshes.primitives.indexCount", count), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version)) << count;
    }
}

TEST(CZEKOverwriterMesh, NegativeIndexCountWhoseProductWrapsAboveTheBytesLeftIsRefused)
{
    // -0x60000000 * 2 is 0x40000000 in 32 bits.
    const CModelBuilder builder = BuildMesh(MakeMesh(3, {}, {}));
    const Bytes image = Extend(SetInt(builder, "meshes.primitives.indexCount", -0x60000000), 1000);
    EXPECT_EQ(Refused, Walk(AnalyseMesh, image, Version));
}

TEST(CZEKOverwriterMesh, SimpleHeaderNeedsTenBytes)
{
    const Bytes image = BuildSimpleMesh(MakeSimpleMesh(1)).GetImage();
    for (int size = 0; size < 10; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, Cut(image, size), Version)) << size;
}

TEST(CZEKOverwriterMesh, SimpleHeaderAndOneVertexAreDemandedBeforeAnyOfThemIsRead)
{
    const Bytes plain = BuildSimpleMesh(MakeSimpleMesh(1)).GetImage();
    EXPECT_EQ(0, WhereRefused(AnalyseMeshSimple, Cut(plain, 9), Version));
    EXPECT_EQ(10, WhereRefused(AnalyseMeshSimple, Cut(plain, 10 + 11), Version));
    EXPECT_EQ(10 + 12, WhereRefused(AnalyseMeshSimple, Cut(plain, 10 + 12), Version));
    const Bytes normal = BuildSimpleMesh(MakeSimpleMesh(1, {1, 0, 0, 0, 0, 0})).GetImage();
    EXPECT_EQ(10, WhereRefused(AnalyseMeshSimple, Cut(normal, 10 + 23), Version));
    EXPECT_EQ(10 + 24, WhereRefused(AnalyseMeshSimple, Cut(normal, 10 + 24), Version));
}

TEST(CZEKOverwriterMesh, SimpleIndicesAreDemandedAsAWholeBeforeAnyIsRead)
{
    const Bytes image = BuildSimpleMesh(MakeSimpleMesh(3, {}, {{0, 1, 2}})).GetImage();
    EXPECT_EQ(UpToIndexCount, WhereRefused(AnalyseMeshSimple, Cut(image, -1), Version));
    const Bytes wide = BuildSimpleMesh(MakeSimpleMesh(65537, {}, {{0, 1, 2}})).GetImage();
    EXPECT_EQ(UpToWideIndexCount, WhereRefused(AnalyseMeshSimple, Cut(wide, -1), Version));
}

TEST(CZEKOverwriterMesh, SimpleVertexIsAPositionAndOnlyTheNormalBesides)
{
    ExpectSimpleMeshSize(BareSimpleMeshSize + 3 * 12, MakeSimpleMesh(3));
    ExpectSimpleMeshSize(BareSimpleMeshSize + 3 * 24, MakeSimpleMesh(3, {1, 0, 0, 0, 0, 0}));
    ExpectSimpleMeshSize(BareSimpleMeshSize + 3 * 12, MakeSimpleMesh(3, {0, 1, 1, 1, 1, 1}));
    ExpectSimpleMeshSize(BareSimpleMeshSize + 3 * 24, MakeSimpleMesh(3, {2, 9, 1, 7, 1, 255}));
}

TEST(CZEKOverwriterMesh, SimplePrimitiveIsAListOfIndicesWithoutMaterial)
{
    ExpectSimpleMeshSize(
        BareSimpleMeshSize + 3 * 12 + (4 + 6) + (4 + 0) + (4 + 12),
        MakeSimpleMesh(3, {}, {{0, 1, 2}, {}, {0, 1, 2, 2, 1, 0}}));
}

TEST(CZEKOverwriterMesh, SimpleIndicesAre16BitUpTo65536VerticesAnd32BitAbove)
{
    ExpectSimpleMeshSize(
        BareSimpleMeshSize + 65536 * 12 + 4 + 3 * 2, MakeSimpleMesh(65536, {}, {{0, 1, 65535}}));
    ExpectSimpleMeshSize(
        BareSimpleMeshSize + 65537 * 12 + 4 + 3 * 4, MakeSimpleMesh(65537, {}, {{0, 1, 65536}}));
}

TEST(CZEKOverwriterMesh, SimpleMeshIsTheSameInAllVersions)
{
    const Bytes image =
        BuildSimpleMesh(MakeSimpleMesh(2, {1, 0, 0, 0, 0, 0}, {{0, 1, 1}})).GetImage();
    for (int version : {LowestInt, -1, 0, 7, 14, 15, 20, 26, HighestInt})
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMeshSimple, image, version)) << version;
}

TEST(CZEKOverwriterMesh, SimpleMeshWithoutVerticesStillDemandsTheBytesOfOne)
{
    // The demand is not consumed: the primitive count, 4 bytes of it, follows the header.
    for (int vertexCount : {0, -1, LowestInt})
    {
        const Bytes image =
            SetInt(BuildSimpleMesh(MakeSimpleMesh(0)), "colliderMesh.vertexCount", vertexCount);
        for (std::size_t more = 0; more < 8; ++more)
            EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, Extend(image, more), Version)) << more;
        EXPECT_EQ(BareSimpleMeshSize, Walk(AnalyseMeshSimple, Extend(image, 8), Version));
    }
}

TEST(CZEKOverwriterMesh, SimpleMeshWithNormalsButWithoutVerticesStillDemandsTheBytesOfOne)
{
    for (int vertexCount : {0, -1, LowestInt})
    {
        const Bytes image = SetInt(
            BuildSimpleMesh(MakeSimpleMesh(0, {1, 0, 0, 0, 0, 0})), "colliderMesh.vertexCount",
            vertexCount);
        for (std::size_t more = 0; more < 20; ++more)
            EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, Extend(image, more), Version)) << more;
        EXPECT_EQ(BareSimpleMeshSize, Walk(AnalyseMeshSimple, Extend(image, 20), Version));
    }
}

TEST(CZEKOverwriterMesh, SimpleVerticesAreDemandedOneByOne)
{
    const Bytes image = BuildSimpleMesh(MakeSimpleMesh(3)).GetImage();
    for (int vertexBytes = 0; vertexBytes < 36; ++vertexBytes)
    {
        const int there = 10 + vertexBytes / 12 * 12;
        EXPECT_EQ(there, WhereRefused(AnalyseMeshSimple, Cut(image, 10 + vertexBytes), Version))
            << vertexBytes;
    }
}

TEST(CZEKOverwriterMesh, SimpleVerticesWithNormalsAreDemandedOneByOne)
{
    const Bytes image = BuildSimpleMesh(MakeSimpleMesh(3, {1, 0, 0, 0, 0, 0})).GetImage();
    for (int vertexBytes = 0; vertexBytes < 72; ++vertexBytes)
    {
        const int there = 10 + vertexBytes / 24 * 24;
        EXPECT_EQ(there, WhereRefused(AnalyseMeshSimple, Cut(image, 10 + vertexBytes), Version))
            << vertexBytes;
    }
}

TEST(CZEKOverwriterMesh, SimpleVertexCountWhoseProductWrapsIsRefused)
{
    for (int vertexCount : {0x55555556, 0x40000000, 0x0aaaaaab, HighestInt})
    {
        const Bytes image = Extend(
            SetInt(BuildSimpleMesh(MakeSimpleMesh(0)), "colliderMesh.vertexCount", vertexCount),
            1000);
        EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, image, Version)) << vertexCount;
    }
}

TEST(CZEKOverwriterMesh, SimpleNegativeVertexCountHas16BitIndices)
{
    const CModelBuilder builder = BuildSimpleMesh(MakeSimpleMesh(0, {}, {{0, 1, 2}}));
    for (int vertexCount : {-1, -65537, LowestInt})
    {
        const Bytes image = SetInt(builder, "colliderMesh.vertexCount", vertexCount);
        EXPECT_EQ(BareSimpleMeshSize + 4 + 6, Walk(AnalyseMeshSimple, image, Version))
            << vertexCount;
    }
}

TEST(CZEKOverwriterMesh, SimplePrimitiveCountOfZeroOrLessMeansNone)
{
    for (int count : {0, -1, LowestInt})
    {
        const Bytes image =
            SetInt(BuildSimpleMesh(MakeSimpleMesh(1)), "colliderMesh.primitiveCount", count);
        EXPECT_EQ(BareSimpleMeshSize + 12, Walk(AnalyseMeshSimple, image, Version)) << count;
    }
}

TEST(CZEKOverwriterMesh, SimpleMissingBytesOfAPrimitiveAreRefused)
{
    const Bytes image = BuildSimpleMesh(MakeSimpleMesh(3, {}, {{0, 1, 2}})).GetImage();
    for (int missing = 1; missing <= 14; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMeshSimple, Cut(image, -missing), Version)) << missing;
}

TEST(CZEKOverwriterMesh, SimpleIndexCountOfZeroOrLessMeansAnEmptyPrimitive)
{
    for (int count : {0, -1, -1000, LowestInt})
    {
        EXPECT_EQ(UpToIndexCount, WalkWithIndexCount(count, 0)) << count;
        EXPECT_EQ(UpToWideIndexCount, WalkWithWideIndexCount(count, 0)) << count;
    }
}

TEST(CZEKOverwriterMesh, SimpleIndexCountWhoseProductWrapsBelowTheBytesLeftIsRefused)
{
    // As 32-bit products these pass: negative, 0 or 4.
    for (int count : {HighestInt, 0x40000000, 0x60000000})
        EXPECT_EQ(Refused, WalkWithIndexCount(count, 1000)) << count;
    for (int count : {HighestInt, 0x40000000, 0x40000001, 0x20000000})
        EXPECT_EQ(Refused, WalkWithWideIndexCount(count, 1000)) << count;
}

TEST(CZEKOverwriterMesh, SimpleNegativeIndexCountWhoseProductWrapsAboveTheBytesLeftIsRefused)
{
    EXPECT_EQ(Refused, WalkWithIndexCount(-0x60000000, 1000));     // 0x40000000 in 32 bits
    EXPECT_EQ(Refused, WalkWithWideIndexCount(-0x30000000, 1000)); // the same
}

TEST(CZEKOverwriterMesh, SimpleNegativeIndexCountWhoseProductWrapsToBytesThatAreThereIsAccepted)
{
    EXPECT_EQ(Refused, WalkWithIndexCount(-HighestInt, 1)); // 2 in 32 bits
    EXPECT_EQ(UpToIndexCount, WalkWithIndexCount(-HighestInt, 2));
    EXPECT_EQ(Refused, WalkWithWideIndexCount(-0x3fffffff, 3)); // 4 in 32 bits
    EXPECT_EQ(UpToWideIndexCount, WalkWithWideIndexCount(-0x3fffffff, 4));
}

TEST(CZEKOverwriterMeshSimple, OneVertexIsDemandedEvenOfAMeshWithoutAny)
{
    const Bytes plain = BuildSimpleMesh(MakeSimpleMesh(0)).GetImage();
    EXPECT_EQ(10, WhereRefused(AnalyseMeshSimple, Cut(Extend(plain, 100), 10 + 11), Version));
    EXPECT_EQ(SizeOf(plain), Walk(AnalyseMeshSimple, Cut(Extend(plain, 100), 10 + 12), Version));
    const Bytes normal = BuildSimpleMesh(MakeSimpleMesh(0, {1, 0, 0, 0, 0, 0})).GetImage();
    EXPECT_EQ(10, WhereRefused(AnalyseMeshSimple, Cut(Extend(normal, 100), 10 + 23), Version));
    EXPECT_EQ(SizeOf(normal), Walk(AnalyseMeshSimple, Cut(Extend(normal, 100), 10 + 24), Version));
}
