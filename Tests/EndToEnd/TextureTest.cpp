#include <fstream>

#include <gtest/gtest.h>

#include "Tool.h"

using namespace testsupport;

namespace
{

SModel MakeModelOfTextures(std::size_t count)
{
    SModel model;
    model.textures = std::vector<STexture>(count, STexture{"name.png", 1, Old});
    return model;
}

} // namespace

TEST(Textures, ThousandsOfTexturesAndProbesAndLightmapsInOneFile)
{
    SModel model = MakeModelOfTextures(1235);
    model.probes.resize(3);
    model.probes[0].name = "Hall";
    model.probes[1].name = "Yard";
    model.probes[2].name = "Roof";
    model.lightmaps = {SLightmap{"LightMap000.png", Old}, SLightmap{"LightMap001.png", Old}};

    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/1234.pvr", "");
    folder.Write("tex_dxt/1234.dds", "");
    folder.Write("tex_etc/000.pvr", "");
    folder.Write("tex_etc/1000.pvr", "");
    folder.Write("tex_astc/099.pvr", "");
    folder.Write("tex_pvrtc/1235.pvr", "after the last texture");
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\Yard", "pvr");
    WriteFaces(folder, "tex_reflection_cube_dxt\\Roof", "dds");
    folder.Write("tex_astc/LightMap001.pvr", "");

    SItemFlags flags;
    flags.textures.assign(1235, None);
    flags.textures[1234] = {1, 0, 0, 1};
    flags.textures[0] = flags.textures[1000] = {0, 1, 0, 0};
    flags.textures[99] = {0, 0, 1, 0};
    flags.probes = {None, {1, 0, 0, 0}, {0, 0, 0, 1}};
    flags.lightmaps = {None, {0, 0, 1, 0}};
    ExpectFlags(folder, model, flags);
}

TEST(Textures, VariantThatDisappearedBetweenTwoRunsLosesItsFlag)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/000.pvr", "");
    ExpectFlags(folder, MakeModelOfTextures(1), {{{0, 1, 0, 0}}, {}, {}});
    folder.Remove("tex_etc/000.pvr");
    const CModelBuilder builder = CModelBuilder::Build(MakeModelOfTextures(1));
    ExpectSuccess(
        folder, "model.zek", NoTextures + NoCubemaps + NoLightmaps, "model.zek",
        MakePatched(builder, {{None}, {}, {}}));
}

TEST(Textures, FolderInTheVariantsPlaceCountsAsOneBecauseAStreamOpensOnIt)
{
    const CTemporaryFolder folder;
    folder.MakeFolder("tex_astc/000.pvr");
    ASSERT_TRUE(std::ifstream(folder.GetPath("tex_astc/000.pvr")).is_open())
        << "as with the GNU C++ library on Linux";
    ExpectFlags(folder, MakeModelOfTextures(1), {{{0, 0, 1, 0}}, {}, {}});
}

TEST(Textures, FileInTheFoldersPlaceMeansNoVariants)
{
    const CTemporaryFolder folder;
    folder.Write("tex_astc", "");
    ExpectFlags(folder, MakeModelOfTextures(1), {{None}, {}, {}});
}
