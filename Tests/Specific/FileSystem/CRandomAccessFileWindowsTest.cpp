#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/CWindowsHandle.h"
#include "Specific/FileSystem/SystemFiles.h"
#include "Specific/FileSystem/WindowsPath.h"
#include "Support/CTemporaryFolder.h"

using filesystem::CRandomAccessFile;
using filesystem::CWindowsHandle;
using testsupport::Bytes;
using testsupport::CTemporaryFolder;

namespace
{

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct CRandomAccessFileWindows : testing::Test
{
    CRandomAccessFileWindows() { folder.Write("file", "0123456789"); }

    /// Opens the file as another program does.
    HANDLE OpenElsewhere(DWORD access, DWORD sharing) const
    {
        return CreateFileW(
            filesystem::MakeWindowsPath(path).c_str(), access, sharing, nullptr, OPEN_EXISTING, 0,
            nullptr);
    }

    CTemporaryFolder folder;
    const std::string path = folder.GetPath("file");
    CRandomAccessFile file;
};

std::int64_t GetWriteTime(const std::string& path)
{
    const CWindowsHandle file(CreateFileW(
        filesystem::MakeWindowsPath(path).c_str(), 0, ShareAll, nullptr, OPEN_EXISTING, 0,
        nullptr));
    FILETIME time = {};
    EXPECT_TRUE(GetFileTime(file.Get(), nullptr, nullptr, &time));
    return static_cast<std::int64_t>(
        static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

void WaitForAnotherTick()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
}

} // namespace

TEST_F(CRandomAccessFileWindows, ReadsAndWritesAtAnyPosition)
{
    ASSERT_TRUE(file.OpenToWrite(path));
    EXPECT_EQ(10, file.GetSize());
    char bytes[4] = {};
    EXPECT_EQ(4, file.Read(3, bytes, 4));
    EXPECT_EQ("3456", std::string(bytes, 4));
    EXPECT_EQ(2, file.Read(8, bytes, 4));
    EXPECT_EQ(0, file.Read(10, bytes, 4));
    EXPECT_TRUE(file.Write(4, "ab", 2));
    EXPECT_TRUE(file.Flush());
    file.Close();
    EXPECT_EQ((Bytes{'0', '1', '2', '3', 'a', 'b', '6', '7', '8', '9'}), folder.Read("file"));
}

TEST_F(CRandomAccessFileWindows, PositionsHave64Bits)
{
    constexpr std::int64_t pos = 5000000000;
    {
        // Sparse: it takes no room on the disk.
        const CWindowsHandle sparse(OpenElsewhere(GENERIC_WRITE, ShareAll));
        DWORD count;
        DeviceIoControl(sparse.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
    }
    ASSERT_TRUE(file.OpenToWrite(path));
    ASSERT_TRUE(file.Write(pos, "there", 5));
    ASSERT_TRUE(file.Open(path));
    EXPECT_EQ(pos + 5, file.GetSize());
    char bytes[8] = {};
    EXPECT_EQ(5, file.Read(pos, bytes, 8));
    EXPECT_EQ("there", std::string(bytes));
}

TEST_F(CRandomAccessFileWindows, OpeningChangesNothing)
{
    const std::int64_t time = GetWriteTime(path);
    ASSERT_TRUE(file.Open(path));
    const filesystem::SFileState before = file.GetState();
    file.Close();
    WaitForAnotherTick();
    ASSERT_TRUE(file.OpenToWrite(path));
    EXPECT_EQ(before, file.GetState());
    EXPECT_TRUE(file.IsUnchanged());
    file.Close();
    EXPECT_EQ(time, GetWriteTime(path));
}

TEST_F(CRandomAccessFileWindows, TheStateChangesWithBytesSizeAndFile)
{
    ASSERT_TRUE(file.Open(path));
    const filesystem::SFileState before = file.GetState();
    WaitForAnotherTick();
    folder.Write("file", "9876543210");
    EXPECT_FALSE(file.IsUnchanged());

    ASSERT_TRUE(file.Open(path));
    EXPECT_NE(before, file.GetState());
    EXPECT_EQ(before.inode, file.GetState().inode);
    EXPECT_EQ(before.device, file.GetState().device);
    folder.Write("other", "9876543210");
    file.Close(); // what is open is not replaced
    ASSERT_EQ("", filesystem::RenameFile(folder.GetPath("other"), path));
    CRandomAccessFile other;
    ASSERT_TRUE(other.Open(path));
    EXPECT_NE(before.inode, other.GetState().inode);
}

TEST_F(CRandomAccessFileWindows, TouchingSetsTheTimeOfModificationToNow)
{
    const std::int64_t before = GetWriteTime(path);
    WaitForAnotherTick();
    ASSERT_TRUE(file.OpenToWrite(path));
    EXPECT_TRUE(file.Touch());
    file.Close();
    EXPECT_GT(GetWriteTime(path), before);
    EXPECT_FALSE(file.Touch());
    EXPECT_FALSE(file.Flush());
    EXPECT_FALSE(file.Write(0, "a", 1));
}

TEST_F(CRandomAccessFileWindows, WhoeverReadsStandsInNobodysWay)
{
    ASSERT_TRUE(file.Open(path));
    EXPECT_TRUE(CWindowsHandle(OpenElsewhere(GENERIC_READ | GENERIC_WRITE, ShareAll)).IsOpen());
    CRandomAccessFile writer;
    EXPECT_TRUE(writer.OpenToWrite(path));
    EXPECT_FALSE(writer.IsBusy());
}

TEST_F(CRandomAccessFileWindows, NobodyElseWritesMeanwhile)
{
    ASSERT_TRUE(file.OpenToWrite(path));
    EXPECT_FALSE(CWindowsHandle(OpenElsewhere(GENERIC_WRITE, ShareAll)).IsOpen());
    EXPECT_TRUE(CWindowsHandle(OpenElsewhere(GENERIC_READ, ShareAll)).IsOpen());
    CRandomAccessFile other;
    EXPECT_FALSE(other.OpenToWrite(path));
    EXPECT_TRUE(other.IsBusy());
    file.Close();
    EXPECT_TRUE(other.OpenToWrite(path));
    EXPECT_FALSE(other.IsBusy());
}

TEST_F(CRandomAccessFileWindows, WhoeverHasTheFileToHimselfIsWaitedFor)
{
    const CWindowsHandle alone(OpenElsewhere(GENERIC_READ | GENERIC_WRITE, 0));
    ASSERT_TRUE(alone.IsOpen());
    EXPECT_FALSE(file.Open(path));
    EXPECT_TRUE(file.IsBusy());
    EXPECT_TRUE(CRandomAccessFile::CanOpen(path));
}

TEST_F(CRandomAccessFileWindows, ANewFileIsRenamedWhileItIsOpen)
{
    EXPECT_FALSE(file.Create(path));
    ASSERT_TRUE(file.Create(folder.GetPath("new")));
    EXPECT_TRUE(file.Write(0, "new", 3));
    EXPECT_EQ("", filesystem::RenameFile(folder.GetPath("new"), path));
    EXPECT_TRUE(file.Touch());
    file.Close();
    EXPECT_EQ((testsupport::FolderContents{{"file", {'n', 'e', 'w'}}}), folder.GetContents());
}

TEST_F(CRandomAccessFileWindows, WhatIsNoRegularFileIsRefusedWithoutWaiting)
{
    for (const std::string& other : {folder.GetPath(), std::string("NUL")})
    {
        EXPECT_FALSE(file.Open(other)) << other;
        EXPECT_TRUE(file.IsNotRegular()) << other;
        EXPECT_EQ("Not a regular file", file.GetError()) << other;
        EXPECT_FALSE(file.OpenToWrite(other)) << other;
        EXPECT_TRUE(file.IsNotRegular()) << other;
    }
    // Nobody is at the other end.
    const char* name = "\\\\.\\pipe\\zek-test";
    const CWindowsHandle pipe(CreateNamedPipeA(
        name, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_WAIT, 1, 512, 512, 0, nullptr));
    ASSERT_TRUE(pipe.IsOpen());
    EXPECT_FALSE(file.Open(name));
    EXPECT_TRUE(file.IsNotRegular());
}

TEST_F(CRandomAccessFileWindows, WhatCanBeOpenedIsThere)
{
    EXPECT_TRUE(CRandomAccessFile::CanOpen(path));
    for (const std::string& other :
         {folder.GetPath("missing"), folder.GetPath(), path + "/", std::string(),
          std::string("\xFF")})
        EXPECT_FALSE(CRandomAccessFile::CanOpen(other)) << other;
}

TEST(WindowsPath, TextComesBack)
{
    EXPECT_EQ(L"a\x65E5\xD83D\xDE00", filesystem::MakeWideText("a日😀"));
    EXPECT_EQ("a日😀", filesystem::MakeNarrowText(L"a\x65E5\xD83D\xDE00"));
    EXPECT_EQ(L"", filesystem::MakeWideText("\xFF"));
}

TEST(WindowsPath, OnlyLongPathsAreWrittenOut)
{
    EXPECT_EQ(L"a\\b", filesystem::MakeWindowsPath("a/b"));
    EXPECT_EQ(L"\\\\?\\C:\\a", filesystem::MakeWindowsPath("\\\\?\\C:/a"));
    const std::string name(200, 'n');
    const std::wstring wideName(name.begin(), name.end());
    EXPECT_EQ(
        L"\\\\?\\C:\\" + wideName + L"\\" + wideName,
        filesystem::MakeWindowsPath("C:/" + name + "/x/../" + name));
    EXPECT_EQ(
        L"\\\\?\\UNC\\server\\share\\" + wideName + L"\\" + wideName,
        filesystem::MakeWindowsPath("//server/share/" + name + "/" + name));
    EXPECT_EQ(0U, filesystem::MakeWindowsPath(name + "/" + name).find(L"\\\\?\\"));
}

TEST(WindowsPath, ARelativePathIsAsLongAsWhatItLeadsTo)
{
    constexpr std::size_t longestPlainPath = 247;
    const std::size_t folderSize = std::filesystem::current_path().native().size() + 1;
    const std::string name(longestPlainPath - folderSize, 'n');
    EXPECT_EQ(filesystem::MakeWideText(name), filesystem::MakeWindowsPath(name));
    EXPECT_EQ(0U, filesystem::MakeWindowsPath(name + "n").find(L"\\\\?\\"));
}

TEST(WindowsPath, ErrorsHaveWords)
{
    EXPECT_NE("", filesystem::MakeWindowsErrorText(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ("error 4294967280 of Windows", filesystem::MakeWindowsErrorText(4294967280U));
}
