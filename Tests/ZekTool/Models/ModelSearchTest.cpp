#include "ZekTool/Models/ModelSearch.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Support/CTemporaryFolder.h"

namespace
{

using testsupport::CTemporaryFolder;
using zektool::FindModels;
using zektool::SModelPath;
using Names = std::vector<std::string>;

const Names Zek = {"*.zek"};

/// Returns what is found below a folder, from the folder on.
Names Find(const CTemporaryFolder& folder, const Names& patterns = Zek)
{
    std::vector<SModelPath> models;
    const std::size_t count = FindModels(folder.GetPath(), patterns, models);
    EXPECT_EQ(count, models.size());
    Names names;
    for (const SModelPath& model : models)
    {
        EXPECT_EQ(folder.GetPath("") + std::string(model.GetName()), model.path);
        EXPECT_EQ("", model.error);
        names.emplace_back(model.GetName());
    }
    return names;
}

TEST(ModelSearch, ModelsComeInTheByteOrderOfTheirPaths)
{
    CTemporaryFolder folder;
    const Names names = {" .zek", "-n.zek",   "A.zek",     "a b.zek", "a-b.zek",
                         "a.zek", "a/b.zek",  "a/c/d.zek", "a0.zek",  "a\n.zek",
                         "b.zek", "\xE9.zek", "\xFF/x.zek"};
    Names sorted = names;
    std::sort(sorted.begin(), sorted.end());
    for (const std::string& name : names)
        folder.Write(name, "model");
    EXPECT_EQ(sorted, Find(folder));
}

TEST(ModelSearch, OnlyNamesThatMatchAPatternAreTaken)
{
    CTemporaryFolder folder;
    for (const char* name : {"a.zek", "b.mdl", "c.txt", "zek", "d.zek.bak", ".zek"})
        folder.Write(name, "model");
    EXPECT_EQ((Names{".zek", "a.zek"}), Find(folder));
    EXPECT_EQ((Names{"a.zek", "b.mdl"}), Find(folder, {"[ab].*"}));
    EXPECT_EQ((Names{"b.mdl", "c.txt"}), Find(folder, {"*.mdl", "?.txt"}));
}

TEST(ModelSearch, AFolderWithTheNameOfAModelIsAFolder)
{
    CTemporaryFolder folder;
    folder.Write("a.zek/b.zek", "model");
    EXPECT_EQ(Names{"a.zek/b.zek"}, Find(folder));
}

TEST(ModelSearch, LinksToFoldersAreFollowedOnlyWhenNamed)
{
    CTemporaryFolder folder;
    CTemporaryFolder other;
    other.Write("x.zek", "model");
    folder.Write("a.zek", "model");
    std::filesystem::create_directory_symlink(other.GetPath(), folder.GetPath("link"));
    std::filesystem::create_directory_symlink(other.GetPath(), folder.GetPath("link.zek"));
    std::filesystem::create_symlink(other.GetPath("x.zek"), folder.GetPath("file.zek"));
    EXPECT_EQ((Names{"a.zek", "file.zek"}), Find(folder));

    std::vector<SModelPath> models;
    FindModels(folder.GetPath("link"), Zek, models);
    ASSERT_EQ(1U, models.size());
    EXPECT_EQ(folder.GetPath("link/x.zek"), models[0].path);
}

TEST(ModelSearch, APathThatIsNoFolderStandsForItself)
{
    CTemporaryFolder folder;
    folder.Write("any", "model");
    std::vector<SModelPath> models;
    FindModels(folder.GetPath("any"), Zek, models);
    ASSERT_EQ(1U, models.size());
    EXPECT_EQ("any", models[0].GetName());
    EXPECT_EQ("", models[0].error);
}

TEST(ModelSearch, APathThatLeadsNowhereHasItsError)
{
    CTemporaryFolder folder;
    for (const std::string& path : {folder.GetPath("none"), std::string(), std::string(10000, 'x')})
    {
        std::vector<SModelPath> models;
        EXPECT_EQ(1U, FindModels(path, Zek, models));
        EXPECT_EQ(path, models.at(0).path);
        EXPECT_NE("", models.at(0).error);
    }
}

TEST(ModelSearch, AFolderThatCannotBeReadFailsInItsPlace)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "The administrator may read every folder.";
    CTemporaryFolder folder;
    for (const char* name : {"a.zek", "b/x.zek", "c.zek"})
        folder.Write(name, "model");
    chmod(folder.GetPath("b").c_str(), 0);
    std::vector<SModelPath> models;
    FindModels(folder.GetPath(), Zek, models);
    chmod(folder.GetPath("b").c_str(), 0700);
    ASSERT_EQ(3U, models.size());
    EXPECT_EQ("b/", models[1].GetName());
    EXPECT_EQ("Permission denied", models[1].error);
}

} // namespace
