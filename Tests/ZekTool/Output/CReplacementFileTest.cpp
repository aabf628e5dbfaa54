#include "ZekTool/Output/CReplacementFile.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Support/CTemporaryFolder.h"

using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using testsupport::FolderContents;
using zektool::CReplacementFile;

namespace files = std::filesystem;

namespace
{

const Bytes Old = {'o', 'l', 'd'};
const Bytes New = {'n', 'e', 'w'};

bool Replace(const std::string& path)
{
    CReplacementFile file(path);
    return file.Create() && file.GetFile().Write(0, New.data(), 3) && file.Replace();
}

} // namespace

TEST(CReplacementFile, TakesItsPlaceAtLast)
{
    const CTemporaryFolder folder;
    folder.Write("file", Old);
    {
        CReplacementFile file(folder.GetPath("file"));
        ASSERT_TRUE(file.Create());
        ASSERT_TRUE(file.GetFile().Write(0, New.data(), 3));
        EXPECT_EQ(folder.Read("file"), Old);
        ASSERT_TRUE(file.Replace());
    }
    EXPECT_EQ(folder.GetContents(), (FolderContents{{"file", New}}));
}

TEST(CReplacementFile, IsRemovedWhenItDoesNot)
{
    const CTemporaryFolder folder;
    folder.Write("file", Old);
    {
        CReplacementFile file(folder.GetPath("file"));
        ASSERT_TRUE(file.Create());
        EXPECT_EQ(folder.GetContents().size(), 2u);
    }
    EXPECT_EQ(folder.GetContents(), (FolderContents{{"file", Old}}));
}

TEST(CReplacementFile, IsNotOlderThanItsFolderAndHasTheModeOfANewFile)
{
    const CTemporaryFolder folder;
    const std::string path = folder.GetPath("file");
    const mode_t mask = umask(027);
    EXPECT_TRUE(Replace(path));
    umask(mask);
    EXPECT_GE(files::last_write_time(path), files::last_write_time(folder.GetPath()));
    EXPECT_EQ(files::status(path).permissions(), files::perms(0640));
}

TEST(CReplacementFile, HasRoomForItsNameWhateverTheFileIsCalled)
{
    const CTemporaryFolder folder;
    const std::string longestName(255, 'n');
    EXPECT_TRUE(Replace(folder.GetPath(longestName)));
    EXPECT_EQ(folder.GetContents(), (FolderContents{{longestName, New}}));
}

TEST(CReplacementFile, ASymbolicLinkStays)
{
    const CTemporaryFolder folder;
    folder.Write("below/file", Old);
    files::create_symlink("below/file", folder.GetPath("link"));
    EXPECT_TRUE(Replace(folder.GetPath("link")));
    EXPECT_TRUE(files::is_symlink(folder.GetPath("link")));
    EXPECT_EQ(folder.GetContents().at("below/file"), New);

    files::create_symlink("missing", folder.GetPath("dangling"));
    CReplacementFile dangling(folder.GetPath("dangling"));
    EXPECT_FALSE(dangling.Create());
    EXPECT_EQ(dangling.GetError(), "No such file or directory");
}

TEST(CReplacementFile, WhatIsNoRegularFileIsNotReplaced)
{
    const CTemporaryFolder folder;
    folder.MakeFolder("below");
    ASSERT_EQ(mkfifo(folder.GetPath("fifo").c_str(), 0600), 0);
    files::create_symlink("/dev/null", folder.GetPath("null"));
    for (const std::string name : {"below", "fifo", "null"})
    {
        CReplacementFile file(folder.GetPath(name));
        EXPECT_FALSE(file.Create()) << name;
        EXPECT_EQ(file.GetError(), "Not a regular file") << name;
    }
    CReplacementFile missing(folder.GetPath("missing/file"));
    EXPECT_FALSE(missing.Create());
    EXPECT_EQ(missing.GetError(), "No such file or directory");
}

TEST(CReplacementFile, AFolderThatCameMeanwhileIsNotReplaced)
{
    const CTemporaryFolder folder;
    CReplacementFile file(folder.GetPath("file"));
    ASSERT_TRUE(file.Create());
    folder.MakeFolder("file");
    EXPECT_FALSE(file.Replace());
    EXPECT_EQ(file.GetError(), "Is a directory");
}
