// Each field that some version brought is walked from that version on and not before.

#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

constexpr MemberWalker AnalyseTextureList = &CZEKOverwriter::AnalyseTextureList;
constexpr MemberWalker AnalyseMaterialList = &CZEKOverwriter::AnalyseMaterialList;
constexpr MemberWalker AnalyseReflectionProbe = &CZEKOverwriter::AnalyseReflectionProbe;
constexpr MemberWalker AnalyseLightmapList = &CZEKOverwriter::AnalyseLightmapList;
constexpr MemberWalker AnalyseNode = &CZEKOverwriter::AnalyseNode;

/// Bytes after a record, enough for every demand that exceeds it.
constexpr std::size_t TailSize = 100;

/// Adds what a walker walks.
using Add = std::function<void(CModelBuilder&)>;

Bytes Build(int version, const Add& add)
{
    CModelBuilder builder(version);
    add(builder);
    return builder.GetImage();
}

/// Expects a version to change a record's size by growth bytes, and each form of the record to be
/// walked to its end by its own version alone.
void ExpectGate(int version, int growth, const Walker& walker, const Add& add)
{
    const Bytes before = Build(version - 1, add);
    const Bytes since = Build(version, add);
    EXPECT_EQ(growth, SizeOf(since) - SizeOf(before));
    EXPECT_EQ(SizeOf(before), Walk(walker, Extend(before, TailSize), version - 1));
    EXPECT_EQ(SizeOf(since), Walk(walker, Extend(since, TailSize), version));
    EXPECT_NE(SizeOf(before), Walk(walker, Extend(before, TailSize), version));
    EXPECT_NE(SizeOf(since), Walk(walker, Extend(since, TailSize), version - 1));
}

void ExpectNodeGate(int version, int growth, const SNode& node)
{
    ExpectGate(version, growth, AnalyseNode, [&](CModelBuilder& b) { b.AddNode(node); });
}

void ExpectMaterialGate(int version, int growth, const SMaterial& material)
{
    ExpectGate(
        version, growth, AnalyseMaterialList,
        [&](CModelBuilder& b) { b.AddMaterialList({material}); });
}

void ExpectProbeGate(int version, int growth, const std::vector<SProbe>& probes)
{
    ExpectGate(
        version, growth, AnalyseReflectionProbe,
        [&](CModelBuilder& b) { b.AddProbeSection(probes); });
}

void ExpectLightmapGate(int version, int growth, const std::vector<SLightmap>& lightmaps)
{
    ExpectGate(
        version, growth, AnalyseLightmapList,
        [&](CModelBuilder& b) { b.AddLightmapList(lightmaps); });
}

void ExpectTextureGate(int version, int growth)
{
    ExpectGate(
        version, growth, AnalyseTextureList,
        [](CModelBuilder& b) {
            b.AddTextureList({STexture(), STexture()});
        });
}

SNode MakeNode(int shape)
{
    SNode node;
    node.colliderShape = shape;
    return node;
}

SMaterial MakeMaterial(int shaderType)
{
    SMaterial material;
    material.shaderType = shaderType;
    return material;
}

std::int64_t WalkHeader(int version)
{
    CModelBuilder builder(version);
    builder.AddHeader();
    return Walk(
        [](CZEKOverwriter& overwriter, fileimage::CFileImageAnalyser& reader, int)
        {
            int readVersion = 0;
            return overwriter.AnalyseHeader(reader, readVersion);
        },
        Extend(builder.GetImage(), TailSize), version);
}

} // namespace

TEST(VersionGate, TextureClampFromVersion1)
{
    ExpectTextureGate(1, 2 * 4);
}

TEST(VersionGate, TextureFlagsFromVersion5)
{
    ExpectTextureGate(5, 2 * 4);
}

TEST(VersionGate, NodeColliderTypeFromVersion6)
{
    for (int shape : {0, 1, 2})
        ExpectNodeGate(6, 4, MakeNode(shape));
}

TEST(VersionGate, NodeOffsetFlagFromVersion8)
{
    for (int shape : {-1, 0, 1, 2})
        ExpectNodeGate(8, 4, MakeNode(shape));
}

TEST(VersionGate, NodeOffsetVectorFromVersion8)
{
    SNode node = MakeNode(-1);
    node.offsetFlag = 1;
    ExpectNodeGate(8, 4 + 12, node);
}

TEST(VersionGate, NodeReferenceSelectorFromVersion12)
{
    ExpectNodeGate(12, 4, MakeNode(-1));
}

TEST(VersionGate, NodeSelectedReferenceFromVersion12)
{
    SNode node = MakeNode(-1);
    node.referenceSelector = 1;
    ExpectNodeGate(12, 4 + 4, node);
}

TEST(VersionGate, NodeReservedBlockFromVersion15)
{
    ExpectNodeGate(15, 20, MakeNode(-1));
}

TEST(VersionGate, NodeAlternateReferenceFromVersion16)
{
    ExpectNodeGate(16, 4, MakeNode(-1));
}

TEST(VersionGate, NodeReservedWordFromVersion17)
{
    ExpectNodeGate(17, 4, MakeNode(-1));
}

TEST(VersionGate, NodeHasMeshIntFromVersion20)
{
    ExpectNodeGate(20, 4, MakeNode(2));
}

TEST(VersionGate, NodeEmbeddedMeshFromVersion20)
{
    SNode node = MakeNode(2);
    node.hasMesh = 1;
    node.mesh.vertexCount = 1;
    node.mesh.primitives = {};
    ExpectNodeGate(20, 4 + 10 + 12 + 4, node);
}

TEST(VersionGate, NodeColliderSecondIntFromVersion23)
{
    for (int shape : {0, 1, 2})
        ExpectNodeGate(23, 4, MakeNode(shape));
}

TEST(VersionGate, MaterialTwoFloatsOfShaderTypes0And7FromVersion2)
{
    ExpectMaterialGate(2, 8, MakeMaterial(0));
    ExpectMaterialGate(2, 8, MakeMaterial(7));
}

TEST(VersionGate, MaterialFirstFlagFromVersion3)
{
    ExpectMaterialGate(3, 1, MakeMaterial(4));
}

TEST(VersionGate, MaterialMainTextureTransformFromVersion4)
{
    ExpectMaterialGate(4, 16, MakeMaterial(4));
}

TEST(VersionGate, MaterialSecondTextureTransformFromVersion7)
{
    ExpectMaterialGate(7, 16, MakeMaterial(4));
}

TEST(VersionGate, MaterialSecondBlockOfShaderType2FromVersion9)
{
    ExpectMaterialGate(9, 44, MakeMaterial(2));
}

TEST(VersionGate, MaterialUVListFlagFromVersion10)
{
    ExpectMaterialGate(10, 4, MakeMaterial(4));
}

TEST(VersionGate, MaterialUVListBlockFromVersion10)
{
    SMaterial material = MakeMaterial(4);
    material.uvListFlag = 1;
    material.uvCount = 3;
    ExpectMaterialGate(10, 4 + 12 + 3 * 8, material);
}

TEST(VersionGate, MaterialLegacyIntFromVersion11)
{
    ExpectMaterialGate(11, 4 + 4, MakeMaterial(4)); // and the probe count before the material
    const Add add = [](CModelBuilder& b) {
        b.AddMaterialList({MakeMaterial(4), MakeMaterial(4), MakeMaterial(4)});
    };
    ExpectGate(11, 3 * 4 + 4, AnalyseMaterialList, add);
}

TEST(VersionGate, MaterialLegacyIntUntilVersion23)
{
    ExpectMaterialGate(24, -4, MakeMaterial(4));
}

TEST(VersionGate, MaterialSecondFlagFromVersion13)
{
    ExpectMaterialGate(13, 1, MakeMaterial(4));
}

TEST(VersionGate, MaterialRoughnessIndexOfShaderType0FromVersion14)
{
    ExpectMaterialGate(14, 4, MakeMaterial(0));
}

TEST(VersionGate, MaterialRoughnessIndexOfShaderType7InAllVersions)
{
    // The version that brought it to type 0 leaves type 7 as it was.
    const Add add = [](CModelBuilder& b) { b.AddMaterialList({MakeMaterial(7)}); };
    EXPECT_EQ(SizeOf(Build(13, add)), SizeOf(Build(14, add)));
    for (int version : {0, 13, 14})
    {
        const Bytes image = Build(version, add);
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, Extend(image, TailSize), version));
    }
}

TEST(VersionGate, MaterialExtraIndexAndBlockOfShaderType1FromVersion24)
{
    ExpectMaterialGate(24, 4 + 60 - 4, MakeMaterial(1)); // the legacy int is gone
}

TEST(VersionGate, MaterialSubFlagOfShaderType1FromVersion25)
{
    ExpectMaterialGate(25, 4, MakeMaterial(1));
}

TEST(VersionGate, MaterialSubBlockOfShaderType1FromVersion25)
{
    SMaterial material = MakeMaterial(1);
    material.subFlag = 1;
    ExpectMaterialGate(25, 4 + 20, material);
}

TEST(VersionGate, ProbeSectionInTheMaterialListFromVersion11)
{
    ExpectGate(
        11, 4, AnalyseMaterialList,
        [](CModelBuilder& b) {
            b.AddMaterialList({}, {SProbe(), SProbe()});
        });
}

TEST(VersionGate, ProbeSectionInTheMaterialListUntilVersion25)
{
    ExpectGate(
        26, -(4 + 2 * 36), AnalyseMaterialList,
        [](CModelBuilder& b) {
            b.AddMaterialList({}, {SProbe(), SProbe()});
        });
}

TEST(VersionGate, ProbeCountFromVersion11)
{
    ExpectProbeGate(11, 4, {});
}

TEST(VersionGate, ProbeValueAndFloatsFromVersion12)
{
    ExpectProbeGate(12, 2 * (4 + 24), {SProbe(), SProbe()});
}

TEST(VersionGate, ProbeSecondValueAndFlagsFromVersion16)
{
    ExpectProbeGate(16, 2 * (4 + 4), {SProbe(), SProbe()});
}

TEST(VersionGate, ProbeNameFromVersion26)
{
    ExpectProbeGate(26, 6, {SProbe()}); // "Probe"
}

TEST(VersionGate, LightmapSwitchFromVersion18)
{
    ExpectLightmapGate(18, 4, {});
}

TEST(VersionGate, LightmapTrailingIntFromVersion22)
{
    ExpectLightmapGate(22, 4, {});
}

TEST(VersionGate, LightmapRecordsFromVersion26)
{
    ExpectLightmapGate(26, 2 * (16 + 4), {SLightmap(), SLightmap()}); // "LightMap000.png"
}

TEST(VersionGate, FilesFromVersion7)
{
    EXPECT_EQ(Refused, WalkHeader(0));
    EXPECT_EQ(Refused, WalkHeader(-1));
    EXPECT_EQ(Refused, WalkHeader(6));
    EXPECT_EQ(8, WalkHeader(7));
}

TEST(VersionGate, ProcessedMarkerFromVersion21)
{
    EXPECT_EQ(8, WalkHeader(20));
    EXPECT_EQ(12, WalkHeader(21));
}

TEST(VersionGate, HeaderZeroFromVersion26)
{
    EXPECT_EQ(12, WalkHeader(25));
    EXPECT_EQ(16, WalkHeader(26));
    EXPECT_EQ(16, WalkHeader(UnknownVersion));
}

TEST(VersionGate, TexturesProbesAndLightmapsAloneFromVersion26)
{
    const Walker walker = &CZEKOverwriter::AnalyseSections;
    const Add addAll = [](CModelBuilder& b)
    {
        b.AddNodeList({MakeNode(-1)});
        b.AddMeshList({SMesh()});
        b.AddMaterialList({MakeMaterial(4)}, {SProbe()});
        b.AddTextureList({STexture()});
        b.AddBoneTable({SBone()});
        b.AddLightmapList({SLightmap()});
    };
    const Add addThree = [](CModelBuilder& b)
    {
        b.AddTextureList({STexture()});
        b.AddProbeSection({SProbe()});
        b.AddLightmapList({SLightmap()});
    };
    for (int version : {7, 10, 11, 25, 26, UnknownVersion, 1000})
    {
        const Bytes image = Build(version, version < 26 ? addAll : addThree);
        EXPECT_EQ(SizeOf(image), Walk(walker, Extend(image, TailSize), version)) << version;
        const Bytes other = Build(version, version < 26 ? addThree : addAll);
        EXPECT_NE(SizeOf(other), Walk(walker, Extend(other, TailSize), version)) << version;
    }
}
