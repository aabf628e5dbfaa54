#include "ZekTool/Models/CVariantSearch.h"

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"

namespace
{

using namespace testsupport;
using zek::EZEKItemKind;
using zektool::CVariantSearch;
using zektool::MissingFiles;

constexpr std::size_t ETC = 1;

/// Looks for the files that an item lacks, and holds what is there to what `Find` says.
MissingFiles
FindMissing(CVariantSearch search, EZEKItemKind kind, int index, const std::string& name)
{
    const MissingFiles missing = search.FindMissing(kind, index, name);
    const zek::FamilyFlags isPresent = search.Find(kind, index, name);
    for (std::size_t family = 0; family < missing.size(); ++family)
        EXPECT_EQ(isPresent[family], missing[family] == 0) << family;
    return missing;
}

TEST(CVariantSearch, TellsWhichTexturesAndLightmapsAreMissing)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/001.pvr", "");
    folder.Write("tex_dxt/Light.dds", "");
    const CVariantSearch search(folder.GetPath(""), false);
    EXPECT_EQ((MissingFiles{1, 0, 1, 1}), FindMissing(search, EZEKItemKind::Texture, 1, "a.png"));
    EXPECT_EQ((MissingFiles{1, 1, 1, 1}), FindMissing(search, EZEKItemKind::Texture, 0, "a.png"));
    EXPECT_EQ(
        (MissingFiles{1, 1, 1, 0}), FindMissing(search, EZEKItemKind::Lightmap, 0, "Light.png"));
}

TEST(CVariantSearch, TellsWhichFacesAreMissing)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_etc\\Hall", "pvr");
    WriteFaces(folder, "tex_reflection_cube_dxt\\Hall", "dds");
    folder.Remove("tex_reflection_cube_dxt\\Hall\\reflection_cube_0.dds");
    folder.Remove("tex_reflection_cube_dxt\\Hall\\reflection_cube_4.dds");
    const CVariantSearch search(folder.GetPath(""), false);
    EXPECT_EQ((MissingFiles{63, 0, 63, 17}), FindMissing(search, EZEKItemKind::Cubemap, 0, "Hall"));
}

TEST(CVariantSearch, MissesTheFacesOfFoldersWhereTheseAreTaken)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_etc\\Hall", "pvr");
    folder.Write("tex_reflection_cube_dxt\\Hall\\reflection_cube_0.dds", "");
    folder.Write("tex_reflection_cube_dxt/Hall/reflection_cube_1.dds", "");
    CVariantSearch search(folder.GetPath(""), true);
    EXPECT_EQ((MissingFiles{63, 0, 63, 61}), FindMissing(search, EZEKItemKind::Cubemap, 0, "Hall"));
    EXPECT_EQ(
        folder.GetPath("tex_reflection_cube_etc/Hall/reflection_cube_5.pvr"),
        search.GetPath({EZEKItemKind::Cubemap, "Hall"}, ETC, 5));
}

TEST(CVariantSearch, NamesTheFilesThatItLooksFor)
{
    CVariantSearch search("models/", false);
    EXPECT_EQ(
        "models/tex_reflection_cube_etc\\Hall\\reflection_cube_5.pvr",
        search.GetPath({EZEKItemKind::Cubemap, "Hall"}, ETC, 5));
    EXPECT_EQ("models/tex_etc/017.pvr", search.GetPath({EZEKItemKind::Texture, "017"}, ETC, 0));
}

} // namespace
