#include <filesystem>
#include <map>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Specific/FileSystem/SystemFiles.h"
#include "Support/CTemporaryFolder.h"

using namespace filesystem;
using testsupport::CTemporaryFolder;

namespace
{

struct SystemFilesPosix : testing::Test
{
    SystemFilesPosix()
    {
        folder.Write("below/file", "12345");
        std::filesystem::create_symlink("below/file", folder.GetPath("link"));
        std::filesystem::create_symlink("below", folder.GetPath("folder-link"));
        std::filesystem::create_symlink("nowhere", folder.GetPath("dangling"));
        std::filesystem::create_symlink("circle", folder.GetPath("circle"));
        EXPECT_EQ(0, mkfifo(folder.GetPath("fifo").c_str(), 0600));
    }

    EPathKind GetKind(const std::string& name) const
    {
        return GetPathStatus(folder.GetPath(name)).kind;
    }

    EPathKind GetOwnKind(const std::string& name) const
    {
        return GetLinkKind(folder.GetPath(name));
    }

    CTemporaryFolder folder;
};

} // namespace

TEST_F(SystemFilesPosix, LinksAreFollowedOrNot)
{
    EXPECT_EQ(EPathKind::File, GetKind("link"));
    EXPECT_EQ(5, GetPathStatus(folder.GetPath("link")).size);
    EXPECT_EQ(EPathKind::Folder, GetKind("folder-link"));
    EXPECT_EQ(EPathKind::Absent, GetKind("dangling"));
    for (const char* name : {"link", "folder-link", "dangling", "circle"})
        EXPECT_EQ(EPathKind::Link, GetOwnKind(name)) << name;
    EXPECT_EQ(EPathKind::Other, GetKind("fifo"));
    EXPECT_EQ(EPathKind::Other, GetOwnKind("fifo"));
    EXPECT_EQ(EPathKind::Other, GetPathStatus("/dev/null").kind);
}

TEST_F(SystemFilesPosix, WhatCannotBeToldHasAnError)
{
    const SPathStatus status = GetPathStatus(folder.GetPath("circle"));
    EXPECT_EQ(EPathKind::Unknown, status.kind);
    EXPECT_EQ("Too many levels of symbolic links", status.error);
    EXPECT_EQ("No such file or directory", GetPathStatus(folder.GetPath("none")).error);
    EXPECT_EQ(EPathKind::Unknown, GetLinkKind(std::string(10000, 'x')));
}

TEST_F(SystemFilesPosix, LinksAreResolved)
{
    std::string path = folder.GetPath("folder-link/file");
    EXPECT_EQ("", ResolveLinks(path));
    EXPECT_EQ(std::filesystem::canonical(folder.GetPath("below/file")), path);
    path = folder.GetPath("dangling");
    EXPECT_EQ("No such file or directory", ResolveLinks(path));
    EXPECT_TRUE(IsSameFile(folder.GetPath("link"), folder.GetPath("below/file")));
}

TEST_F(SystemFilesPosix, FoldersOfTwoFileSystemsAreNotTheSame)
{
    EXPECT_FALSE(IsSameFile("/", "/dev"));
    EXPECT_FALSE(IsSameFile("/", folder.GetPath("link")));
    EXPECT_FALSE(IsSameFile("/dev/null", "/dev/null")) << "neither file nor folder";
}

TEST_F(SystemFilesPosix, EntriesThatAreLinksSayWhereTheyLead)
{
    std::map<std::string, SFolderEntry> entries;
    ReadFolder(
        folder.GetPath(),
        [&](const SFolderEntry& entry)
        {
            entries[entry.name] = entry;
            return true;
        });
    EXPECT_EQ(6U, entries.size());
    EXPECT_TRUE(entries["link"].isLink);
    EXPECT_FALSE(entries["link"].isFolder);
    EXPECT_TRUE(entries["folder-link"].isLink);
    EXPECT_TRUE(entries["folder-link"].isFolder);
    EXPECT_TRUE(entries["dangling"].isLink);
    EXPECT_FALSE(entries["dangling"].isFolder);
    EXPECT_FALSE(entries["below"].isLink);
    EXPECT_TRUE(entries["below"].isFolder);
    EXPECT_FALSE(entries["fifo"].isFolder);
}
