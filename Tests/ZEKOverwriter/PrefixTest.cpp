// What is cut short is refused: every prefix of a file, of a section and of a single record, each
// in a heap block of exactly its size.

#include <algorithm>

#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

const std::string Tail = "tail";

/// A model of everything with flags that the program would change, and bytes after its end.
SModel MakeFlaggedModel(int version)
{
    SModel model = MakeFullModel(version);
    model.marker = 0x01020304;
    model.textures[0].flags = {1, 1, 1, 1};
    model.textures[1].flags = {9, 8, 7, 6};
    model.probes[0].flags = {1, 0, 0, 1};
    model.probes[1].flags = {2, 3, 4, 5};
    model.lightmaps[0].flags = {1, 1, 0, 255};
    model.lightmaps[1].flags = {0, 1, 1, 0};
    model.tail = Tail;
    return model;
}

/// The image as a run without any variant leaves it.
Bytes ClearFlags(const CModelBuilder& builder, int version)
{
    Bytes image = builder.GetImage();
    if (version >= 21)
        image[MarkerOffset] = 1;
    for (const std::vector<std::size_t>& offsets :
         {builder.GetTextureFlagOffsets(), builder.GetProbeFlagOffsets(),
          builder.GetLightmapFlagOffsets()})
    {
        for (std::size_t offset : offsets)
            std::fill_n(image.begin() + static_cast<std::ptrdiff_t>(offset), 4, '\0');
    }
    return image;
}

/// Expects every prefix of a model's file to be refused that does not reach the end of the last
/// section, and to be left alone.
void ExpectCutFileIsRefused(const SModel& model)
{
    const CModelBuilder builder = CModelBuilder::Build(model);
    const Bytes& image = builder.GetImage();
    const Bytes cleared = ClearFlags(builder, model.version);
    const std::int64_t end = SizeOf(image) - static_cast<std::int64_t>(model.tail.length());
    for (std::int64_t size = 0; size <= SizeOf(image); ++size)
    {
        Bytes prefix = Cut(image, size);
        const bool isAccepted = CZEKOverwriter().OverwriteImage(prefix, "no-such-folder/model.bin");
        ASSERT_EQ(size >= end, isAccepted) << size << " of " << end;
        const Bytes expected = Cut(isAccepted ? cleared : image, size);
        ASSERT_EQ(expected, prefix) << size << " of " << end;
    }
}

/// Expects a walker to refuse every prefix of a section or record shorter than it demands, and to
/// take exactly the section from every longer one.
void ExpectCutIsRefused(
    const Walker& walker, const CModelBuilder& builder, int version, std::int64_t demand)
{
    const Bytes& image = builder.GetImage();
    const Bytes extended = Extend(image, 100);
    for (std::int64_t size = 0; size < demand; ++size)
    {
        ASSERT_EQ(Refused, Walk(walker, Cut(extended, size), version))
            << "version " << version << ", " << size << " bytes of " << SizeOf(image);
    }
    for (std::int64_t size = demand; size <= demand + 8; ++size)
    {
        ASSERT_EQ(SizeOf(image), Walk(walker, Cut(extended, size), version))
            << "version " << version << ", " << size << " bytes of " << SizeOf(image);
    }
}

/// The bytes from a builder's start that its only node demands, which may be more than it has.
std::int64_t GetNodeDemand(const CModelBuilder& builder, int shape)
{
    const std::int64_t size = SizeOf(builder.GetImage());
    if (shape == -1)
        return size;
    const auto body = static_cast<std::int64_t>(builder.GetOffset("colliderShape")) + 4;
    return std::max(size, body + 32);
}

/// The same of its only material: the fixed fields are demanded with a roughness index.
std::int64_t GetMaterialDemand(const CModelBuilder& builder, int version)
{
    std::int64_t demand = 61;
    if (version >= 3)
        demand += 1;
    if (version >= 13)
        demand += 1;
    if (version >= 4)
        demand += 16;
    if (version >= 7)
        demand += 16;
    const auto fixedFields = static_cast<std::int64_t>(builder.GetOffset("shaderType"));
    return std::max(SizeOf(builder.GetImage()), fixedFields + demand);
}

class FileOfVersion : public testing::TestWithParam<int>
{
};

class SectionOfVersion : public testing::TestWithParam<int>
{
};

INSTANTIATE_TEST_SUITE_P(Version, FileOfVersion, testing::Range(OldestVersion, UnknownVersion + 1));
INSTANTIATE_TEST_SUITE_P(Version, SectionOfVersion, testing::Range(0, UnknownVersion + 1));

} // namespace

TEST_P(FileOfVersion, IsRefusedWhereItIsCutBeforeItsLastSectionEnds)
{
    ExpectCutFileIsRefused(MakeFlaggedModel(GetParam()));
}

TEST_P(FileOfVersion, WithEmptySectionsIsRefusedWhereItIsCut)
{
    SModel model;
    model.version = GetParam();
    model.tail = Tail;
    ExpectCutFileIsRefused(model);
}

TEST_P(FileOfVersion, WithoutLightmapListIsRefusedAlsoWhereTheBoneTableIsAbsent)
{
    // Up to 3 bytes after the textures mean an absent bone table, and then the list is missing.
    if (GetParam() >= 26)
        return;
    SModel model = MakeFlaggedModel(GetParam());
    const CModelBuilder builder = CModelBuilder::Build(model);
    const auto end = static_cast<std::int64_t>(builder.GetOffset("boneCount"));
    for (std::int64_t left = 0; left < 4; ++left)
    {
        Bytes image = Cut(builder.GetImage(), end + left);
        EXPECT_FALSE(CZEKOverwriter().OverwriteImage(image, "no-such-folder/model.bin")) << left;
    }
}

TEST_P(SectionOfVersion, CutNodeListIsRefused)
{
    const int version = GetParam();
    CModelBuilder builder(version);
    builder.AddNodeList(MakeFullModel(version).nodes);
    // The last node has a mesh collider; what stands after its body counts for the demand of 32.
    const std::int64_t missing = version < 6 ? 8 : version < 8 ? 4 : 0;
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseNodeList, builder, version, SizeOf(builder.GetImage()) + missing);
}

TEST_P(SectionOfVersion, CutMeshListIsRefused)
{
    const int version = GetParam();
    CModelBuilder builder(version);
    builder.AddMeshList(MakeFullModel(version).meshes);
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseMeshList, builder, version, SizeOf(builder.GetImage()));
}

TEST_P(SectionOfVersion, CutMaterialListIsRefused)
{
    const int version = GetParam();
    const SModel model = MakeFullModel(version);
    CModelBuilder builder(version);
    builder.AddMaterialList(model.materials, model.probes);
    // The last material has no roughness index; from version 10 on its UV list stands for that.
    const std::int64_t missing = version < 10 ? 4 : 0;
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseMaterialList, builder, version,
        SizeOf(builder.GetImage()) + missing);
}

TEST_P(SectionOfVersion, CutTextureListIsRefused)
{
    const int version = GetParam();
    CModelBuilder builder(version);
    builder.AddTextureList(MakeFullModel(version).textures);
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseTextureList, builder, version, SizeOf(builder.GetImage()));
}

TEST_P(SectionOfVersion, CutProbeSectionIsRefused)
{
    const int version = GetParam();
    CModelBuilder builder(version);
    builder.AddProbeSection(MakeFullModel(version).probes);
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseReflectionProbe, builder, version, SizeOf(builder.GetImage()));
}

TEST_P(SectionOfVersion, CutLightmapListIsRefused)
{
    const int version = GetParam();
    CModelBuilder builder(version);
    builder.AddLightmapList(MakeFullModel(version).lightmaps);
    ExpectCutIsRefused(
        &CZEKOverwriter::AnalyseLightmapList, builder, version, SizeOf(builder.GetImage()));
}

TEST_P(SectionOfVersion, CutSingleNodeIsRefused)
{
    for (unsigned int variant = 0; variant < 32; ++variant)
    {
        SNode node;
        node.colliderShape = static_cast<int>(variant % 4) - 1;
        node.offsetFlag = variant >> 2 & 1u;
        node.referenceSelector = variant >> 3 & 1u;
        node.hasMesh = variant >> 4 & 1u;
        CModelBuilder builder(GetParam());
        builder.AddNode(node);
        ExpectCutIsRefused(
            &CZEKOverwriter::AnalyseNode, builder, GetParam(),
            GetNodeDemand(builder, node.colliderShape));
    }
}

TEST_P(SectionOfVersion, CutSingleMaterialIsRefused)
{
    for (int shaderType = -1; shaderType <= 8; ++shaderType)
    {
        for (int variant = 0; variant < 4; ++variant)
        {
            SMaterial material;
            material.shaderType = shaderType;
            material.uvListFlag = variant % 2;
            material.subFlag = variant / 2;
            CModelBuilder builder(GetParam());
            builder.AddMaterialList({material});
            ExpectCutIsRefused(
                &CZEKOverwriter::AnalyseMaterialList, builder, GetParam(),
                GetMaterialDemand(builder, GetParam()));
        }
    }
}

TEST_P(SectionOfVersion, CutSingleMeshIsRefused)
{
    SMesh mesh;
    for (std::size_t stream = 0; stream <= mesh.streams.size(); ++stream)
    {
        mesh.morphNames = {"smile"};
        mesh.streams = {};
        if (stream < mesh.streams.size())
            mesh.streams[stream] = 1;
        CModelBuilder builder(GetParam());
        builder.AddMesh(mesh);
        ExpectCutIsRefused(
            &CZEKOverwriter::AnalyseMesh, builder, GetParam(), SizeOf(builder.GetImage()));
    }
}

TEST_P(SectionOfVersion, CutSimpleMeshIsRefused)
{
    for (const unsigned char normal : Bytes{0, 1})
    {
        SSimpleMesh mesh;
        mesh.streams = {normal, 1, 0, 1, 0, 1};
        CModelBuilder builder(GetParam());
        builder.AddSimpleMesh(mesh);
        ExpectCutIsRefused(
            &CZEKOverwriter::AnalyseMeshSimple, builder, GetParam(), SizeOf(builder.GetImage()));
    }
}

TEST(BoneTableCut, IsAbsentBelowFourBytesAndRefusedFromThen)
{
    CModelBuilder builder(7);
    builder.AddBoneTable({SBone(), SBone{"", 0}});
    const Bytes& image = builder.GetImage();
    const Walker walker = [](CZEKOverwriter& overwriter, fileimage::CFileImageAnalyser& reader, int)
    { return overwriter.AnalyseBoneTable(reader); };
    for (std::int64_t size = 0; size < SizeOf(image); ++size)
        EXPECT_EQ(size < 4 ? 0 : Refused, Walk(walker, Cut(image, size), 7)) << size;
    EXPECT_EQ(SizeOf(image), Walk(walker, image, 7));
}

TEST(WideIndexCut, IsRefusedAtEveryByteOfTheIndices)
{
    SMesh mesh;
    mesh.vertexCount = 65537;
    CModelBuilder builder(15);
    builder.AddMesh(mesh);
    const auto begin = static_cast<std::int64_t>(builder.GetOffset("meshes.primitiveCount"));
    for (std::int64_t size = begin; size < SizeOf(builder.GetImage()); ++size)
    {
        EXPECT_EQ(Refused, Walk(&CZEKOverwriter::AnalyseMesh, Cut(builder.GetImage(), size), 15))
            << size;
    }
}

TEST(Walkers, OfNodesMeshesMaterialsAndBonesRememberNothing)
{
    const SModel model = MakeFlaggedModel(10);
    CModelBuilder builder(10);
    builder.AddNodeList(model.nodes);
    builder.AddMeshList(model.meshes);
    builder.AddMaterialList(model.materials);
    builder.AddBoneTable(model.bones);
    const Bytes& image = builder.GetImage();
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    CZEKOverwriter overwriter;
    EXPECT_TRUE(overwriter.AnalyseNodeList(reader, 10));
    EXPECT_TRUE(overwriter.AnalyseMeshList(reader, 10));
    EXPECT_TRUE(overwriter.AnalyseMaterialList(reader, 10));
    EXPECT_TRUE(overwriter.AnalyseBoneTable(reader));
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetProbeNameList().empty());
    EXPECT_EQ(0, overwriter.GetProbeCount());
}
