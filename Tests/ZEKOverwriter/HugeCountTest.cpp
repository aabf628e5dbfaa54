// A count that the file cannot hold costs neither time nor memory in proportion to it.

#include <ctime>

#include <gtest/gtest.h>

#include "Support/Heap.h"
#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

/// A model of everything has some thousand bytes, the count stands for 2 GiB and more.
constexpr std::size_t MostAllocatedBytes = 1 << 20;
constexpr double MostSeconds = 1.0;

/// Expects some work to stay within these bounds.
template <typename Work>
void ExpectCheap(const Work& work)
{
    const std::clock_t start = std::clock();
    std::size_t allocatedBytes = 0;
    {
        const CAllocationWatch watch([&](std::size_t size) { allocatedBytes += size; });
        work();
    }
    EXPECT_LT(allocatedBytes, MostAllocatedBytes);
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, MostSeconds);
}

struct SCount
{
    int version;
    std::string field;
};

void PrintTo(const SCount& count, std::ostream* stream)
{
    *stream << count.field << " of version " << count.version;
}

class HugeCount : public testing::TestWithParam<SCount>
{
};

INSTANTIATE_TEST_SUITE_P(
    EveryKind,
    HugeCount,
    testing::Values(
        SCount{25, "nodeCount"},
        SCount{25, "colliderMesh.vertexCount"},
        SCount{25, "colliderMesh.primitiveCount"},
        SCount{25, "colliderMesh.primitives.indexCount"},
        SCount{25, "meshCount"},
        SCount{25, "meshes.vertexCount"},
        SCount{25, "meshes.primitiveCount"},
        SCount{25, "meshes.primitives.indexCount"},
        SCount{25, "morphCount"},
        SCount{25, "materialCount"},
        SCount{25, "probeCount"},
        SCount{25, "uvCount"},
        SCount{25, "textureCount"},
        SCount{25, "boneCount"},
        SCount{26, "textureCount"},
        SCount{26, "probeCount"},
        SCount{26, "lightmapCount"}));

} // namespace

TEST_P(HugeCount, IsRefusedAtOnceWithoutMemoryForIt)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(GetParam().version));
    for (int count : {HighestInt, HighestInt - 1, 0x40000000, 0x20000000, 0x10000000, 1 << 24})
    {
        Bytes image = SetInt(builder, GetParam().field, count);
        ExpectCheap(
            [&image]
            { EXPECT_FALSE(CZEKOverwriter().OverwriteImage(image, "no-such-folder/model.bin")); });
    }
}

TEST(HugeLightmapCount, BelowVersion26IsWalkedAtOnce)
{
    struct SRow
    {
        int version;
        int size;
    };
    for (const SRow& row : {SRow{0, 4}, {7, 4}, {17, 4}, {18, 8}, {21, 8}, {22, 12}, {25, 12}})
    {
        CModelBuilder builder(row.version);
        builder.AddLightmapList({});
        const Bytes image = SetInt(builder, "lightmapCount", HighestInt);
        ExpectCheap(
            [&] {
                EXPECT_EQ(row.size, Walk(&CZEKOverwriter::AnalyseLightmapList, image, row.version));
            });
    }
}

TEST(HugeProbeCount, OfVersion11WhichHasNoProbeRecordsIsWalkedAtOnce)
{
    ExpectCheap(
        []
        { EXPECT_EQ(4, Walk(&CZEKOverwriter::AnalyseReflectionProbe, IntAlone(HighestInt), 11)); });
}

TEST(HugeMorphCount, OfAMeshWithoutVerticesTakesMemoryInProportionToTheNamesThere)
{
    // Each morph is the terminator of an empty name.
    SMesh mesh;
    mesh.vertexCount = 0;
    mesh.primitives = {};
    CModelBuilder builder(15);
    builder.AddMesh(mesh);
    const Bytes image = Extend(SetInt(builder, "morphCount", HighestInt), 1000);
    ExpectCheap([&] { EXPECT_EQ(Refused, Walk(&CZEKOverwriter::AnalyseMesh, image, 15)); });
}

TEST(HugePrimitiveCount, OfEmptyPrimitivesTakesMemoryInProportionToTheRecordsThere)
{
    SMesh mesh;
    mesh.vertexCount = 0;
    mesh.primitives = {};
    CModelBuilder builder(15);
    builder.AddMesh(mesh);
    const Bytes image = Extend(SetInt(builder, "meshes.primitiveCount", HighestInt), 8000);
    ExpectCheap([&] { EXPECT_EQ(Refused, Walk(&CZEKOverwriter::AnalyseMesh, image, 15)); });
}
