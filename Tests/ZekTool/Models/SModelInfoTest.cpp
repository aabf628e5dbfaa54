#include "ZekTool/Models/SModelInfo.h"

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

namespace
{

using namespace testsupport;
using zektool::ReadModelInfo;
using zektool::SModelInfo;

SModelInfo Read(const SModel& model)
{
    CTemporaryFolder folder;
    const Bytes image = CModelBuilder::Build(model).GetImage();
    folder.Write("model", image);
    SModelInfo info;
    EXPECT_EQ("", ReadModelInfo(folder.GetPath("model"), info));
    EXPECT_EQ(static_cast<std::int64_t>(image.size()), info.size);
    EXPECT_EQ(model.version, info.version);
    return info;
}

TEST(SModelInfo, CountsWhatAVersionHas)
{
    for (int version = testsupport::OldestVersion; version <= testsupport::UnknownVersion;
         ++version)
    {
        const SModel model = MakeFullModel(version);
        const SModelInfo info = Read(model);
        EXPECT_EQ(version < 26, info.hasGeometry);
        EXPECT_EQ(version < 26 ? model.nodes.size() : 0, info.nodeCount);
        EXPECT_EQ(version < 26 ? model.meshes.size() : 0, info.meshCount);
        EXPECT_EQ(version < 26 ? model.materials.size() : 0, info.materialCount);
        EXPECT_EQ(version < 26 ? model.bones.size() : 0, info.boneCount);
        EXPECT_EQ(model.textures.size(), info.textures.size());
        EXPECT_EQ(
            version < 11 ? 0U : model.probes.size(), static_cast<std::size_t>(info.cubemapCount));
        EXPECT_EQ(version < 12 ? 0U : model.probes.size(), info.cubemaps.size());
        EXPECT_EQ(model.lightmaps.size(), static_cast<std::size_t>(info.lightmapCount));
        EXPECT_EQ(version < 26 ? 0U : model.lightmaps.size(), info.lightmaps.size());
        EXPECT_EQ(version >= 21, info.hasMarker);
    }
}

TEST(SModelInfo, TellsNamesAndFlags)
{
    SModel model;
    model.version = 26;
    model.marker = 1;
    model.textures = {{"wall.png", 1, {1, 0, 2, 255}}};
    model.probes = {SProbe()};
    model.probes[0].flags = {0, 1, 0, 1};
    model.lightmaps = {{"light.png", {1, 1, 0, 0}}};
    const SModelInfo info = Read(model);
    EXPECT_TRUE(info.isProcessed);
    EXPECT_EQ("wall.png", info.textures.at(0).name);
    EXPECT_TRUE(info.textures.at(0).hasFlags);
    EXPECT_EQ((Flags{1, 0, 2, 255}), info.textures.at(0).flags);
    EXPECT_EQ("Probe", info.cubemaps.at(0).name);
    EXPECT_EQ((Flags{0, 1, 0, 1}), info.cubemaps.at(0).flags);
    EXPECT_EQ("light.png", info.lightmaps.at(0).name);
    EXPECT_EQ((Flags{1, 1, 0, 0}), info.lightmaps.at(0).flags);
}

TEST(SModelInfo, ProbesOfOldVersionsGoByTheirIndexAndHaveNoFlags)
{
    SModel model;
    model.version = 15;
    model.probes = {SProbe(), SProbe()};
    const SModelInfo info = Read(model);
    EXPECT_EQ("1", info.cubemaps.at(1).name);
    EXPECT_FALSE(info.cubemaps.at(1).hasFlags);
}

TEST(SModelInfo, SaysWhyAModelCannotBeRead)
{
    CTemporaryFolder folder;
    folder.Write("model", "text");
    SModelInfo info;
    EXPECT_EQ(
        "header: magic at 0x0: it looks like text", ReadModelInfo(folder.GetPath("model"), info));
    EXPECT_EQ("No such file or directory", ReadModelInfo(folder.GetPath("none"), info));
    EXPECT_EQ("not a regular file", ReadModelInfo(folder.GetPath(), info));
}

} // namespace
