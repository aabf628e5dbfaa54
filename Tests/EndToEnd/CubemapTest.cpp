#include <gtest/gtest.h>

#include "Tool.h"

using namespace testsupport;

namespace
{

SModel MakeModelOfProbes(int version, const std::vector<std::string>& names)
{
    SModel model;
    model.version = version;
    for (const std::string& name : names)
    {
        SProbe probe;
        probe.name = name;
        probe.flags = Old;
        model.probes.push_back(probe);
    }
    return model;
}

} // namespace

TEST(Cubemaps, FilesWhoseNamesHoldTheBackslashesAreFound)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\Probe", "pvr");
    ExpectFlags(folder, MakeModelOfProbes(26, {"Probe"}), {{}, {{1, 0, 0, 0}}, {}});
}

TEST(Cubemaps, FilesInFoldersAreNotFound)
{
    const CTemporaryFolder folder;
    for (char face = '0'; face <= '5'; ++face)
    {
        const std::string name = std::string("/Probe/reflection_cube_") + face;
        folder.Write("tex_reflection_cube_pvrtc" + name + ".pvr", "");
        folder.Write("tex_reflection_cube_dxt" + name + ".dds", "");
    }
    ExpectFlags(folder, MakeModelOfProbes(26, {"Probe"}), {{}, {None}, {}});
}

TEST(Cubemaps, LieInTheFolderOfTheModel)
{
    const CTemporaryFolder folder;
    const CModelBuilder builder = CModelBuilder::Build(MakeModelOfProbes(26, {"Probe"}));
    folder.Write("models/scene.zek", builder.GetImage());
    WriteFaces(folder, "models/tex_reflection_cube_dxt\\Probe", "dds");
    WriteFaces(folder, "tex_reflection_cube_etc\\Probe", "pvr");
    const SItemFlags flags = {{}, {{0, 0, 0, 1}}, {}};
    ExpectSuccess(
        folder, "models/scene.zek", MakeCountLines(26, flags), "models/scene.zek",
        MakePatched(builder, flags));
}

TEST(Cubemaps, FiveOfSixFacesAreNotEnough)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\Probe", "pvr");
    WriteFaces(folder, "tex_reflection_cube_etc\\Probe", "pvr");
    folder.Remove("tex_reflection_cube_pvrtc\\Probe\\reflection_cube_3.pvr");
    ExpectFlags(folder, MakeModelOfProbes(26, {"Probe"}), {{}, {{0, 1, 0, 0}}, {}});
}

TEST(Cubemaps, ProbesOfTheMaterialListAreNamedByIndex)
{
    for (int version : {16, 25})
    {
        const CTemporaryFolder folder;
        WriteFaces(folder, "tex_reflection_cube_pvrtc\\1", "pvr");
        WriteFaces(folder, "tex_reflection_cube_etc\\Probe", "pvr");
        ExpectFlags(
            folder, MakeModelOfProbes(version, {"Probe", "Probe"}), {{}, {None, {1, 0, 0, 0}}, {}});
    }
}

TEST(Cubemaps, NoProbesAreFourZeros)
{
    for (int version : {16, 25, 26})
        ExpectFlags(CTemporaryFolder(), MakeModelOfProbes(version, {}), {});
}

TEST(Cubemaps, ProbesBeforeVersionSixteenHaveNoFlagsAndNoLine)
{
    for (int version : {11, 12, 15})
    {
        const CTemporaryFolder folder;
        WriteFaces(folder, "tex_reflection_cube_pvrtc\\0", "pvr");
        const Bytes image = CModelBuilder::Build(MakeModelOfProbes(version, {"0"})).GetImage();
        folder.Write("model.zek", image);
        ExpectSuccess(folder, "model.zek", NoTextures + NoLightmaps, "model.zek", image);
    }
}

TEST(Cubemaps, NameOfTwentyThousandBytesOverrunsNothing)
{
    ExpectFlags(
        CTemporaryFolder(), MakeModelOfProbes(26, {std::string(20000, 'p')}), {{}, {None}, {}});
}

TEST(Cubemaps, NameOfPercentSignsIsText)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_etc\\%s%n", "pvr");
    ExpectFlags(folder, MakeModelOfProbes(26, {"%s%n"}), {{}, {{0, 1, 0, 0}}, {}});
}
