#include "ZekTool/Check/CVariantFolderCheck.h"

#include "CheckerFixture.h"
#include "Specific/FileSystem/SystemFiles.h"

using namespace testsupport;

namespace
{

class CVariantFolderCheck : public CheckerFixture
{
protected:
    /// Returns a model with two textures and a lightmap "Light.png".
    static SModel MakeModelWithItems()
    {
        SModel model = MakeModel();
        model.textures = {STexture(), STexture()};
        model.lightmaps = {{"Light.png", None}};
        return model;
    }
};

TEST_F(CVariantFolderCheck, FindsVariantsThatBelongToNothing)
{
    for (const char* name :
         {"tex_dxt/002.dds", "tex_dxt/01.dds", "tex_etc/000.dds", "tex_etc/Old.pvr"})
        m_Folder.Write(name, "variant");
    EXPECT_EQ(
        (Lines{
            "warning: model: tex_etc/000.dds belongs to none of 2 textures and 1 lightmap; remove "
            "the file [unused-variant]",
            "warning: model: tex_etc/Old.pvr belongs to none of 2 textures and 1 lightmap; remove "
            "the file [unused-variant]",
            "warning: model: tex_dxt/002.dds belongs to none of 2 textures and 1 lightmap; remove "
            "the file [unused-variant]",
            "warning: model: tex_dxt/01.dds belongs to none of 2 textures and 1 lightmap; remove "
            "the file [unused-variant]"}),
        Check(MakeModelWithItems()));
    EXPECT_EQ(m_Folder.GetPath("tex_etc/000.dds"), m_Result.findings[0].path);
}

TEST_F(CVariantFolderCheck, LeavesOtherFilesAlone)
{
    for (const char* name : {"tex_dxt/Thumbs.db", "tex_dxt/pvr", "tex_dxt/.hidden", "tex_x/9.pvr"})
        m_Folder.Write(name, "no variant");
    EXPECT_EQ(Lines(), Check(MakeModelWithItems()));
}

TEST_F(CVariantFolderCheck, TakesLightmapsWithoutRecordsByTheirPattern)
{
    SModel model = MakeModel(25);
    model.lightmaps = {SLightmap(), SLightmap()};
    m_Folder.Write("tex_dxt/LightMap001.dds", "variant");
    EXPECT_EQ(Lines(), Check(model));
    m_Folder.Write("tex_dxt/LightMap002.dds", "variant");
    EXPECT_EQ(1U, Check(model).size());
    m_Folder.Write("tex_dxt/lightmap000.dds", "variant");
    const Lines lines = Check(model);
    ASSERT_EQ(2U, lines.size());
    EXPECT_NE(std::string::npos, (lines[0] + lines[1]).find("lightmap000.dds differs from what"));
}

TEST_F(CVariantFolderCheck, FindsNoVariantThatBelongsToNothingWhereAnotherModelLies)
{
    m_Folder.Write("tex_dxt/002.dds", "variant");
    m_Folder.Write("other.png", "no model");
    m_Folder.MakeFolder("folder.zek");
    EXPECT_EQ(1U, Check(MakeModelWithItems()).size());
    m_Folder.Write("other.zek", "perhaps a model");
    EXPECT_EQ(Lines(), Check(MakeModelWithItems()));
}

TEST_F(CVariantFolderCheck, TakesWhatStartsLikeAModelForAnotherWhateverItsName)
{
    m_Folder.Write("tex_dxt/002.dds", "variant");
    m_Folder.Write("wall.png", "ZEK, which is no model");
    EXPECT_EQ(1U, Check(MakeModelWithItems()).size());
    for (const char* name : {"model.ZEK", "model.mdl", "other"})
    {
        m_Folder.Write(name, CModelBuilder::Build(MakeModel()).GetImage());
        EXPECT_EQ(Lines(), Check(MakeModelWithItems())) << name;
        ASSERT_TRUE(filesystem::RemoveFile(m_Folder.GetPath(name)));
    }
    EXPECT_EQ(1U, Check(MakeModelWithItems()).size());
}

TEST_F(CVariantFolderCheck, LooksForNothingAmongMoreFilesThanItOpens)
{
    m_Folder.Write("tex_dxt/002.dds", "variant");
    for (int i = 0; i < 1000; ++i)
        m_Folder.Write(std::to_string(i) + ".png", "no model");
    EXPECT_EQ(1U, Check(MakeModelWithItems()).size());
    m_Folder.Write("1000.png", "no model");
    EXPECT_EQ(Lines(), Check(MakeModelWithItems()));
}

TEST_F(CVariantFolderCheck, FindsVariantsAmongManyOtherFilesOfALoneModel)
{
    for (int i = 0; i < 3000; ++i)
        m_Folder.Write("tex_dxt/" + std::to_string(i) + ".meta", "no variant");
    // Whatever the order of the folder is, some come late in it.
    for (int i = 10; i < 20; ++i)
        m_Folder.Write("tex_dxt/" + std::to_string(i) + ".dds", "variant");
    EXPECT_EQ(10U, Check(MakeModelWithItems()).size());
}

TEST_F(CVariantFolderCheck, FindsNamesThatDifferInCapitalLetters)
{
    m_Folder.Write("tex_dxt/000.DDS", "variant");
    m_Folder.Write("tex_dxt/light.dds", "variant");
    EXPECT_EQ(
        (Lines{
            "warning: model: tex_dxt/000.DDS differs from what is looked for in capital letters; "
            "rename the file [variant-name-case]",
            "warning: model: tex_dxt/light.dds differs from what is looked for in capital letters; "
            "rename the file [variant-name-case]"}),
        Check(MakeModelWithItems()));
    // Of which the second may be a lightmap.
    m_Folder.Write("other.zek", "perhaps a model");
    EXPECT_EQ(Lines(), Check(MakeModelWithItems()));
}

TEST_F(CVariantFolderCheck, FindsLightmapsThatDifferInTheExtensionAlone)
{
    SModel model = MakeModel();
    model.lightmaps = {{"a.png", None}, {"b.png", None}, {"a.jpg", None}, {"a.png", None}};
    EXPECT_EQ(
        (Lines{"warning: lightmap 2 \"a.jpg\": flags at 0x36: it has the same variants as lightmap "
               "0 \"a.png\"; rename one of the lightmaps [shared-lightmap-variant]"}),
        Check(model));
}

} // namespace
