#include "ZEKOverwriter/CZEKVariantFinder.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"

using testsupport::CTemporaryFolder;
using zek::CZEKVariantFinder;
using zek::EZEKItemKind;
using zek::FamilyFlags;
using zek::SZEKItem;

namespace
{

using Paths = std::vector<std::string>;

/// Lets a finder look for an item among some paths, and notes those that it tries.
struct SLook
{
    SLook(
        const SZEKItem& item,
        const Paths& there,
        const std::string& folder = "models/",
        char separator = '\\')
    {
        const auto isExist = [&](const std::string& path)
        {
            tried.push_back(path);
            return std::find(there.begin(), there.end(), path) != there.end();
        };
        found = CZEKVariantFinder(folder, isExist, separator).Find(item);
    }

    Paths tried;
    FamilyFlags found = {};
};

/// The paths of all faces of a probe: face by face, and in each family by family.
Paths MakeFacePaths(const std::string& folder, const std::string& probe, char separator)
{
    Paths paths;
    for (const char face : {'0', '1', '2', '3', '4', '5'})
    {
        for (const std::string family : {"pvrtc", "etc", "astc", "dxt"})
            paths.push_back(
                folder + "tex_reflection_cube_" + family + separator + probe + separator +
                "reflection_cube_" + face + (family == "dxt" ? ".dds" : ".pvr"));
    }
    return paths;
}

} // namespace

TEST(VariantFinder, LooksForATextureByItsIndex)
{
    const Paths expected = {
        "models/tex_pvrtc/007.pvr", "models/tex_etc/007.pvr", "models/tex_astc/007.pvr",
        "models/tex_dxt/007.dds"};
    EXPECT_EQ(expected, SLook(SZEKItem::MakeTexture(7), {}).tried);
    EXPECT_EQ("models/tex_etc/1234.pvr", SLook(SZEKItem::MakeTexture(1234), {}).tried[1]);
    EXPECT_EQ("tex_dxt/010.dds", SLook(SZEKItem::MakeTexture(10), {}, "").tried[3]);
}

TEST(VariantFinder, LooksForALightmapByItsNameWithoutTheExtension)
{
    const Paths expected = {
        "tex_pvrtc/a.b.pvr", "tex_etc/a.b.pvr", "tex_astc/a.b.pvr", "tex_dxt/a.b.dds"};
    EXPECT_EQ(expected, SLook(SZEKItem::MakeLightmap("a.b.png"), {}, "").tried);
    EXPECT_EQ("tex_dxt/map.dds", SLook(SZEKItem::MakeLightmap("map"), {}, "").tried[3]);
    // A dot that is the second half of a character ends no name.
    EXPECT_EQ("tex_dxt/\x83\x2E.dds", SLook(SZEKItem::MakeLightmap("\x83\x2E"), {}, "").tried[3]);
}

TEST(VariantFinder, TriesAllFacesOfACubemapWhateverIsThere)
{
    const Paths all = MakeFacePaths("models/", "Hall", '\\');
    EXPECT_EQ(24u, all.size());
    const SZEKItem item = SZEKItem::MakeCubemap("Hall");
    EXPECT_EQ(all, SLook(item, {}).tried);
    EXPECT_EQ(all, SLook(item, all).tried);
    EXPECT_EQ((FamilyFlags{true, true, true, true}), SLook(item, all).found);
    EXPECT_EQ((FamilyFlags{false, false, false, false}), SLook(item, {}).found);
}

TEST(VariantFinder, WantsAllFacesOfACubemap)
{
    const Paths all = MakeFacePaths("models/", "Hall", '\\');
    for (std::size_t missing = 0; missing < all.size(); ++missing)
    {
        Paths there = all;
        there.erase(there.begin() + static_cast<std::ptrdiff_t>(missing));
        FamilyFlags expected = {true, true, true, true};
        expected[missing % 4] = false;
        const SLook look(SZEKItem::MakeCubemap("Hall"), there);
        EXPECT_EQ(expected, look.found) << missing;
        EXPECT_EQ(all, look.tried) << missing;
    }
}

TEST(VariantFinder, TakesAnotherSeparatorForCubemapsAlone)
{
    EXPECT_EQ(
        MakeFacePaths("models/", "Hall", '/'),
        SLook(SZEKItem::MakeCubemap("Hall"), {}, "models/", '/').tried);
    EXPECT_EQ(
        "models/tex_pvrtc/000.pvr", SLook(SZEKItem::MakeTexture(0), {}, "models/", '#').tried[0]);
}

TEST(VariantFinder, FindsEachFamilyByItself)
{
    const std::array<std::string, 4> paths = {
        "models/tex_pvrtc/000.pvr", "models/tex_etc/000.pvr", "models/tex_astc/000.pvr",
        "models/tex_dxt/000.dds"};
    for (std::size_t family = 0; family < paths.size(); ++family)
    {
        FamilyFlags expected = {};
        expected[family] = true;
        EXPECT_EQ(expected, SLook(SZEKItem::MakeTexture(0), {paths[family]}).found) << family;
    }
}

TEST(VariantFinder, GivesThePathsOfAllFiles)
{
    EXPECT_EQ(1, CZEKVariantFinder::GetFileCount(EZEKItemKind::Texture));
    EXPECT_EQ(6, CZEKVariantFinder::GetFileCount(EZEKItemKind::Cubemap));
    EXPECT_EQ(1, CZEKVariantFinder::GetFileCount(EZEKItemKind::Lightmap));
    CZEKVariantFinder finder("");
    EXPECT_EQ(
        "tex_reflection_cube_dxt\\\\reflection_cube_5.dds",
        finder.GetPath(SZEKItem::MakeCubemap(""), 3, 5));
    EXPECT_EQ("tex_astc/002.pvr", finder.GetPath(SZEKItem::MakeTexture(2), 2, 0));
}

TEST(VariantFinder, LooksOnTheDiskByItself)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/000.pvr", "");
    testsupport::WriteFaces(folder, "tex_reflection_cube_dxt\\Hall", "dds");
    testing::internal::CaptureStdout();
    CZEKVariantFinder finder(folder.GetPath() + "/");
    EXPECT_EQ((FamilyFlags{false, true, false, false}), finder.Find(SZEKItem::MakeTexture(0)));
    EXPECT_EQ((FamilyFlags{false, false, false, true}), finder.Find(SZEKItem::MakeCubemap("Hall")));
    EXPECT_EQ(FamilyFlags(), finder.Find(SZEKItem::MakeLightmap("Hall.png")));
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_TRUE(CZEKVariantFinder::IsExistFile(folder.GetPath("tex_etc/000.pvr")));
    EXPECT_FALSE(CZEKVariantFinder::IsExistFile(folder.GetPath("tex_etc/001.pvr")));
}
