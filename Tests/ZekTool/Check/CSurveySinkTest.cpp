#include "ZekTool/Check/CSurveySink.h"

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZekTool/Check/CReferenceSink.h"

using namespace testsupport;
using zektool::CSurveySink;
using zektool::IsUnsafeName;
using zektool::SSurvey;

namespace
{

SSurvey Survey(const SModel& model)
{
    const CModelBuilder builder = CModelBuilder::Build(model);
    zek::CZEKImageSource source(
        builder.GetImage().data(), static_cast<std::int64_t>(builder.GetImage().size()));
    SSurvey survey;
    CSurveySink sink(survey);
    zek::CZEKWalk<zek::CZEKImageSource, CSurveySink> walk(source, sink);
    EXPECT_TRUE(WalkFile(walk));
    return survey;
}

TEST(CSurveySink, KeepsTheItemsWithTheirFlags)
{
    SModel model;
    model.textures = {{"a.png", 1, {1, 2, 3, 4}}, {"b.png", 1, {5, 6, 7, 8}}};
    model.probes = {SProbe()};
    model.probes[0].name = "Hall";
    model.probes[0].flags = {9, 10, 11, 12};
    model.lightmaps = {{"c.png", {13, 14, 15, 16}}};
    const CModelBuilder builder = CModelBuilder::Build(model);
    const SSurvey survey = Survey(model);
    ASSERT_EQ(2, survey.GetTextureCount());
    EXPECT_STREQ("b.png", survey.textures[1].name);
    EXPECT_EQ((Flags{5, 6, 7, 8}), survey.textures[1].flags);
    EXPECT_EQ(
        builder.GetTextureFlagOffsets()[1],
        static_cast<std::size_t>(survey.textures[1].flagsOffset));
    ASSERT_EQ(1U, survey.cubemaps.size());
    EXPECT_STREQ("Hall", survey.cubemaps[0].name);
    EXPECT_EQ((Flags{9, 10, 11, 12}), survey.cubemaps[0].flags);
    ASSERT_EQ(1U, survey.lightmaps.size());
    EXPECT_STREQ("c.png", survey.lightmaps[0].name);
    EXPECT_EQ((Flags{13, 14, 15, 16}), survey.lightmaps[0].flags);
    EXPECT_EQ(8, survey.processedMarkerOffset);
}

TEST(CSurveySink, CountsWhatIndicesReferTo)
{
    SModel model;
    model.version = 25;
    model.nodes = {SNode(), SNode()};
    model.nodes[1].parentIndex = 0;
    model.nodes[1].meshIndex = 3;
    model.meshes = {SMesh(), SMesh()};
    model.meshes[0].primitives[0].materialIndex = 4;
    model.materials = {SMaterial()};
    model.bones = {SBone(), SBone(), SBone()};
    model.lightmaps = {SLightmap()};
    const SSurvey survey = Survey(model);
    EXPECT_EQ(2, survey.nodeCount);
    EXPECT_FALSE(survey.hasLaterParent);
    EXPECT_EQ(2, survey.meshCount);
    EXPECT_EQ(1, survey.materialCount);
    EXPECT_EQ(3, survey.boneCount);
    EXPECT_EQ(1, survey.namelessLightmapCount);
    EXPECT_EQ(0, survey.parentIndices.highest);
    EXPECT_EQ(3, survey.meshIndices.highest);
    EXPECT_EQ(4, survey.materialIndices.highest);
    EXPECT_EQ(0, survey.textureIndices.highest);
    EXPECT_EQ(-1, survey.textureIndices.lowest);
}

TEST(CSurveySink, TellsWhetherAParentStandsAfterItsChild)
{
    SModel model;
    model.version = 25;
    model.nodes = {SNode(), SNode()};
    model.meshes = {SMesh()};
    EXPECT_FALSE(Survey(model).hasLaterParent);
    for (int child : {0, 1})
    {
        SModel later = model;
        later.nodes[static_cast<std::size_t>(child)].parentIndex = 1;
        EXPECT_TRUE(Survey(later).hasLaterParent) << child;
    }
}

TEST(CSurveySink, TakesNoTextureForTheRoughnessOfMaterialsWithoutOne)
{
    for (int shaderType = 0; shaderType <= 8; ++shaderType)
    {
        SModel model;
        model.version = 13;
        model.materials = {SMaterial()};
        model.materials[0].shaderType = shaderType;
        model.textures = {STexture()};
        EXPECT_FALSE(zektool::CReferenceSink::IsNeeded(Survey(model))) << shaderType;
    }
}

TEST(CSurveySink, TellsNamesThatLeadToAnotherFolder)
{
    EXPECT_TRUE(IsUnsafeName(".."));
    EXPECT_TRUE(IsUnsafeName("../a.png"));
    EXPECT_TRUE(IsUnsafeName("a/b.png"));
    EXPECT_TRUE(IsUnsafeName("a\\b.png"));
    EXPECT_TRUE(IsUnsafeName("/a.png"));
    EXPECT_TRUE(IsUnsafeName("\x83/a.png")) << "no two-byte character to the system";
    EXPECT_FALSE(IsUnsafeName("\x83\\a.png")) << "one two-byte character in Shift_JIS";
    EXPECT_FALSE(IsUnsafeName("..."));
    EXPECT_FALSE(IsUnsafeName("a..png"));
    EXPECT_FALSE(IsUnsafeName(""));
}

} // namespace
