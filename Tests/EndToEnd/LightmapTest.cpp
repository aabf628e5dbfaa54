#include <gtest/gtest.h>

#include "Tool.h"

using namespace testsupport;

namespace
{

SModel MakeModelOfLightmaps(const std::vector<std::string>& names)
{
    SModel model;
    for (const std::string& name : names)
        model.lightmaps.push_back({name, Old});
    return model;
}

} // namespace

TEST(Lightmaps, AreLookedForUnderTheirNameWithTheExtensionReplaced)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/LightMap000.pvr", "");
    folder.Write("tex_dxt/LightMap000.dds", "");
    folder.Write("tex_etc/LightMap000.png", "");
    ExpectFlags(folder, MakeModelOfLightmaps({"LightMap000.png"}), {{}, {}, {{1, 0, 0, 1}}});
}

TEST(Lightmaps, NameWithoutADotKeepsItsWhole)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/Light.pvr", "");
    ExpectFlags(folder, MakeModelOfLightmaps({"Light"}), {{}, {}, {{0, 1, 0, 0}}});
}

TEST(Lightmaps, OnlyTheLastExtensionIsReplaced)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/a.b.pvr", "");
    folder.Write("tex_pvrtc/a.pvr", "");
    ExpectFlags(folder, MakeModelOfLightmaps({"a.b.png"}), {{}, {}, {{0, 1, 0, 0}}});
}

TEST(Lightmaps, NameOfTwentyThousandBytesOverrunsNothing)
{
    const std::string name(20000, 'l');
    ExpectFlags(
        CTemporaryFolder(), MakeModelOfLightmaps({name, name + ".png", "short.png"}),
        {{}, {}, {None, None, None}});
}

TEST(Lightmaps, NameOfPercentSignsIsText)
{
    const CTemporaryFolder folder;
    folder.Write("tex_astc/%n%s.pvr", "");
    ExpectFlags(folder, MakeModelOfLightmaps({"%n%s.png"}), {{}, {}, {{0, 0, 1, 0}}});
}

TEST(Lightmaps, NameWithATrailByteEqualToABackslashStaysAsItIs)
{
    const CTemporaryFolder folder;
    folder.Write("tex_astc/\x83\x5C.pvr", "");
    ExpectFlags(folder, MakeModelOfLightmaps({"\x83\x5C.png"}), {{}, {}, {{0, 0, 1, 0}}});
}

TEST(Lightmaps, NegativeCountMeansNone)
{
    CModelBuilder builder(26);
    builder.AddHeader();
    builder.AddTextureList({});
    builder.AddProbeSection({});
    for (int value : {-1, 1, 2})
        builder.AddInt("lightmap count, switch, trailing int", value);
    const CTemporaryFolder folder;
    folder.Write("model.zek", builder.GetImage());
    ExpectSuccess(
        folder, "model.zek", NoTextures + NoCubemaps + NoLightmaps, "model.zek",
        MakePatched(builder, {}));
}
