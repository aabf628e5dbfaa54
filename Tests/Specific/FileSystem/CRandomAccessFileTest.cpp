#include "Specific/FileSystem/CRandomAccessFile.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "Support/CTemporaryFolder.h"

using filesystem::CRandomAccessFile;
using filesystem::SFileState;
using testsupport::Bytes;
using testsupport::CTemporaryFolder;

namespace files = std::filesystem;

namespace
{

class CRandomAccessFileTest : public testing::Test
{
protected:
    void SetUp() override { m_Folder.Write("file", "0123456789"); }

    SFileState GetState() const
    {
        CRandomAccessFile file;
        EXPECT_TRUE(file.Open(m_Path));
        return file.GetState();
    }

    static void WaitForAnotherTick() { std::this_thread::sleep_for(std::chrono::milliseconds(20)); }

    CTemporaryFolder m_Folder;
    const std::string m_Path = m_Folder.GetPath("file");
};

} // namespace

TEST_F(CRandomAccessFileTest, ReadsAtAnyPositionUpToTheEnd)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Path));
    EXPECT_EQ(file.GetSize(), 10);
    char bytes[4] = {};
    EXPECT_EQ(file.Read(3, bytes, 4), 4);
    EXPECT_EQ(std::string(bytes, 4), "3456");
    EXPECT_EQ(file.Read(8, bytes, 4), 2);
    EXPECT_EQ(file.Read(10, bytes, 4), 0);
}

TEST_F(CRandomAccessFileTest, WritesAtAnyPositionAndNothingElse)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.OpenToWrite(m_Path));
    EXPECT_TRUE(file.Write(4, "ab", 2));
    EXPECT_TRUE(file.Flush());
    char bytes[2] = {};
    EXPECT_EQ(file.Read(4, bytes, 2), 2);
    EXPECT_EQ(bytes[0], 'a');
    file.Close();
    EXPECT_EQ(m_Folder.Read("file"), Bytes({'0', '1', '2', '3', 'a', 'b', '6', '7', '8', '9'}));
}

TEST_F(CRandomAccessFileTest, OpeningToWriteChangesNothing)
{
    const SFileState before = GetState();
    WaitForAnotherTick();
    CRandomAccessFile file;
    ASSERT_TRUE(file.OpenToWrite(m_Path));
    EXPECT_EQ(file.GetState(), before);
    file.Close();
    EXPECT_EQ(GetState(), before);
}

TEST_F(CRandomAccessFileTest, AFileOpenToReadCannotBeWritten)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Path));
    EXPECT_FALSE(file.Write(0, "a", 1));
    EXPECT_EQ(file.GetError(), "Bad file descriptor");
}

TEST_F(CRandomAccessFileTest, AWriteThatFindsNoRoomFails)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.OpenToWrite(m_Path));
    EXPECT_FALSE(file.Write(-1, "a", 1));
    EXPECT_EQ(file.GetError(), "Invalid argument");
}

TEST_F(CRandomAccessFileTest, TheStateChangesWithBytesSizeModeAndFile)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Path));
    EXPECT_TRUE(file.IsUnchanged());
    EXPECT_EQ(file.GetState().size, 10);

    WaitForAnotherTick();
    m_Folder.Write("file", "0123456789");
    EXPECT_FALSE(file.IsUnchanged());

    const SFileState rewritten = GetState();
    WaitForAnotherTick();
    files::permissions(m_Path, files::perms(0600));
    EXPECT_NE(GetState(), rewritten);

    ASSERT_TRUE(file.Open(m_Path));
    m_Folder.Write("other", "0123456789");
    files::rename(m_Folder.GetPath("other"), m_Path);
    EXPECT_NE(GetState().inode, file.GetState().inode);
}

TEST_F(CRandomAccessFileTest, TouchingSetsTheTimeOfModificationToNow)
{
    files::last_write_time(m_Path, files::file_time_type::clock::now() - std::chrono::hours(1));
    const files::file_time_type before = files::last_write_time(m_Path);
    CRandomAccessFile file;
    ASSERT_TRUE(file.OpenToWrite(m_Path));
    EXPECT_TRUE(file.Touch());
    EXPECT_GT(files::last_write_time(m_Path), before + std::chrono::minutes(59));

    file.Close();
    EXPECT_FALSE(file.Touch());
    EXPECT_EQ(file.GetError(), "Bad file descriptor");
    EXPECT_FALSE(file.Flush());
}

TEST_F(CRandomAccessFileTest, OnlyAFileThatIsNotThereIsCreated)
{
    CRandomAccessFile file;
    EXPECT_FALSE(file.Create(m_Path));
    EXPECT_EQ(file.GetError(), "File exists");
    EXPECT_TRUE(file.Create(m_Folder.GetPath("new")));
    EXPECT_TRUE(file.Write(2, "a", 1));
    EXPECT_EQ(m_Folder.Read("new"), Bytes({0, 0, 'a'}));
}

TEST_F(CRandomAccessFileTest, WhatIsNoRegularFileIsRefusedWithoutWaiting)
{
    const std::string fifo = m_Folder.GetPath("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    CRandomAccessFile file;
    for (const std::string& path : {fifo, std::string("/dev/null")})
    {
        SCOPED_TRACE(path);
        EXPECT_FALSE(file.Open(path));
        EXPECT_EQ(file.GetError(), "Not a regular file");
        EXPECT_FALSE(file.OpenToWrite(path));
        EXPECT_EQ(file.GetError(), "Not a regular file");
    }
    EXPECT_FALSE(file.Open(m_Folder.GetPath()));
    EXPECT_EQ(file.GetError(), "Not a regular file");
    EXPECT_FALSE(file.Open(m_Folder.GetPath("missing")));
    EXPECT_EQ(file.GetError(), "No such file or directory");
}

TEST_F(CRandomAccessFileTest, AFileThatBecomesShorterKeepsItsSizeAndGivesWhatIsLeft)
{
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Path));
    files::resize_file(m_Path, 4);
    EXPECT_EQ(file.GetSize(), 10);
    char bytes[8] = {};
    EXPECT_EQ(file.Read(2, bytes, 5), 2);
    EXPECT_EQ(std::string(bytes), "23");
    EXPECT_EQ(file.Read(5, bytes, 5), 0);
}

TEST_F(CRandomAccessFileTest, PathsAreTakenAsTheyAre)
{
    m_Folder.Write("a\\b", "backslash");
    m_Folder.Write("UserData\\c", "prefix");
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Folder.GetPath("a\\b")));
    EXPECT_EQ(file.GetSize(), 9);
    ASSERT_TRUE(file.Open(m_Folder.GetPath("UserData\\c")));
    EXPECT_EQ(file.GetSize(), 6);
}

TEST_F(CRandomAccessFileTest, WhatWasOpenIsClosed)
{
    const auto countOpenFiles = []
    { return std::distance(files::directory_iterator("/proc/self/fd"), {}); };
    const auto before = countOpenFiles();
    char byte;
    {
        CRandomAccessFile file;
        ASSERT_TRUE(file.Open(m_Path));
        ASSERT_TRUE(file.Open(m_Path));
        EXPECT_EQ(countOpenFiles(), before + 1);
        EXPECT_FALSE(file.Open(m_Folder.GetPath()));
        EXPECT_EQ(countOpenFiles(), before);
        ASSERT_TRUE(file.Open(m_Path));
        file.Close();
        file.Close();
        EXPECT_EQ(countOpenFiles(), before);
        EXPECT_EQ(file.Read(0, &byte, 1), 0);
        ASSERT_TRUE(file.Open(m_Path));
    }
    EXPECT_EQ(countOpenFiles(), before);
}

TEST_F(CRandomAccessFileTest, PositionsHave64Bits)
{
    // Sparse: it takes no room on the disk.
    constexpr std::int64_t pos = 5000000000;
    std::ofstream stream(m_Path, std::ios::binary);
    stream.seekp(pos);
    stream << "there";
    stream.close();
    if (!stream)
        GTEST_SKIP() << "the file system does not take a sparse file of 5 GB";
    CRandomAccessFile file;
    ASSERT_TRUE(file.Open(m_Path));
    EXPECT_EQ(file.GetSize(), pos + 5);
    char bytes[8] = {};
    EXPECT_EQ(file.Read(pos, bytes, 8), 5);
    EXPECT_EQ(std::string(bytes), "there");
}

TEST_F(CRandomAccessFileTest, WhatCanBeOpenedIsWhatCanBeReadFileOrNot)
{
    const std::string fifo = m_Folder.GetPath("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {m_Path, m_Folder.GetPath(), fifo, std::string("/dev/null")})
        EXPECT_TRUE(CRandomAccessFile::CanOpen(path)) << path;
    for (const std::string& path : {m_Folder.GetPath("missing"), m_Path + "/", std::string()})
        EXPECT_FALSE(CRandomAccessFile::CanOpen(path)) << path;

    const int endpoint = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {AF_UNIX, {}};
    m_Folder.GetPath("socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
    ASSERT_EQ(bind(endpoint, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_FALSE(CRandomAccessFile::CanOpen(m_Folder.GetPath("socket")));
    close(endpoint);
}

TEST_F(CRandomAccessFileTest, WhenNoDescriptorIsLeftNobodyIsToldThatNothingCanBeOpened)
{
    const int next = dup(0);
    close(next);
    rlimit old;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &old), 0);
    const rlimit none = {static_cast<rlim_t>(next), old.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW(CRandomAccessFile::CanOpen(m_Path), std::system_error);
    EXPECT_THROW(CRandomAccessFile::CanOpen(m_Folder.GetPath("missing")), std::system_error);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &old), 0);
    EXPECT_TRUE(CRandomAccessFile::CanOpen(m_Path));
}

#if defined(F_SETLEASE) && defined(F_SETSIG)
TEST_F(CRandomAccessFileTest, AFileThatSomebodyHasALeaseOnCanBeOpened)
{
    const int owner = open(m_Path.c_str(), O_RDWR);
    if (fcntl(owner, F_SETSIG, SIGURG) != 0 || fcntl(owner, F_SETLEASE, F_WRLCK) != 0)
        GTEST_SKIP() << "the file system gives no leases";
    EXPECT_TRUE(CRandomAccessFile::CanOpen(m_Path));
    close(owner);
}

TEST_F(CRandomAccessFileTest, WhoOpensAFileToWriteHasItAloneIfNobodyElseHasItOpen)
{
    CRandomAccessFile writer;
    ASSERT_TRUE(writer.OpenToWrite(m_Path));
    if (writer.IsBusy())
        GTEST_SKIP() << "the file system gives no leases";
    CRandomAccessFile other;
    EXPECT_FALSE(other.Open(m_Path));
    EXPECT_TRUE(other.IsBusy());
    writer.Close();
    EXPECT_TRUE(other.Open(m_Path));
    EXPECT_FALSE(other.IsBusy());

    EXPECT_TRUE(writer.OpenToWrite(m_Path));
    EXPECT_TRUE(writer.IsBusy());
    EXPECT_TRUE(writer.Write(0, "a", 1));
    EXPECT_FALSE(other.Open(m_Folder.GetPath("missing")));
    EXPECT_FALSE(other.IsBusy());
}
#endif
