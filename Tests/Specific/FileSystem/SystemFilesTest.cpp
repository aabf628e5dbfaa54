#include "Specific/FileSystem/SystemFiles.h"

#include <algorithm>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Support/CTemporaryFolder.h"

using namespace filesystem;
using testsupport::Bytes;
using testsupport::CTemporaryFolder;

namespace
{

constexpr bool IsWindows = SystemSeparator == '\\';

std::vector<std::string> ListFolder(const std::string& path)
{
    std::vector<std::string> names;
    EXPECT_EQ(
        "", ReadFolder(
                path,
                [&](const SFolderEntry& entry)
                {
                    names.push_back(entry.name + (entry.isFolder ? "/" : ""));
                    EXPECT_FALSE(entry.isLink);
                    return true;
                }));
    std::sort(names.begin(), names.end());
    return names;
}

void WriteBytes(const std::string& path, int size)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.Create(path)) << file.GetError();
    ASSERT_TRUE(file.Write(0, std::string(static_cast<std::size_t>(size), 'x').data(), size));
}

} // namespace

TEST(SystemFiles, APathHasAFolderANameAndAnExtension)
{
    EXPECT_EQ(0U, GetNameStart(""));
    EXPECT_EQ(0U, GetNameStart("a"));
    EXPECT_EQ(2U, GetNameStart("a/"));
    EXPECT_EQ(3U, GetNameStart("a//b"));
    EXPECT_EQ("", GetFolder("a"));
    EXPECT_EQ("a", GetFolder("a//b"));
    EXPECT_EQ("/a", GetFolder("/a/b"));
    EXPECT_EQ("/", GetFolder("/a"));
    EXPECT_EQ(".zek", GetExtension("a.b.zek"));
    EXPECT_EQ(".", GetExtension("a."));
    for (const char* name : {"", "a", ".zek", ".", ".."})
        EXPECT_EQ("", GetExtension(name)) << name;
}

TEST(SystemFiles, BackslashesAndDrivesCountOnWindowsAlone)
{
    EXPECT_EQ(IsWindows, IsSystemSeparator('\\'));
    EXPECT_TRUE(IsSystemSeparator('/'));
    EXPECT_EQ(IsWindows ? 2U : 0U, GetNameStart("a\\b"));
    EXPECT_EQ(IsWindows ? 2U : 0U, GetNameStart("c:b"));
    EXPECT_EQ(IsWindows ? 3U : 0U, GetNameStart("c:\\b"));
}

TEST(SystemFiles, TellsFilesFromFoldersAndNothing)
{
    const CTemporaryFolder folder;
    folder.Write("file", "12345");
    folder.MakeFolder("below");
    const SPathStatus file = GetPathStatus(folder.GetPath("file"));
    EXPECT_EQ(EPathKind::File, file.kind);
    EXPECT_EQ(5, file.size);
    EXPECT_EQ("", file.error);
    EXPECT_EQ(EPathKind::Folder, GetPathStatus(folder.GetPath("below")).kind);
    for (const std::string& path :
         {folder.GetPath("none"), folder.GetPath("none/none"), std::string()})
    {
        const SPathStatus status = GetPathStatus(path);
        EXPECT_EQ(EPathKind::Absent, status.kind) << path;
        EXPECT_NE("", status.error) << path;
        EXPECT_EQ(EPathKind::Absent, GetLinkKind(path)) << path;
    }
    EXPECT_EQ(EPathKind::File, GetLinkKind(folder.GetPath("file")));
    EXPECT_TRUE(IsFolder(folder.GetPath()));
    EXPECT_FALSE(IsFolder(folder.GetPath("file")));
    EXPECT_FALSE(IsFolder(folder.GetPath("none")));
}

TEST(SystemFiles, AFileIsTheSameByAnyPath)
{
    const CTemporaryFolder folder;
    folder.Write("file", "same");
    folder.Write("other", "same");
    EXPECT_TRUE(IsSameFile(folder.GetPath("file"), folder.GetPath("./file")));
    EXPECT_FALSE(IsSameFile(folder.GetPath("file"), folder.GetPath("other")));
    EXPECT_FALSE(IsSameFile(folder.GetPath("file"), folder.GetPath("none")));
}

TEST(SystemFiles, APlaceIsTheSameByAnyPathWhetherAFileIsThereOrNot)
{
    const CTemporaryFolder folder;
    folder.MakeFolder("in");
    folder.MakeFolder("other");
    const auto getPlace = [&](const char* path) { return GetPlace(folder.GetPath(path)); };
    EXPECT_EQ(getPlace("in/file"), getPlace("in/../in/./file"));
    EXPECT_FALSE(getPlace("in/file") == getPlace("in/none"));
    EXPECT_FALSE(getPlace("in/file") == getPlace("other/file"));
    EXPECT_FALSE(getPlace("none/file") == getPlace("nothing/file"));
    EXPECT_EQ(GetPlace("file"), GetPlace("./file"));
    EXPECT_EQ(
        4U, (std::set{
                getPlace("in/a"), getPlace("in/b"), getPlace("other/a"), getPlace("none/a"),
                getPlace("in/a")}
                 .size()));
}

TEST(SystemFiles, APathIsInAFolderAtAnyDepthWhetherItExistsOrNot)
{
    const CTemporaryFolder folder;
    folder.Write("in/below/file", "");
    const std::string in = folder.GetPath("in");
    for (const char* path :
         {"in", "in/", "in/none", "in/none/at/all", "in/below", "in/below/file",
          "in/below/../none"})
        EXPECT_TRUE(IsInFolder(folder.GetPath(path), in)) << path;
    for (const char* path : {"", "none", "inner", "in/..", "in/../inner"})
        EXPECT_FALSE(IsInFolder(folder.GetPath(path), in)) << path;
    // Windows leaves out what a path goes up from without looking at it.
    EXPECT_EQ(IsWindows, IsInFolder(folder.GetPath("none/../in/none"), in));
    EXPECT_TRUE(IsInFolder("none", "."));
    EXPECT_TRUE(IsInFolder("none", ".."));
    EXPECT_FALSE(IsInFolder("none", in));
}

TEST(SystemFiles, AFolderIsReadUntilNobodyWantsMore)
{
    const CTemporaryFolder folder;
    EXPECT_EQ(std::vector<std::string>{}, ListFolder(folder.GetPath()));
    folder.Write("a", "");
    folder.Write("b/c", "");
    folder.Write(".d", "");
    EXPECT_EQ((std::vector<std::string>{".d", "a", "b/"}), ListFolder(folder.GetPath()));
    int count = 0;
    EXPECT_EQ("", ReadFolder(folder.GetPath(), [&](const SFolderEntry&) { return ++count < 2; }));
    EXPECT_EQ(2, count);
    EXPECT_NE("", ReadFolder(folder.GetPath("none"), [](const SFolderEntry&) { return true; }));
}

TEST(SystemFiles, FoldersAreCreatedWithThoseAbove)
{
    const CTemporaryFolder folder;
    const std::string path = folder.GetPath("a/b/c");
    EXPECT_EQ("", CreateFolders(path));
    EXPECT_TRUE(IsFolder(path));
    EXPECT_EQ("", CreateFolders(path));
    folder.Write("file", "");
    EXPECT_NE("", CreateFolders(folder.GetPath("file/below")));
}

TEST(SystemFiles, AFileTakesThePlaceOfAnother)
{
    const CTemporaryFolder folder;
    folder.Write("old", "old");
    folder.Write("new", "new");
    EXPECT_EQ("", RenameFile(folder.GetPath("new"), folder.GetPath("old")));
    EXPECT_EQ(std::vector<std::string>{"old"}, ListFolder(folder.GetPath()));
    EXPECT_EQ((Bytes{'n', 'e', 'w'}), folder.Read("old"));
    EXPECT_NE("", RenameFile(folder.GetPath("none"), folder.GetPath("old")));
    folder.MakeFolder("below");
    EXPECT_NE("", RenameFile(folder.GetPath("old"), folder.GetPath("below")));
    EXPECT_TRUE(RemoveFile(folder.GetPath("old")));
    EXPECT_FALSE(RemoveFile(folder.GetPath("old")));
    EXPECT_EQ(std::vector<std::string>{"below/"}, ListFolder(folder.GetPath()));
}

TEST(SystemFiles, NamesMayBeAnyUnicode)
{
    const CTemporaryFolder folder;
    const std::vector<std::string> names = {" a b", "$HOME `x` ;&#%", "'", "É", "日本語", "😀"};
    for (const std::string& name : names)
        WriteBytes(folder.GetPath(name), 3);
    EXPECT_EQ(names, ListFolder(folder.GetPath()));
    for (const std::string& name : names)
        EXPECT_EQ(3, GetPathStatus(folder.GetPath(name)).size) << name;
}

TEST(SystemFiles, PathsMayBeLong)
{
    const CTemporaryFolder folder;
    std::string path = folder.GetPath();
    for (int i = 0; i < 10; ++i)
        path += "/" + std::string(90, static_cast<char>('a' + i));
    ASSERT_EQ("", CreateFolders(path));
    EXPECT_TRUE(IsFolder(path));
    WriteBytes(path + "/new", 3);
    EXPECT_EQ("", RenameFile(path + "/new", path + "/../file"));
    EXPECT_EQ(3, GetPathStatus(path + "/../file").size);
    EXPECT_EQ(
        (std::vector<std::string>{"file", std::string(90, 'j') + "/"}), ListFolder(path + "/.."));
    EXPECT_TRUE(CRandomAccessFile::CanOpen(path + "/../file"));
    EXPECT_TRUE(RemoveFile(path + "/../file"));
}
