// The operations on folders that are built on the platform's primitives, here with primitives that
// work on folders and files in memory.

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/FileSystem.h"
#include "Specific/FileSystem/FolderPrimitives.h"

using filesystem::CFindFile;

namespace
{

using Names = std::vector<std::string>;

/// Gives every path of a folder or file one form: backslashes only, none doubled, none at the end.
std::string Normalise(const std::string& path)
{
    std::string normal;
    for (const char character : path + "\\")
    {
        const char plain = character == '/' ? '\\' : character;
        if (plain != '\\' || normal.empty() || normal.back() != '\\')
            normal += plain;
    }
    normal.pop_back();
    return normal;
}

/// The folders and files that the primitives see, and what the primitives were called with.
struct SDisk
{
    std::map<std::string, Names> folders; ///< with their entries as a finder gives them
    std::set<std::string> files;
    std::set<std::string> hidden;
    std::set<std::string> system;
    std::set<std::string> refused; ///< what cannot be created, deleted or copied to
    std::map<const CFindFile*, Names> openFinders;
    Names calls;

    /// Adds a folder. As an input stream opens on a folder, its "." and ".." are files, too.
    void AddFolder(const std::string& path)
    {
        AddEntry(path);
        folders[path] = {".", ".."};
        for (const char* dots : {"\\.", "\\.."})
        {
            folders[path + dots];
            files.insert(path + dots);
        }
    }

    void AddFile(const std::string& path)
    {
        AddEntry(path);
        files.insert(path);
    }

    /// The calls whose text starts with a name, without that.
    Names GetCalls(const std::string& primitive) const
    {
        Names arguments;
        for (const std::string& call : calls)
        {
            if (call.rfind(primitive + " ", 0) == 0)
                arguments.push_back(call.substr(primitive.length() + 1));
        }
        return arguments;
    }

private:
    void AddEntry(const std::string& path)
    {
        const std::size_t separator = path.rfind('\\');
        if (separator != std::string::npos)
            folders[path.substr(0, separator)].push_back(path.substr(separator + 1));
    }
};

SDisk g_Disk;

/// Makes a disk of its own for each test.
class FolderOperations : public testing::Test
{
protected:
    FolderOperations() { g_Disk = SDisk(); }
};

Names GetFileList(const std::string& folder, Names names = {})
{
    CFindFile::GetFileList(folder, names);
    return names;
}

Names GetFolderList(const std::string& folder, Names names = {})
{
    CFindFile::GetFolderList(folder, names);
    return names;
}

Names GetFileListWithinSubFolder(const std::string& folder, Names paths = {})
{
    CFindFile::GetFileListWithinSubFolder(folder, paths);
    return paths;
}

} // namespace

namespace filesystem
{

bool CFindFile::IsExistFile(const std::string& path)
{
    g_Disk.calls.push_back("IsExistFile " + path);
    return g_Disk.files.count(Normalise(path)) > 0;
}

bool CFindFile::IsExistDir(const std::string& path)
{
    g_Disk.calls.push_back("IsExistDir " + path);
    return g_Disk.folders.count(Normalise(path)) > 0;
}

bool CFindFile::IsHidden(const std::string& path)
{
    return g_Disk.hidden.count(Normalise(path)) > 0;
}

bool CFindFile::IsSystem(const std::string& path)
{
    return g_Disk.system.count(Normalise(path)) > 0;
}

bool CFindFile::GetFirst(const std::string& pattern, std::string& name)
{
    g_Disk.calls.push_back("GetFirst " + pattern);
    const std::size_t patternEnd = pattern.rfind("\\*");
    if (patternEnd == std::string::npos || patternEnd + 2 != pattern.length())
        return false;
    const auto folder = g_Disk.folders.find(Normalise(pattern.substr(0, patternEnd)));
    if (folder == g_Disk.folders.end())
        return false;
    g_Disk.openFinders[this] = folder->second;
    return GetNext(name);
}

bool CFindFile::GetNext(std::string& name)
{
    Names& left = g_Disk.openFinders.at(this);
    if (left.empty())
        return false;
    name = left.front();
    left.erase(left.begin());
    return true;
}

bool CFindFile::Close()
{
    g_Disk.openFinders.erase(this);
    return true;
}

bool DelFile(const std::string& path)
{
    g_Disk.calls.push_back("DelFile " + path);
    return g_Disk.refused.count(Normalise(path)) == 0 && g_Disk.files.erase(Normalise(path)) > 0;
}

bool CopyOneFile(const std::string& dest, const std::string& src)
{
    g_Disk.calls.push_back("CopyOneFile " + dest + " from " + src);
    return g_Disk.refused.count(Normalise(dest)) == 0;
}

bool CreateOneFolder(const std::string& path)
{
    g_Disk.calls.push_back("CreateOneFolder " + path);
    if (g_Disk.refused.count(Normalise(path)) > 0)
        return false;
    g_Disk.AddFolder(Normalise(path));
    return true;
}

} // namespace filesystem

TEST_F(FolderOperations, FileListAsksForEverythingInTheFolder)
{
    g_Disk.AddFolder("f");
    GetFileList("f");
    EXPECT_EQ((Names{R"(f\*)"}), g_Disk.GetCalls("GetFirst"));
}

TEST_F(FolderOperations, FileListGivesTheBareNamesOfTheFilesInByteOrder)
{
    g_Disk.AddFolder("f");
    for (const char* name : {"b", "a", "C", "\xB1", "a.txt", "_"})
        g_Disk.AddFile("f\\" + std::string(name));
    EXPECT_EQ((Names{"C", "_", "a", "a.txt", "b", "\xB1"}), GetFileList("f"));
}

TEST_F(FolderOperations, FileListTestsEachNameAfterFolderAndBackslash)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\b)");
    g_Disk.AddFile(R"(f\a)");
    GetFileList("f");
    EXPECT_EQ((Names{R"(f\b)", R"(f\a)"}), g_Disk.GetCalls("IsExistFile"));
}

TEST_F(FolderOperations, FileListSkipsTheFolderItselfAndItsParent)
{
    g_Disk.AddFolder("f");
    ASSERT_EQ((Names{".", ".."}), g_Disk.folders.at("f"));
    EXPECT_EQ(Names{}, GetFileList("f"));
}

TEST_F(FolderOperations, FileListKeepsOtherNamesThatStartWithADot)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\.a)");
    g_Disk.AddFile(R"(f\..a)");
    g_Disk.AddFile(R"(f\...)");
    EXPECT_EQ((Names{"...", "..a", ".a"}), GetFileList("f"));
}

TEST_F(FolderOperations, FileListLeavesOutSubFolders)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\sub)");
    g_Disk.AddFile(R"(f\file)");
    EXPECT_EQ((Names{"file"}), GetFileList("f"));
}

TEST_F(FolderOperations, FileListLeavesOutHiddenFiles)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\hidden)");
    g_Disk.AddFile(R"(f\plain)");
    g_Disk.hidden.insert(R"(f\hidden)");
    EXPECT_EQ((Names{"plain"}), GetFileList("f"));
}

TEST_F(FolderOperations, FileListLeavesOutSystemFiles)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\system)");
    g_Disk.AddFile(R"(f\plain)");
    g_Disk.system.insert(R"(f\system)");
    EXPECT_EQ((Names{"plain"}), GetFileList("f"));
}

TEST_F(FolderOperations, FileListSortsTheWholeVector)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\d)");
    g_Disk.AddFile(R"(f\b)");
    EXPECT_EQ((Names{"a", "b", "b", "c", "d"}), GetFileList("f", {"c", "b", "a"}));
}

TEST_F(FolderOperations, FileListSortsTheVectorEvenWhenNoEntryIsAFile)
{
    g_Disk.AddFolder("f");
    EXPECT_EQ((Names{"a", "b"}), GetFileList("f", {"b", "a"}));
}

TEST_F(FolderOperations, FileListWithoutAFirstEntryLeavesTheVectorAsItStands)
{
    EXPECT_EQ((Names{"b", "a"}), GetFileList("missing", {"b", "a"}));
}

TEST_F(FolderOperations, FileListTranslatesTheLogicalPrefix)
{
    g_Disk.AddFolder(R"(Tarvelquinn\UserData\maps)");
    g_Disk.AddFile(R"(Tarvelquinn\UserData\maps\a)");
    EXPECT_EQ((Names{"a"}), GetFileList(R"(UserData\maps)"));
    EXPECT_EQ((Names{R"(Tarvelquinn\UserData\maps\*)"}), g_Disk.GetCalls("GetFirst"));
    EXPECT_EQ((Names{R"(Tarvelquinn\UserData\maps\a)"}), g_Disk.GetCalls("IsExistFile"));
}

TEST_F(FolderOperations, FileListTestsForHiddenFilesAfterTheTranslatedPrefix)
{
    g_Disk.AddFolder(R"(Tarvelquinn\Setting\maps)");
    g_Disk.AddFile(R"(Tarvelquinn\Setting\maps\hidden)");
    g_Disk.AddFile(R"(Tarvelquinn\Setting\maps\system)");
    g_Disk.hidden.insert(R"(Tarvelquinn\Setting\maps\hidden)");
    g_Disk.system.insert(R"(Tarvelquinn\Setting\maps\system)");
    EXPECT_EQ(Names{}, GetFileList(R"(Setting\maps)"));
}

TEST_F(FolderOperations, ListsCloseTheirFinders)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\a)");
    GetFileList("f");
    GetFolderList("f");
    GetFileListWithinSubFolder("f");
    EXPECT_TRUE(g_Disk.openFinders.empty());
}

TEST_F(FolderOperations, FinderIsClosedByItsDestructor)
{
    g_Disk.AddFolder("f");
    {
        CFindFile finder;
        std::string name;
        EXPECT_TRUE(finder.GetFirst(R"(f\*)", name));
        EXPECT_EQ(1u, g_Disk.openFinders.size());
    }
    EXPECT_TRUE(g_Disk.openFinders.empty());
}

TEST_F(FolderOperations, FolderListAsksForEverythingInTheFolder)
{
    g_Disk.AddFolder("f");
    GetFolderList("f");
    EXPECT_EQ((Names{R"(f\*)"}), g_Disk.GetCalls("GetFirst"));
}

TEST_F(FolderOperations, FolderListGivesTheBareNamesOfTheFoldersInByteOrder)
{
    g_Disk.AddFolder("f");
    for (const char* name : {"b", "a", "C", "\xB1", "_"})
        g_Disk.AddFolder("f\\" + std::string(name));
    EXPECT_EQ((Names{"C", "_", "a", "b", "\xB1"}), GetFolderList("f"));
}

TEST_F(FolderOperations, FolderListTestsEachNameAfterFolderAndBackslash)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\b)");
    g_Disk.AddFolder(R"(f\a)");
    GetFolderList("f");
    EXPECT_EQ((Names{R"(f\b)", R"(f\a)"}), g_Disk.GetCalls("IsExistDir"));
}

TEST_F(FolderOperations, FolderListSkipsTheFolderItselfAndItsParent)
{
    g_Disk.AddFolder("f");
    EXPECT_EQ(Names{}, GetFolderList("f"));
}

TEST_F(FolderOperations, FolderListLeavesOutFiles)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\file)");
    g_Disk.AddFolder(R"(f\sub)");
    EXPECT_EQ((Names{"sub"}), GetFolderList("f"));
}

TEST_F(FolderOperations, FolderListKeepsHiddenAndSystemFolders)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\hidden)");
    g_Disk.AddFolder(R"(f\system)");
    g_Disk.hidden.insert(R"(f\hidden)");
    g_Disk.system.insert(R"(f\system)");
    EXPECT_EQ((Names{"hidden", "system"}), GetFolderList("f"));
}

TEST_F(FolderOperations, FolderListSortsTheWholeVector)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\b)");
    EXPECT_EQ((Names{"a", "b", "c"}), GetFolderList("f", {"c", "a"}));
}

TEST_F(FolderOperations, FolderListSortsTheVectorEvenWhenNoEntryIsAFolder)
{
    g_Disk.AddFolder("f");
    EXPECT_EQ((Names{"a", "b"}), GetFolderList("f", {"b", "a"}));
}

TEST_F(FolderOperations, FolderListWithoutAFirstEntryLeavesTheVectorAsItStands)
{
    EXPECT_EQ((Names{"b", "a"}), GetFolderList("missing", {"b", "a"}));
}

TEST_F(FolderOperations, FolderListTranslatesTheLogicalPrefix)
{
    g_Disk.AddFolder(R"(Tarvelquinn\Setting\maps)");
    g_Disk.AddFolder(R"(Tarvelquinn\Setting\maps\sub)");
    EXPECT_EQ((Names{"sub"}), GetFolderList(R"(Setting\maps)"));
    EXPECT_EQ((Names{R"(Tarvelquinn\Setting\maps\sub)"}), g_Disk.GetCalls("IsExistDir"));
}

TEST_F(FolderOperations, FileListWithinSubFoldersGoesDepthFirstWithAFoldersOwnFilesFirst)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\y)");
    g_Disk.AddFolder(R"(f\a)");
    g_Disk.AddFile(R"(f\z)");
    g_Disk.AddFile(R"(f\k)");
    g_Disk.AddFile(R"(f\y\1)");
    g_Disk.AddFolder(R"(f\a\deep)");
    g_Disk.AddFile(R"(f\a\deep\2)");
    g_Disk.AddFile(R"(f\a\x)");
    const Names expected{R"(f\k)", R"(f\z)", R"(f\a\x)", R"(f\a\deep\2)", R"(f\y\1)"};
    EXPECT_EQ(expected, GetFileListWithinSubFolder("f"));
}

TEST_F(FolderOperations, FileListWithinSubFoldersAppendsWithoutSortingTheVector)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\b)");
    g_Disk.AddFile(R"(f\a)");
    g_Disk.AddFolder(R"(f\sub)");
    g_Disk.AddFile(R"(f\sub\0)");
    const Names expected{"z", "c", R"(f\a)", R"(f\b)", R"(f\sub\0)"};
    EXPECT_EQ(expected, GetFileListWithinSubFolder("f", {"z", "c"}));
}

TEST_F(FolderOperations, FileListWithinSubFoldersKeepsTheLogicalPrefixInItsPaths)
{
    g_Disk.AddFolder(R"(Tarvelquinn\UserData\maps)");
    g_Disk.AddFile(R"(Tarvelquinn\UserData\maps\a)");
    g_Disk.AddFolder(R"(Tarvelquinn\UserData\maps\sub)");
    g_Disk.AddFile(R"(Tarvelquinn\UserData\maps\sub\b)");
    const Names expected{R"(UserData\maps\a)", R"(UserData\maps\sub\b)"};
    EXPECT_EQ(expected, GetFileListWithinSubFolder(R"(UserData\maps)"));
}

TEST_F(FolderOperations, FileListWithinSubFoldersEntersHiddenFoldersButLeavesOutHiddenFiles)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\hidden)");
    g_Disk.AddFile(R"(f\hidden\a)");
    g_Disk.AddFile(R"(f\hidden\b)");
    g_Disk.hidden = {R"(f\hidden)", R"(f\hidden\b)"};
    EXPECT_EQ((Names{R"(f\hidden\a)"}), GetFileListWithinSubFolder("f"));
}

TEST_F(FolderOperations, CreateFolderLeavesAnExistingFolder)
{
    g_Disk.AddFolder(R"(a\b)");
    EXPECT_TRUE(filesystem::CreateFolder(R"(a\b)"));
    EXPECT_EQ((Names{R"(IsExistDir a\b)"}), g_Disk.calls);
}

TEST_F(FolderOperations, CreateFolderCreatesMissingParentsFromTheOutermost)
{
    EXPECT_TRUE(filesystem::CreateFolder(R"(a\b/c)"));
    const Names expected{R"(IsExistDir a\b/c)",    R"(IsExistDir a\b)",
                         R"(IsExistDir a)",        R"(CreateOneFolder a)",
                         R"(CreateOneFolder a\b)", R"(CreateOneFolder a\b/c)"};
    EXPECT_EQ(expected, g_Disk.calls);
}

TEST_F(FolderOperations, CreateFolderStopsLookingUpwardsAtAnExistingParent)
{
    g_Disk.AddFolder(R"(a\b)");
    EXPECT_TRUE(filesystem::CreateFolder(R"(a\b\c)"));
    const Names expected{R"(IsExistDir a\b\c)", R"(IsExistDir a\b)", R"(CreateOneFolder a\b\c)"};
    EXPECT_EQ(expected, g_Disk.calls);
}

TEST_F(FolderOperations, CreateFolderOfAnAbsolutePathStartsBelowTheRoot)
{
    EXPECT_TRUE(filesystem::CreateFolder("/a/b"));
    EXPECT_EQ((Names{"/a/b", "/a"}), g_Disk.GetCalls("IsExistDir"));
    EXPECT_EQ((Names{"/a", "/a/b"}), g_Disk.GetCalls("CreateOneFolder"));
}

TEST_F(FolderOperations, CreateFolderFailsWhereAParentCannotBeCreated)
{
    g_Disk.refused.insert(R"(a\b)");
    EXPECT_FALSE(filesystem::CreateFolder(R"(a\b\c)"));
    EXPECT_EQ((Names{"a", R"(a\b)"}), g_Disk.GetCalls("CreateOneFolder"));
}

TEST_F(FolderOperations, CreateFolderFailsWhereTheFolderItselfCannotBeCreated)
{
    g_Disk.refused.insert(R"(a\b)");
    EXPECT_FALSE(filesystem::CreateFolder(R"(a\b)"));
    EXPECT_EQ((Names{"a", R"(a\b)"}), g_Disk.GetCalls("CreateOneFolder"));
}

TEST_F(FolderOperations, CreateFolderNeverCreatesTheRootOfADrive)
{
    EXPECT_TRUE(filesystem::CreateFolder(R"(C:\)"));
    EXPECT_TRUE(filesystem::CreateFolder(R"(z:\)"));
    EXPECT_EQ((Names{R"(C:\)", "C:", R"(z:\)", "z:"}), g_Disk.GetCalls("IsExistDir"));
    EXPECT_EQ((Names{"C:", "z:"}), g_Disk.GetCalls("CreateOneFolder"));
}

TEST_F(FolderOperations, CreateFolderOfTheRootOfADriveFailsWithItsParent)
{
    g_Disk.refused.insert("C:");
    EXPECT_FALSE(filesystem::CreateFolder(R"(C:\)"));
}

TEST_F(FolderOperations, CreateFolderTakesOnlyALetterColonAndBackslashForADrive)
{
    for (const std::string path : {R"(1:\)", R"(C;\)", "C:/", R"(CC:\)", R"([:\)"})
    {
        g_Disk = SDisk();
        EXPECT_TRUE(filesystem::CreateFolder(path));
        ASSERT_EQ(2u, g_Disk.GetCalls("CreateOneFolder").size()) << path;
        EXPECT_EQ(path, g_Disk.GetCalls("CreateOneFolder").back());
    }
}

TEST_F(FolderOperations, DeleteFolderOfAMissingFolderSucceedsAtOnce)
{
    EXPECT_TRUE(filesystem::DeleteFolder("missing"));
    EXPECT_EQ((Names{"IsExistDir missing"}), g_Disk.calls);
}

TEST_F(FolderOperations, DeleteFolderDeletesTheFilesInOrderAfterASlash)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\b)");
    g_Disk.AddFile(R"(f\a)");
    EXPECT_TRUE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f/a", "f/b"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderKeepsTheSeparatorThatEndsThePath)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\a)");
    EXPECT_TRUE(filesystem::DeleteFolder(R"(f\)"));
    EXPECT_EQ((Names{R"(f\a)"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderAsksOfEachNameWhetherItIsAFolder)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\a)");
    EXPECT_TRUE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f", "f/a"}), g_Disk.GetCalls("IsExistDir"));
}

TEST_F(FolderOperations, DeleteFolderEntersAFolderThatIsListedAsAFile)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\m)");
    g_Disk.files.insert(R"(f\m)");
    g_Disk.AddFile(R"(f\m\x)");
    g_Disk.AddFile(R"(f\a)");
    g_Disk.AddFile(R"(f\z)");
    EXPECT_TRUE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f/a", "f/m/x", "f/z"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderLeavesTheFolderAndItsSubFolders)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\sub)");
    g_Disk.AddFile(R"(f\sub\x)");
    EXPECT_TRUE(filesystem::DeleteFolder("f"));
    EXPECT_EQ(Names{}, g_Disk.GetCalls("DelFile"));
    EXPECT_EQ(1u, g_Disk.folders.count("f"));
}

TEST_F(FolderOperations, DeleteFolderLeavesHiddenFiles)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFile(R"(f\hidden)");
    g_Disk.AddFile(R"(f\plain)");
    g_Disk.hidden.insert(R"(f\hidden)");
    EXPECT_TRUE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f/plain"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderStopsAtTheFirstFileThatCannotBeDeleted)
{
    g_Disk.AddFolder("f");
    for (const char* path : {R"(f\a)", R"(f\b)", R"(f\c)"})
        g_Disk.AddFile(path);
    g_Disk.refused.insert(R"(f\b)");
    EXPECT_FALSE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f/a", "f/b"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderStopsAtTheFirstFolderThatCannotBeEmptied)
{
    g_Disk.AddFolder("f");
    g_Disk.AddFolder(R"(f\a)");
    g_Disk.files.insert(R"(f\a)");
    g_Disk.AddFile(R"(f\a\x)");
    g_Disk.AddFile(R"(f\b)");
    g_Disk.refused.insert(R"(f\a\x)");
    EXPECT_FALSE(filesystem::DeleteFolder("f"));
    EXPECT_EQ((Names{"f/a/x"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, DeleteFolderTranslatesTheLogicalPrefixOnlyInItsListing)
{
    g_Disk.AddFolder(R"(Tarvelquinn\UserData\maps)");
    g_Disk.AddFile(R"(Tarvelquinn\UserData\maps\a)");
    g_Disk.AddFolder(R"(UserData\maps)");
    EXPECT_FALSE(filesystem::DeleteFolder(R"(UserData\maps)"));
    EXPECT_EQ((Names{R"(Tarvelquinn\UserData\maps\*)"}), g_Disk.GetCalls("GetFirst"));
    EXPECT_EQ((Names{R"(UserData\maps/a)"}), g_Disk.GetCalls("DelFile"));
}

TEST_F(FolderOperations, CopyFolderOfAMissingFolderFailsAtOnce)
{
    EXPECT_FALSE(filesystem::CopyFolder("dest", "missing"));
    EXPECT_EQ((Names{"IsExistDir missing"}), g_Disk.calls);
}

TEST_F(FolderOperations, CopyFolderTakesTheDestinationFirst)
{
    g_Disk.AddFolder("src");
    g_Disk.AddFile(R"(src\a)");
    EXPECT_TRUE(filesystem::CopyFolder("dest", "src"));
    EXPECT_EQ((Names{"dest"}), g_Disk.GetCalls("CreateOneFolder"));
    EXPECT_EQ((Names{R"(dest\a from src\a)"}), g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderCreatesTheParentsOfItsDestination)
{
    g_Disk.AddFolder("src");
    EXPECT_TRUE(filesystem::CopyFolder(R"(a\b)", "src"));
    EXPECT_EQ((Names{"a", R"(a\b)"}), g_Disk.GetCalls("CreateOneFolder"));
}

TEST_F(FolderOperations, CopyFolderIntoAnExistingFolderCreatesNothing)
{
    g_Disk.AddFolder("src");
    g_Disk.AddFile(R"(src\a)");
    g_Disk.AddFolder("dest");
    EXPECT_TRUE(filesystem::CopyFolder("dest", "src"));
    EXPECT_EQ(Names{}, g_Disk.GetCalls("CreateOneFolder"));
    EXPECT_EQ((Names{R"(dest\a from src\a)"}), g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderCopiesSubFoldersBeforeFilesEachInOrder)
{
    g_Disk.AddFolder("src");
    g_Disk.AddFile(R"(src\b)");
    g_Disk.AddFile(R"(src\a)");
    g_Disk.AddFolder(R"(src\z)");
    g_Disk.AddFolder(R"(src\y)");
    g_Disk.AddFile(R"(src\z\1)");
    g_Disk.AddFile(R"(src\y\2)");
    g_Disk.AddFolder(R"(src\y\deep)");
    g_Disk.AddFile(R"(src\y\deep\3)");
    EXPECT_TRUE(filesystem::CopyFolder("dest", "src"));
    const Names folders{"dest", R"(dest\y)", R"(dest\y\deep)", R"(dest\z)"};
    const Names files{
        R"(dest\y\deep\3 from src\y\deep\3)", R"(dest\y\2 from src\y\2)",
        R"(dest\z\1 from src\z\1)", R"(dest\a from src\a)", R"(dest\b from src\b)"};
    EXPECT_EQ(folders, g_Disk.GetCalls("CreateOneFolder"));
    EXPECT_EQ(files, g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderCopiesHiddenFoldersButNotHiddenFiles)
{
    g_Disk.AddFolder("src");
    g_Disk.AddFile(R"(src\hidden)");
    g_Disk.AddFolder(R"(src\sub)");
    g_Disk.AddFile(R"(src\sub\a)");
    g_Disk.hidden = {R"(src\hidden)", R"(src\sub)"};
    EXPECT_TRUE(filesystem::CopyFolder("dest", "src"));
    EXPECT_EQ((Names{R"(dest\sub\a from src\sub\a)"}), g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderStopsWhereItsDestinationCannotBeCreated)
{
    g_Disk.AddFolder("src");
    g_Disk.AddFile(R"(src\a)");
    g_Disk.refused.insert("dest");
    EXPECT_FALSE(filesystem::CopyFolder("dest", "src"));
    EXPECT_EQ(Names{}, g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderStopsAtTheFirstSubFolderThatFails)
{
    g_Disk.AddFolder("src");
    for (const char* path : {R"(src\a)", R"(src\b)", R"(src\c)"})
        g_Disk.AddFolder(path);
    g_Disk.AddFile(R"(src\file)");
    g_Disk.refused.insert(R"(dest\b)");
    EXPECT_FALSE(filesystem::CopyFolder("dest", "src"));
    EXPECT_EQ((Names{"dest", R"(dest\a)", R"(dest\b)"}), g_Disk.GetCalls("CreateOneFolder"));
    EXPECT_EQ(Names{}, g_Disk.GetCalls("CopyOneFile"));
}

TEST_F(FolderOperations, CopyFolderStopsAtTheFirstFileThatFails)
{
    g_Disk.AddFolder("src");
    for (const char* path : {R"(src\a)", R"(src\b)", R"(src\c)"})
        g_Disk.AddFile(path);
    g_Disk.refused.insert(R"(dest\b)");
    EXPECT_FALSE(filesystem::CopyFolder("dest", "src"));
    const Names expected{R"(dest\a from src\a)", R"(dest\b from src\b)"};
    EXPECT_EQ(expected, g_Disk.GetCalls("CopyOneFile"));
}
