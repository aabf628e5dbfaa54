#include "ZekTool/Check/CVariantCheck.h"

#include <filesystem>

#include <sys/stat.h>

#include "CheckerFixture.h"

using namespace testsupport;

namespace
{

class CVariantCheck : public CheckerFixture
{
protected:
    static SModel MakeModelWithTextures(const std::vector<Flags>& flags)
    {
        SModel model = MakeModel();
        for (const Flags& each : flags)
            model.textures.push_back({"wall.png", 1, each});
        return model;
    }

    static SModel MakeModelWithProbe(const Flags& flags)
    {
        SModel model = MakeModel();
        model.probes = {SProbe()};
        model.probes[0].name = "Hall";
        model.probes[0].flags = flags;
        return model;
    }

    /// Writes the first faces of the DXT cubemap "Hall".
    void WriteFirstFaces(int count, const std::string& separator)
    {
        WriteFaces(
            m_Folder, "tex_reflection_cube_dxt" + separator + "Hall", "dds", separator, count);
    }
};

TEST_F(CVariantCheck, ComparesTheFlagsOfTexturesWithTheVariantsThatLieThere)
{
    m_Folder.Write("tex_etc/000.pvr", "variant");
    EXPECT_EQ(
        (Lines{
            "error: texture 0 \"wall.png\": flags[1] at 0x22: ETC is 0, and tex_etc/000.pvr is "
            "there; run zek mark [variant-without-flag]",
            "error: texture 0 \"wall.png\": flags[3] at 0x24: DXT is 1, and tex_dxt/000.dds is "
            "not there; make the variant, or run zek mark [flag-without-variant]"}),
        Check(MakeModelWithTextures({OnlyDXT})));
    EXPECT_EQ(m_Folder.GetPath("tex_etc/000.pvr"), m_Result.findings[0].path);
    EXPECT_EQ(m_Folder.GetPath("tex_dxt/000.dds"), m_Result.findings[1].path);
    EXPECT_EQ(Lines(), Check(MakeModelWithTextures({{0, 1, 0, 0}})));
}

TEST_F(CVariantCheck, FindsFlagsThatAreNeither0Nor1)
{
    m_Folder.Write("tex_etc/000.pvr", "variant");
    EXPECT_EQ(
        (Lines{
            "error: texture 0 \"wall.png\": flags[0] at 0x21: PVRTC is 255, and "
            "tex_pvrtc/000.pvr is not there; run zek mark [wrong-flag]",
            "error: texture 0 \"wall.png\": flags[1] at 0x22: ETC is 2, and tex_etc/000.pvr is "
            "there; run zek mark [wrong-flag]"}),
        Check(MakeModelWithTextures({{255, 2, 0, 0}})));
}

TEST_F(CVariantCheck, ComparesTheFlagsOfLightmapsByTheirNames)
{
    SModel model = MakeModel();
    model.lightmaps = {{"light.a.png", None}};
    m_Folder.Write("tex_astc/light.a.pvr", "variant");
    EXPECT_EQ(
        (Lines{"error: lightmap 0 \"light.a.png\": flags[2] at 0x2a: ASTC is 0, and "
               "tex_astc/light.a.pvr is there; run zek mark [variant-without-flag]"}),
        Check(model));
}

TEST_F(CVariantCheck, ComparesTheFlagsOfCubemapsWithAllSixFaces)
{
    WriteFirstFaces(6, "\\");
    EXPECT_EQ(Lines(), Check(MakeModelWithProbe(OnlyDXT)));
    EXPECT_EQ(
        (Lines{"error: probe 0 \"Hall\": flags[3] at 0x3b: DXT is 0, and "
               "tex_reflection_cube_dxt\\Hall\\reflection_cube_0.dds is there; run zek mark "
               "[variant-without-flag]"}),
        Check(MakeModelWithProbe(None)));
    m_Folder.Remove("tex_reflection_cube_dxt\\Hall\\reflection_cube_4.dds");
    EXPECT_EQ(
        (Lines{
            "error: probe 0 \"Hall\": flags[3] at 0x3b: DXT is 1, and "
            "tex_reflection_cube_dxt\\Hall\\reflection_cube_4.dds is not there; make the "
            "variant, or run zek mark [flag-without-variant]",
            "warning: probe 0 \"Hall\": flags[3] at 0x3b: DXT has 5 of 6 faces; "
            "tex_reflection_cube_dxt\\Hall\\reflection_cube_4.dds is not there; make the missing "
            "faces [incomplete-cubemap]"}),
        Check(MakeModelWithProbe(OnlyDXT)));
}

TEST_F(CVariantCheck, NamesCubemapsByTheirIndexBeforeVersion26AndHasNoneBeforeVersion16)
{
    m_Folder.Write("tex_reflection_cube_etc\\1\\reflection_cube_0.pvr", "face");
    for (int version : {15, 16, 25})
    {
        SModel model = MakeModel(version);
        model.probes = {SProbe(), SProbe()};
        EXPECT_EQ(version < 16 ? 0U : 1U, Check(model).size()) << version;
    }
}

TEST_F(CVariantCheck, SaysThatFacesLieInFoldersUnlessTheseAreAskedFor)
{
    WriteFirstFaces(2, "/");
    EXPECT_EQ(
        (Lines{
            "warning: probe 0 \"Hall\": flags[3] at 0x3b: DXT has faces in folders, and is looked "
            "for as tex_reflection_cube_dxt\\Hall\\reflection_cube_0.dds; give "
            "--cubemap-folders, or rename the files [cubemap-in-folders]"}),
        Check(MakeModelWithProbe(None)));
    m_Options.isCubemapFolders = true;
    EXPECT_EQ(
        (Lines{"warning: probe 0 \"Hall\": flags[3] at 0x3b: DXT has 2 of 6 faces; "
               "tex_reflection_cube_dxt/Hall/reflection_cube_2.dds is not there; make the missing "
               "faces [incomplete-cubemap]"}),
        Check());
    WriteFirstFaces(6, "/");
    EXPECT_EQ(Lines(), Check(MakeModelWithProbe(OnlyDXT)));
    m_Folder.Remove("tex_reflection_cube_dxt/Hall/reflection_cube_0.dds");
    WriteFirstFaces(1, "\\");
    EXPECT_TRUE((Check(), m_Result.HasError())) << "faces of both kinds make no variant together";
}

TEST_F(CVariantCheck, SaysSoOfTheLastFaceAloneToo)
{
    m_Folder.Write("tex_reflection_cube_dxt/Hall/reflection_cube_5.dds", "face");
    const Lines lines = Check(MakeModelWithProbe(None));
    ASSERT_EQ(1U, lines.size());
    EXPECT_NE(std::string::npos, lines[0].find("[cubemap-in-folders]"));
    WriteFirstFaces(2, "\\");
    const Lines both = Check();
    ASSERT_EQ(2U, both.size());
    EXPECT_NE(std::string::npos, both[0].find("DXT has 2 of 6 faces"));
    EXPECT_NE(std::string::npos, both[1].find("[cubemap-in-folders]"));
}

TEST_F(CVariantCheck, SaysWhatElseLiesInThePlaceOfAVariant)
{
    m_Folder.Write("tex_pvrtc/000.pvr", "");
    m_Folder.MakeFolder("tex_etc/000.pvr");
    m_Folder.MakeFolder("tex_astc");
    ASSERT_EQ(0, mkfifo(m_Folder.GetPath("tex_astc/000.pvr").c_str(), 0600));
    m_Folder.MakeFolder("tex_dxt");
    std::filesystem::create_symlink("nowhere", m_Folder.GetPath("tex_dxt/000.dds"));
    EXPECT_EQ(
        (Lines{
            "warning: texture 0 \"wall.png\": flags[0] at 0x21: tex_pvrtc/000.pvr is empty and "
            "counts as there all the same; make the variant again [empty-variant]",
            "warning: texture 0 \"wall.png\": flags[1] at 0x22: tex_etc/000.pvr is no file and "
            "counts as there all the same; put a file there, or remove it [variant-not-a-file]",
            "warning: texture 0 \"wall.png\": flags[2] at 0x23: tex_astc/000.pvr is no file and "
            "counts as there all the same; put a file there, or remove it [variant-not-a-file]",
            "warning: texture 0 \"wall.png\": flags[3] at 0x24: tex_dxt/000.dds cannot be opened "
            "and does not count as there; make it readable, or remove it [unreadable-variant]"}),
        Check(MakeModelWithTextures({{1, 1, 1, 0}})));
    const Lines lines = Check(MakeModelWithTextures({{1, 1, 1, 1}}));
    ASSERT_EQ(5U, lines.size());
    EXPECT_NE(std::string::npos, lines[0].find("DXT is 1, and tex_dxt/000.dds cannot be opened; "));
}

TEST_F(CVariantCheck, FindsAFamilyThatOnlySomeHave)
{
    m_Folder.Write("tex_dxt/000.dds", "variant");
    m_Folder.Write("tex_dxt/002.dds", "variant");
    EXPECT_EQ(
        (Lines{"warning: texture 1 \"wall.png\": flags[3] at 0x35: 2 of 3 textures have a "
               "variant in DXT, and this is the first that has none; make the missing variants "
               "[partial-family]"}),
        Check(MakeModelWithTextures({OnlyDXT, None, OnlyDXT})));
    EXPECT_EQ(m_Folder.GetPath("tex_dxt/001.dds"), m_Result.findings[0].path);
}

} // namespace
