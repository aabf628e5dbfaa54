#include "Specific/FileSystem/CFindFile.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "CTemporaryWorkingFolder.h"

using filesystem::CFindFile;
using testsupport::CountOpenDescriptors;
using testsupport::CTemporaryWorkingFolder;

namespace
{

/// Makes a file that exists but that nobody can open.
void MakeSocket(const char* name)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, name, sizeof(address.sun_path) - 1);
    const int socketDescriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(
        0, bind(socketDescriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)));
    close(socketDescriptor);
}

/// Lets go of the administrator's rights, which open every file, while the object lives.
class COrdinaryUser
{
public:
    COrdinaryUser() : m_Former(geteuid())
    {
        const uid_t nobody = 65534;
        EXPECT_EQ(0, m_Former == 0 ? seteuid(nobody) : 0);
    }

    ~COrdinaryUser() { EXPECT_EQ(0, seteuid(m_Former)); }

private:
    uid_t m_Former;
};

/// A folder with files and folders, some of them hidden as Unix hides them.
void FillFolder(const CTemporaryWorkingFolder& folder)
{
    folder.Write("folder/file.txt", "text");
    folder.Write("folder/.hidden", "text");
    folder.Write("folder/sub/file.txt", "text");
}

} // namespace

static_assert(std::has_virtual_destructor_v<CFindFile>);

TEST(CFindFile, ReadableFileExists)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    folder.Write("empty", "");
    folder.Write("a/b", "text");
    EXPECT_TRUE(CFindFile::IsExistFile("file"));
    EXPECT_TRUE(CFindFile::IsExistFile("empty"));
    EXPECT_TRUE(CFindFile::IsExistFile("a/b"));
    EXPECT_TRUE(CFindFile::IsExistFile(folder.GetPath("a/b")));
}

TEST(CFindFile, MissingFileDoesNotExist)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    std::filesystem::create_symlink("missing", "dangling");
    EXPECT_FALSE(CFindFile::IsExistFile("missing"));
    EXPECT_FALSE(CFindFile::IsExistFile("missing/file"));
    EXPECT_FALSE(CFindFile::IsExistFile("dangling"));
    EXPECT_FALSE(CFindFile::IsExistFile(""));
}

TEST(CFindFile, FileThatCannotBeOpenedDoesNotExist)
{
    const CTemporaryWorkingFolder folder;
    MakeSocket("socket");
    ASSERT_TRUE(std::filesystem::exists("socket"));
    EXPECT_FALSE(CFindFile::IsExistFile("socket"));
}

TEST(CFindFile, FileWithoutPermissionToReadDoesNotExist)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("readable", "text");
    folder.Write("secret", "text");
    ASSERT_EQ(0, chmod(".", 0755));
    ASSERT_EQ(0, chmod("readable", 0444));
    ASSERT_EQ(0, chmod("secret", 0000));
    const COrdinaryUser user;
    EXPECT_TRUE(CFindFile::IsExistFile("readable"));
    EXPECT_FALSE(CFindFile::IsExistFile("secret"));
}

TEST(CFindFile, FileNameIsTakenAsItIs)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("a/b", "text");
    folder.Write(R"(c\d)", "text");
    folder.Write(R"(Tarvelquinn\UserData\x)", "text");
    folder.Write("Tarvelquinn/UserData/x", "text");
    EXPECT_FALSE(CFindFile::IsExistFile(R"(a\b)"));
    EXPECT_TRUE(CFindFile::IsExistFile(R"(c\d)"));
    EXPECT_FALSE(CFindFile::IsExistFile("c/d"));
    EXPECT_FALSE(CFindFile::IsExistFile(R"(UserData\x)"));
}

TEST(CFindFile, IsExistFileAnswersAsAnInputFileStreamOpens)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    folder.MakeFolder("folder");
    MakeSocket("socket");
    std::filesystem::create_symlink("file", "link");
    std::filesystem::create_symlink("loop", "loop");
    const std::string zeroByteInside("file\0after", 10);
    for (const std::string& path :
         {std::string("file"), std::string("folder"), std::string("folder/"), std::string("."),
          std::string("socket"), std::string("link"), std::string("loop"), std::string("file/"),
          std::string("file/behind"), std::string("missing"), std::string(""),
          std::string("/dev/null"), std::string("/dev/full"), std::string(5000, 'a'),
          zeroByteInside})
        EXPECT_EQ(std::ifstream(path).is_open(), CFindFile::IsExistFile(path)) << path;
}

TEST(CFindFile, IsExistFileClosesTheFileAgain)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    const long descriptors = CountOpenDescriptors();
    EXPECT_TRUE(CFindFile::IsExistFile("file"));
    EXPECT_EQ(descriptors, CountOpenDescriptors());
}

TEST(CFindFile, IsExistFileLeavesTheFileAlone)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "text");
    const testsupport::FolderContents before = folder.GetContents();
    CFindFile::IsExistFile("file");
    CFindFile::IsExistFile("missing");
    EXPECT_EQ(before, folder.GetContents());
}

TEST(CFindFile, NoFolderExists)
{
    const CTemporaryWorkingFolder folder;
    folder.MakeFolder("folder");
    EXPECT_FALSE(CFindFile::IsExistDir("folder"));
    EXPECT_FALSE(CFindFile::IsExistDir(folder.GetPath()));
    EXPECT_FALSE(CFindFile::IsExistDir("."));
    EXPECT_FALSE(CFindFile::IsExistDir("/"));
    EXPECT_FALSE(CFindFile::IsExistDir("missing"));
    EXPECT_FALSE(CFindFile::IsExistDir(""));
}

TEST(CFindFile, NothingIsHidden)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    EXPECT_FALSE(CFindFile::IsHidden("folder/.hidden"));
    EXPECT_FALSE(CFindFile::IsHidden("folder/file.txt"));
    EXPECT_FALSE(CFindFile::IsHidden("missing"));
}

TEST(CFindFile, NothingBelongsToTheSystem)
{
    EXPECT_FALSE(CFindFile::IsSystem("/proc/version"));
    EXPECT_FALSE(CFindFile::IsSystem("/"));
    EXPECT_FALSE(CFindFile::IsSystem("missing"));
}

TEST(CFindFile, GetFirstFindsNoEntryAndLeavesTheName)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    CFindFile finder;
    std::string name = "before";
    EXPECT_FALSE(finder.GetFirst(R"(folder\*)", name));
    EXPECT_FALSE(finder.GetFirst("folder/*", name));
    EXPECT_FALSE(finder.GetFirst("*", name));
    EXPECT_EQ("before", name);
}

TEST(CFindFile, GetNextFindsNoEntryAndLeavesTheName)
{
    CFindFile finder;
    std::string name = "before";
    EXPECT_FALSE(finder.GetNext(name));
    finder.GetFirst("*", name);
    EXPECT_FALSE(finder.GetNext(name));
    EXPECT_EQ("before", name);
}

TEST(CFindFile, CloseAlwaysSucceeds)
{
    CFindFile finder;
    std::string name;
    EXPECT_TRUE(finder.Close());
    finder.GetFirst("*", name);
    EXPECT_TRUE(finder.Close());
    EXPECT_TRUE(finder.Close());
}

TEST(CFindFile, FileListIsEmpty)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    std::vector<std::string> names;
    CFindFile::GetFileList("folder", names);
    CFindFile::GetFileList(folder.GetPath("folder"), names);
    EXPECT_TRUE(names.empty());
}

TEST(CFindFile, FileListLeavesEntriesOfTheVectorAsTheyStand)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    std::vector<std::string> names{"b", "a"};
    CFindFile::GetFileList("folder", names);
    EXPECT_EQ((std::vector<std::string>{"b", "a"}), names);
}

TEST(CFindFile, FolderListAppendsNothing)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    std::vector<std::string> names{"b", "a"};
    CFindFile::GetFolderList("folder", names);
    EXPECT_EQ((std::vector<std::string>{"b", "a"}), names);
}

TEST(CFindFile, FileListWithinSubFoldersAppendsNothing)
{
    const CTemporaryWorkingFolder folder;
    FillFolder(folder);
    std::vector<std::string> paths{"b", "a"};
    CFindFile::GetFileListWithinSubFolder("folder", paths);
    EXPECT_EQ((std::vector<std::string>{"b", "a"}), paths);
}
