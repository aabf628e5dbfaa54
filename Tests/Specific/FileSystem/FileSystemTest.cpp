#include "Specific/FileSystem/FileSystem.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "CTemporaryWorkingFolder.h"

using testsupport::CTemporaryWorkingFolder;
using testsupport::FolderContents;

namespace
{

bool IsEmptyFolder(const std::string& path)
{
    return std::filesystem::is_empty(path);
}

} // namespace

TEST(FileSystem, DelFileFailsAndDeletesNothing)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    EXPECT_FALSE(filesystem::DelFile("file"));
    EXPECT_FALSE(filesystem::DelFile(folder.GetPath("file")));
    EXPECT_FALSE(filesystem::DelFile("missing"));
    EXPECT_TRUE(std::filesystem::exists("file"));
}

TEST(FileSystem, CopyOneFileSucceedsAndCopiesNothing)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("source", "text");
    folder.Write("old", "old text");
    const FolderContents before = folder.GetContents();
    EXPECT_TRUE(filesystem::CopyOneFile("new", "source"));
    EXPECT_TRUE(filesystem::CopyOneFile("old", "source"));
    EXPECT_TRUE(filesystem::CopyOneFile("new", "missing"));
    EXPECT_EQ(before, folder.GetContents());
}

TEST(FileSystem, CurrentFolderNameIsEmpty)
{
    const CTemporaryWorkingFolder folder;
    EXPECT_EQ("", filesystem::GetCurrentFolderName());
}

TEST(FileSystem, CreateFolderSucceedsAndCreatesNothing)
{
    const CTemporaryWorkingFolder folder;
    EXPECT_TRUE(filesystem::CreateFolder(R"(a\b\c)"));
    EXPECT_TRUE(filesystem::CreateFolder("a/b/c"));
    EXPECT_TRUE(filesystem::CreateFolder(folder.GetPath("a/b")));
    EXPECT_TRUE(filesystem::CreateFolder(R"(C:\)"));
    EXPECT_TRUE(filesystem::CreateFolder("/"));
    EXPECT_TRUE(filesystem::CreateFolder(""));
    EXPECT_TRUE(IsEmptyFolder("."));
}

TEST(FileSystem, DeleteFolderSucceedsAndRemovesNothing)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("folder/file", "text");
    folder.MakeFolder("empty");
    const FolderContents before = folder.GetContents();
    EXPECT_TRUE(filesystem::DeleteFolder("folder"));
    EXPECT_TRUE(filesystem::DeleteFolder("empty"));
    EXPECT_TRUE(filesystem::DeleteFolder("missing"));
    EXPECT_EQ(before, folder.GetContents());
    EXPECT_TRUE(std::filesystem::exists("empty"));
}

TEST(FileSystem, CopyFolderFailsAndCopiesNothing)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("source/file", "text");
    EXPECT_FALSE(filesystem::CopyFolder("new", "source"));
    EXPECT_FALSE(filesystem::CopyFolder("new", "missing"));
    EXPECT_FALSE(std::filesystem::exists("new"));
}
