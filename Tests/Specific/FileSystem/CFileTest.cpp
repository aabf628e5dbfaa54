#include "Specific/FileSystem/CFile.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "CTemporaryWorkingFolder.h"
#include "Specific/FileSystem/CFileBuffer.h"
#include "Support/Bytes.h"
#include "Support/CStreamFault.h"
#include "Support/Heap.h"

using filesystem::CFile;
using testsupport::Bytes;
using testsupport::CAllocationWatch;
using testsupport::CountOpenDescriptors;
using testsupport::CStreamFault;
using testsupport::CTemporaryWorkingFolder;
using testsupport::FolderContents;
using testsupport::ToText;
using namespace std::string_literals;

namespace
{

constexpr unsigned int NoLimit = 4294967295u;
constexpr std::uintmax_t Gibibyte = 1024u * 1024u * 1024u;
constexpr auto FourGibibytes = static_cast<std::size_t>(4 * Gibibyte); // 0 in 32 bits

/// More than a stream's buffer holds, so that the bytes go to and from the file at once.
constexpr std::size_t LargeSize = 1024u * 1024u;

constexpr const char* HowToTestLargeFiles = "set ZEK_TEST_LARGE_FILES to run it in 64 bits";

bool AreLargeFilesTested()
{
    return sizeof(void*) > 4 && std::getenv("ZEK_TEST_LARGE_FILES") != nullptr;
}

/// Bytes that differ from place to place.
Bytes MakePattern(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<unsigned char>(i * 7 + i / 256);
    return bytes;
}

/// Makes a file of zero bytes that take no room on the disk.
void MakeSparseFile(
    const CTemporaryWorkingFolder& folder, const std::string& name, std::uintmax_t size)
{
    folder.Write(name, "");
    std::filesystem::resize_file(folder.GetPath(name), size);
}

/// Makes a file that takes bytes only until a buffer goes to the disk.
void MakeFullFile(const std::string& name)
{
    std::filesystem::create_symlink("/dev/full", name);
}

/// Reads size bytes as text, or gives "(failed)".
std::string ReadText(CFile& file, int size)
{
    std::string text(static_cast<std::size_t>(size), '?');
    return file.Read(text.data(), size) ? text : "(failed)";
}

/// Writes a text of characters.
bool WriteText(CFile& file, const std::string& text)
{
    return file.Write(text.data(), static_cast<int>(text.length()));
}

/// What one ReadString did.
struct SReadString
{
    bool isRead;
    std::string text;
    unsigned int position;
};

bool operator==(const SReadString& a, const SReadString& b)
{
    return a.isRead == b.isRead && a.text == b.text && a.position == b.position;
}

void PrintTo(const SReadString& result, std::ostream* stream)
{
    *stream << (result.isRead ? "true, " : "false, ") << testing::PrintToString(result.text)
            << " at " << result.position;
}

SReadString ReadString(CFile& file)
{
    std::string text = "before";
    const bool isRead = file.ReadString(text);
    return {isRead, text, file.GetPos()};
}

/// The first ReadString of a file of these bytes.
SReadString ReadStringOver(const std::string& bytes)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", bytes);
    CFile file;
    EXPECT_TRUE(file.Open("text"));
    return ReadString(file);
}

/// Expects ReadImage to refuse a file before it takes memory, and to leave the vector alone.
void ExpectReadImageRefuses(const std::string& name)
{
    Bytes image{1, 2, 3};
    const unsigned char* data = image.data();
    std::size_t largestAllocation = 0;
    bool isRead;
    {
        const CAllocationWatch watch([&](std::size_t size)
                                     { largestAllocation = std::max(largestAllocation, size); });
        isRead = CFile::ReadImage(image, name);
    }
    EXPECT_FALSE(isRead) << name;
    EXPECT_EQ((Bytes{1, 2, 3}), image) << name;
    EXPECT_EQ(data, image.data()) << name;
    EXPECT_LT(largestAllocation, LargeSize) << name;
}

} // namespace

static_assert(std::has_virtual_destructor_v<CFile>);
static_assert(!std::is_copy_constructible_v<CFile> && !std::is_copy_assignable_v<CFile>);

TEST(CFile, StartsClosedWithPositionAndSizeZero)
{
    CFile file;
    char byte = '?';
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ(0u, file.GetSize());
    EXPECT_FALSE(file.Read(&byte, 0));
    EXPECT_FALSE(file.Write(&byte, 0));
    EXPECT_FALSE(file.SetPos(0));
}

TEST(CFile, OpenGivesPositionZeroAndTheSizeOfTheFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ(10u, file.GetSize());
    EXPECT_EQ("0123456789", ReadText(file, 10));
}

TEST(CFile, OpenOfAMissingFileFailsAndClosesTheFileBefore)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    const long descriptors = CountOpenDescriptors();
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_FALSE(file.Open("missing"));
    EXPECT_EQ(descriptors, CountOpenDescriptors());
    EXPECT_EQ("(failed)", ReadText(file, 1));
    EXPECT_FALSE(std::filesystem::exists("missing"));
}

TEST(CFile, OpenClosesTheFileBefore)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("first", "first");
    folder.Write("second", "second");
    const long descriptors = CountOpenDescriptors();
    CFile file;
    EXPECT_TRUE(file.Open("first"));
    EXPECT_EQ("fir", ReadText(file, 3));
    EXPECT_TRUE(file.Open("second"));
    EXPECT_EQ(descriptors + 1, CountOpenDescriptors());
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ(6u, file.GetSize());
    EXPECT_EQ("second", ReadText(file, 6));
}

TEST(CFile, OpenReadsABackslashAsASlash)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("a/b/c.bin", "slash");
    folder.Write(R"(a\b\c.bin)", "backslash");
    CFile file;
    EXPECT_TRUE(file.Open(R"(a\b\c.bin)"));
    EXPECT_EQ("slash", ReadText(file, 5));
    EXPECT_TRUE(file.Open(R"(a\b/c.bin)"));
    EXPECT_EQ("slash", ReadText(file, 5));
}

TEST(CFile, OpenReadsEvenATrailByteOfABackslashAsASlash)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("\x95/.bin", "slash");
    folder.Write("\x95\x5C.bin", "two-byte character");
    CFile file;
    EXPECT_TRUE(file.Open("\x95\x5C.bin"));
    EXPECT_EQ("slash", ReadText(file, 5));
}

TEST(CFile, OpenDoesNotTranslateTheLogicalPrefixes)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("UserData/x.dat", "own");
    folder.Write("Setting/x.dat", "set");
    folder.Write("Tarvelquinn/UserData/x.dat", "translated");
    folder.Write(R"(Tarvelquinn\UserData\x.dat)", "translated");
    CFile file;
    EXPECT_TRUE(file.Open(R"(UserData\x.dat)"));
    EXPECT_EQ("own", ReadText(file, 3));
    EXPECT_TRUE(file.Open(R"(Setting\x.dat)"));
    EXPECT_EQ("set", ReadText(file, 3));
}

TEST(CFile, OpenOfAStreamWithoutPositionsFailsAndLeavesItOpen)
{
    const CTemporaryWorkingFolder folder;
    ASSERT_EQ(0, mkfifo("pipe", 0600));
    const int otherEnd = open("pipe", O_RDWR);
    CFile file;
    char byte = '?';
    EXPECT_FALSE(file.Open("pipe"));
    EXPECT_TRUE(file.Read(&byte, 0));
    EXPECT_FALSE(file.Read(&byte, 1));
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.Read(&byte, 0));
    close(otherEnd);
}

TEST(CFile, OpenWhoseSeekToTheEndFailsLeavesTheStreamOpen)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    const CStreamFault fault("fseeko", 1);
    EXPECT_FALSE(file.Open("ten"));
    EXPECT_TRUE(file.Read(nullptr, 0));
}

TEST(CFile, OpenWhoseSeekBackToTheStartFailsLeavesTheStreamOpen)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    const CStreamFault fault("fseeko", 2);
    EXPECT_FALSE(file.Open("ten"));
    EXPECT_TRUE(file.Read(nullptr, 0));
}

TEST(CFile, OpenOfAFileWhoseSizeCannotBeFoundOutFailsAndLeavesTheStreamOpen)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    const CStreamFault fault("ftello", 1);
    EXPECT_FALSE(file.Open("ten"));
    EXPECT_EQ(0u, file.GetSize());
    EXPECT_TRUE(file.Read(nullptr, 0));
}

TEST(CFile, SizeOfAFileOver32BitsIsCut)
{
    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "large", 4 * Gibibyte + 5);
    CFile file;
    EXPECT_TRUE(file.Open("large"));
    EXPECT_EQ(5u, file.GetSize());
}

TEST(CFile, LargestSizeIsOneBelow4GiB)
{
    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "large", 4 * Gibibyte - 1);
    CFile file;
    EXPECT_TRUE(file.Open("large"));
    EXPECT_EQ(4294967295u, file.GetSize());
    EXPECT_TRUE(file.SetPos(4294967294u));
    EXPECT_EQ("\0"s, ReadText(file, 1));
    EXPECT_EQ(4294967295u, file.GetPos());
}

TEST(CFile, CreateGivesPositionZeroAndNoLimitOfSize)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ(4294967295u, file.GetSize());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ((FolderContents{{"new", {}}}), folder.GetContents());
}

TEST(CFile, CreateEmptiesAnExistingFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("old", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Create("old"));
    EXPECT_TRUE(WriteText(file, "ab"));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("ab", ToText(folder.Read("old")));
}

TEST(CFile, CreateClosesTheFileBefore)
{
    const CTemporaryWorkingFolder folder;
    const long descriptors = CountOpenDescriptors();
    CFile file;
    EXPECT_TRUE(file.Create("first"));
    EXPECT_TRUE(WriteText(file, "first"));
    EXPECT_TRUE(file.Create("second"));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ(descriptors + 1, CountOpenDescriptors());
    EXPECT_EQ("first", ToText(folder.Read("first")));
}

TEST(CFile, CreateInAMissingFolderFailsAndLeavesNothingOpen)
{
    const CTemporaryWorkingFolder folder;
    const long descriptors = CountOpenDescriptors();
    CFile file;
    EXPECT_TRUE(file.Create("first"));
    EXPECT_FALSE(file.Create("missing/new"));
    EXPECT_EQ(descriptors, CountOpenDescriptors());
    EXPECT_FALSE(WriteText(file, "a"));
    EXPECT_TRUE(file.Close());
}

TEST(CFile, CreateKeepsABackslashInTheName)
{
    const CTemporaryWorkingFolder folder;
    folder.MakeFolder("a");
    CFile file;
    EXPECT_TRUE(file.Create(R"(a\b.bin)"));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ((FolderContents{{R"(a\b.bin)", {}}}), folder.GetContents());
}

TEST(CFile, CreateKeepsATwoByteCharacterInTheName)
{
    const CTemporaryWorkingFolder folder;
    folder.MakeFolder("\x95");
    CFile file;
    EXPECT_TRUE(file.Create("\x95\x5C.bin"));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ((FolderContents{{"\x95\x5C.bin", {}}}), folder.GetContents());
}

TEST(CFile, CreateTranslatesTheLogicalPrefixes)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create(R"(UserData\x.dat)"));
    EXPECT_TRUE(file.Create(R"(Setting\x.dat)"));
    EXPECT_TRUE(file.Close());
    const FolderContents expected{
        {R"(Tarvelquinn\Setting\x.dat)", {}}, {R"(Tarvelquinn\UserData\x.dat)", {}}};
    EXPECT_EQ(expected, folder.GetContents());
}

TEST(CFile, CloseWithoutAnOpenFileSucceeds)
{
    CFile file;
    EXPECT_TRUE(file.Close());
    EXPECT_TRUE(file.Close());
}

TEST(CFile, CloseKeepsPositionAndSize)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ("012", ReadText(file, 3));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(3u, file.GetPos());
    EXPECT_EQ(10u, file.GetSize());
}

TEST(CFile, NothingWorksOnAClosedFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("(failed)", ReadText(file, 1));
    EXPECT_FALSE(WriteText(file, "a"));
    EXPECT_FALSE(file.SetPos(1));
    EXPECT_FALSE(file.StepWritePos(1));
    EXPECT_FALSE(file.WritePosDWORD(0, 1));
    EXPECT_FALSE(file.WriteString("a", false));
    EXPECT_FALSE(file.WriteString("", true));
    EXPECT_FALSE(file.WriteByte(1));
    EXPECT_EQ((SReadString{false, "", 0}), ReadString(file));
}

TEST(CFile, StreamThatCouldNotBeClosedIsGone)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    const long descriptors = CountOpenDescriptors();
    {
        CFile file;
        EXPECT_TRUE(file.Create("full"));
        EXPECT_TRUE(WriteText(file, "buffered"));
        EXPECT_FALSE(file.Close());
        EXPECT_EQ(descriptors, CountOpenDescriptors());
        EXPECT_EQ("(failed)", ReadText(file, 1));
        EXPECT_FALSE(WriteText(file, "a"));
        EXPECT_TRUE(file.Close());
    }
    EXPECT_EQ(descriptors, CountOpenDescriptors());
}

TEST(CFile, StreamThatCouldNotBeClosedIsNotClosedAgainByTheDestructor)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_TRUE(WriteText(file, "buffered"));
    EXPECT_FALSE(file.Close());
}

TEST(CFile, CanBeUsedAgainAfterACloseThatFailed)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_TRUE(WriteText(file, "buffered"));
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ("0123456789", ReadText(file, 10));
}

TEST(CFile, DestructorClosesTheFile)
{
    const CTemporaryWorkingFolder folder;
    const long descriptors = CountOpenDescriptors();
    {
        CFile file;
        EXPECT_TRUE(file.Create("new"));
        EXPECT_TRUE(WriteText(file, "text"));
    }
    EXPECT_EQ(descriptors, CountOpenDescriptors());
    EXPECT_EQ("text", ToText(folder.Read("new")));
}

TEST(CFile, ReadTakesBytesFromThePositionAndMovesIt)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("bytes", "a\0\r\nb"s);
    CFile file;
    EXPECT_TRUE(file.Open("bytes"));
    EXPECT_EQ("a\0"s, ReadText(file, 2));
    EXPECT_EQ(2u, file.GetPos());
    EXPECT_EQ("\r\nb", ReadText(file, 3));
    EXPECT_EQ(5u, file.GetPos());
}

TEST(CFile, ReadOfTheWholeFileSucceedsAndOfOneMoreFails)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ("(failed)", ReadText(file, 11));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ("0123456789", ReadText(file, 10));
    EXPECT_EQ(10u, file.GetPos());
}

TEST(CFile, ReadPastTheSizeTouchesNeitherTheStreamNorTheDestination)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ("012", ReadText(file, 3));
    std::string text = "unchanged";
    EXPECT_FALSE(file.Read(text.data(), 8));
    EXPECT_EQ("unchanged", text);
    EXPECT_EQ(3u, file.GetPos());
    EXPECT_EQ("3456789", ReadText(file, 7));
}

TEST(CFile, ReadOfNoBytesSucceedsAtTheEndEvenToNowhere)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("one", "a");
    CFile file;
    EXPECT_TRUE(file.Open("one"));
    EXPECT_EQ("a", ReadText(file, 1));
    EXPECT_EQ("", ReadText(file, 0));
    EXPECT_TRUE(file.Read(nullptr, 0));
    EXPECT_EQ(1u, file.GetPos());
}

TEST(CFile, NegativeSizeOfAReadIsTakenAsItsUnsignedBits)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    std::string text = "unchanged by reading";
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_FALSE(file.Read(text.data(), -1));
    EXPECT_FALSE(file.Read(text.data(), std::numeric_limits<int>::min()));
    EXPECT_EQ("unchanged by reading", text);
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_EQ("0123456789", ReadText(file, 10));
}

TEST(CFile, ReadDoesNotWrapAroundTheEndOf32Bits)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    std::string text = "unchanged by reading";
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_EQ("01", ReadText(file, 2));
    EXPECT_FALSE(file.Read(text.data(), -1));
    EXPECT_FALSE(file.Read(text.data(), -2));
    EXPECT_EQ("unchanged by reading", text);
    EXPECT_EQ(2u, file.GetPos());
    EXPECT_EQ("23456789", ReadText(file, 8));
}

TEST(CFile, ReadThatTheSystemCutsShortFailsAndKeepsThePosition)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("shrinking", MakePattern(LargeSize));
    CFile file;
    EXPECT_TRUE(file.Open("shrinking"));
    std::filesystem::resize_file("shrinking", LargeSize / 2);
    EXPECT_EQ("(failed)", ReadText(file, static_cast<int>(LargeSize)));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, ReadFromAFileOpenForWritingFails)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "abc"));
    EXPECT_TRUE(file.SetPos(0));
    EXPECT_EQ("(failed)", ReadText(file, 1));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, WriteAppendsBytesAndMovesThePosition)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "a\0\n"s));
    EXPECT_EQ(3u, file.GetPos());
    EXPECT_TRUE(WriteText(file, "\r\n"));
    EXPECT_EQ(5u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("a\0\n\r\n"s, ToText(folder.Read("new")));
}

TEST(CFile, WriteLeavesTheSizeAlone)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "abc"));
    EXPECT_EQ(NoLimit, file.GetSize());
}

TEST(CFile, WriteOfNoBytesSucceedsEvenFromNowhere)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, ""));
    EXPECT_TRUE(file.Write(nullptr, 0));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, WriteToAFullDiskFailsAndKeepsThePosition)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    const Bytes bytes = MakePattern(LargeSize);
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_FALSE(file.Write(bytes.data(), static_cast<int>(bytes.size())));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, WriteToAFileOpenForReadingFailsAndKeepsThePosition)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_FALSE(WriteText(file, "abc"));
    EXPECT_EQ(0u, file.GetPos());
    file.Close();
    EXPECT_EQ("0123456789", ToText(folder.Read("ten")));
}

TEST(CFile, NegativeSizeOfAWriteIsTakenAsItsUnsignedBits)
{
    // Address space without memory behind it, written to where nobody looks at it.
    void* bytes =
        mmap(nullptr, NoLimit, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (bytes == MAP_FAILED)
        GTEST_SKIP() << "There are no 4 GiB of addresses in one piece here.";
    const CTemporaryWorkingFolder folder;
    std::filesystem::create_symlink("/dev/null", "null");
    CFile file;
    EXPECT_TRUE(file.Create("null"));
    EXPECT_TRUE(file.Write(bytes, -1));
    EXPECT_EQ(4294967295u, file.GetPos());
    munmap(bytes, NoLimit);
}

TEST(CFile, SetPosReachesTheLastByteButNotTheEnd)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_TRUE(file.SetPos(9));
    EXPECT_EQ(9u, file.GetPos());
    EXPECT_FALSE(file.SetPos(10));
    EXPECT_FALSE(file.SetPos(NoLimit));
    EXPECT_EQ(9u, file.GetPos());
    EXPECT_EQ("9", ReadText(file, 1));
}

TEST(CFile, SetPosMovesBackAndForth)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_TRUE(file.SetPos(7));
    EXPECT_EQ("78", ReadText(file, 2));
    EXPECT_TRUE(file.SetPos(0));
    EXPECT_EQ("01", ReadText(file, 2));
    EXPECT_EQ(2u, file.GetPos());
}

TEST(CFile, SetPosOfAnEmptyFileFails)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("empty", "");
    CFile file;
    EXPECT_TRUE(file.Open("empty"));
    EXPECT_FALSE(file.SetPos(0));
}

TEST(CFile, SetPosGoesBeyond2GiB)
{
    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "large", 3 * Gibibyte);
    CFile file;
    EXPECT_TRUE(file.Open("large"));
    EXPECT_TRUE(file.SetPos(3221225471u));
    EXPECT_EQ(3221225471u, file.GetPos());
    EXPECT_EQ("\0"s, ReadText(file, 1));
    EXPECT_FALSE(file.SetPos(3221225472u));
}

TEST(CFile, SetPosInAFileOpenForWritingLetsBytesBeOverwritten)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "0123456789"));
    EXPECT_TRUE(file.SetPos(2));
    EXPECT_TRUE(WriteText(file, "ab"));
    EXPECT_EQ(4u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("01ab456789", ToText(folder.Read("new")));
}

TEST(CFile, SetPosInAFileOpenForWritingRefusesOnlyTheLargestPosition)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_FALSE(file.SetPos(4294967295u));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_TRUE(file.SetPos(4294967294u));
    EXPECT_EQ(4294967294u, file.GetPos());
}

TEST(CFile, SetPosThatTheSystemRefusesFailsAndKeepsThePosition)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_TRUE(WriteText(file, "buffered"));
    EXPECT_FALSE(file.SetPos(3));
    EXPECT_EQ(8u, file.GetPos());
}

TEST(CFile, StepWritePosWritesZeroBytes)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "a"));
    EXPECT_TRUE(file.StepWritePos(3));
    EXPECT_EQ(4u, file.GetPos());
    EXPECT_TRUE(WriteText(file, "b"));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("a\0\0\0b"s, ToText(folder.Read("new")));
}

TEST(CFile, StepWritePosOfZeroWritesNothing)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.StepWritePos(0));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("", ToText(folder.Read("new")));
}

TEST(CFile, StepWritePosWritesManyZeroBytes)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.StepWritePos(static_cast<int>(LargeSize)));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(Bytes(LargeSize, 0), folder.Read("new"));
}

TEST(CFile, StepWritePosOfANegativeCountIsRefused)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "a"));
    EXPECT_FALSE(file.StepWritePos(-1));
    EXPECT_FALSE(file.StepWritePos(std::numeric_limits<int>::min()));
    EXPECT_EQ(1u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("a", ToText(folder.Read("new")));
}

TEST(CFile, StepWritePosFailsWhereAWriteDoes)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_FALSE(file.StepWritePos(static_cast<int>(LargeSize)));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, WritePosDWORDStoresAValueInHostOrderAndComesBack)
{
    const CTemporaryWorkingFolder folder;
    const unsigned int value = 0x64636261;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "0123456789"));
    EXPECT_TRUE(file.WritePosDWORD(2, value));
    EXPECT_EQ(10u, file.GetPos());
    EXPECT_TRUE(WriteText(file, "x"));
    EXPECT_TRUE(file.Close());

    std::string expected = "0123456789x";
    std::memcpy(expected.data() + 2, &value, sizeof(value));
    EXPECT_EQ(expected, ToText(folder.Read("new")));
}

TEST(CFile, WritePosDWORDAtAPositionThatCannotBeSetWritesNothing)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(WriteText(file, "0123"));
    EXPECT_FALSE(file.WritePosDWORD(-1, 0x64636261));
    EXPECT_EQ(4u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("0123", ToText(folder.Read("new")));
}

TEST(CFile, WritePosDWORDThatCannotWriteStaysAtItsPosition)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    CFile file;
    EXPECT_TRUE(file.Open("ten"));
    EXPECT_FALSE(file.WritePosDWORD(2, 0x64636261));
    EXPECT_EQ(2u, file.GetPos());
}

TEST(CFile, WritePosDWORDThatCannotComeBackFails)
{
    const CTemporaryWorkingFolder folder;
    std::filesystem::create_symlink("/dev/null", "null");
    CFile file;
    EXPECT_TRUE(file.Create("null"));
    EXPECT_TRUE(file.SetPos(4294967294u));
    EXPECT_TRUE(file.WriteByte(0));
    EXPECT_EQ(4294967295u, file.GetPos());
    EXPECT_FALSE(file.WritePosDWORD(2, 0x64636261));
    EXPECT_EQ(6u, file.GetPos());
}

TEST(CFile, WritePosDWORDTakesANegativePositionAsItsUnsignedBits)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WritePosDWORD(std::numeric_limits<int>::min(), 0x64636261));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(2 * Gibibyte + 4, std::filesystem::file_size("new"));
}

TEST(CFile, WriteStringWritesTheTextWithoutItsTerminator)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WriteString("ab", false));
    EXPECT_EQ(2u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("ab", ToText(folder.Read("new")));
}

TEST(CFile, WriteStringWritesTheTextWithItsTerminator)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WriteString("ab", true));
    EXPECT_EQ(3u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("ab\0"s, ToText(folder.Read("new")));
}

TEST(CFile, WriteStringOfAnEmptyTextWithItsTerminatorWritesOneZeroByte)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WriteString("", true));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("\0"s, ToText(folder.Read("new")));
}

TEST(CFile, WriteStringOfAnEmptyTextWithoutItsTerminatorWritesNothing)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WriteString("", false));
    EXPECT_EQ(0u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("", ToText(folder.Read("new")));
}

TEST(CFile, WriteStringThatHasNothingToWriteSucceedsOnAClosedFile)
{
    CFile file;
    EXPECT_TRUE(file.WriteString("", false));
}

TEST(CFile, WriteStringFailsWhereAWriteDoes)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    const std::string text(LargeSize, 'a');
    CFile file;
    EXPECT_TRUE(file.Create("full"));
    EXPECT_FALSE(file.WriteString(text.c_str(), true));
    EXPECT_EQ(0u, file.GetPos());
}

TEST(CFile, WriteByteWritesOneByte)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_TRUE(file.WriteByte(0x00));
    EXPECT_TRUE(file.WriteByte(0xFF));
    EXPECT_EQ(2u, file.GetPos());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ((Bytes{0x00, 0xFF}), folder.Read("new"));
}

TEST(CFile, ReadStringStopsAfterTheZeroByte)
{
    EXPECT_EQ((SReadString{true, "ab", 3}), ReadStringOver("ab\0c"s));
}

TEST(CFile, ReadStringWithoutAZeroByteGivesTheRestOfTheFile)
{
    EXPECT_EQ((SReadString{true, "abc", 3}), ReadStringOver("abc"));
}

TEST(CFile, ReadStringWhoseZeroByteIsTheLastOfTheFileFails)
{
    const SReadString result = ReadStringOver("ab\0"s);
    EXPECT_FALSE(result.isRead);
    EXPECT_EQ("", result.text);
}

TEST(CFile, ReadStringOfAnEmptyFileFailsAndClearsTheText)
{
    EXPECT_EQ((SReadString{false, "", 0}), ReadStringOver(""));
}

TEST(CFile, ReadStringOfAnEmptyTextTakesOneByte)
{
    EXPECT_EQ((SReadString{true, "", 1}), ReadStringOver("\0a"s));
}

TEST(CFile, ReadStringsFollowEachOther)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", "-ab\0\0cd"s);
    CFile file;
    EXPECT_TRUE(file.Open("text"));
    EXPECT_TRUE(file.SetPos(1));
    EXPECT_EQ((SReadString{true, "ab", 4}), ReadString(file));
    EXPECT_EQ((SReadString{true, "", 5}), ReadString(file));
    EXPECT_EQ((SReadString{true, "cd", 7}), ReadString(file));
    EXPECT_EQ((SReadString{false, "", 7}), ReadString(file));
}

TEST(CFile, ReadStringReadsTextsOfAnyLength)
{
    for (unsigned int length = 0; length <= 400; ++length)
    {
        const std::string text(length, 'a');
        EXPECT_EQ((SReadString{true, text, length + 1}), ReadStringOver(text + "\0-"s));
        EXPECT_EQ((SReadString{length > 0, text, length}), ReadStringOver(text));
    }
}

TEST(CFile, ReadStringGoesOnAfterALongText)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", std::string(300, 'a') + "\0next\0-"s);
    CFile file;
    EXPECT_TRUE(file.Open("text"));
    EXPECT_EQ((SReadString{true, std::string(300, 'a'), 301}), ReadString(file));
    EXPECT_EQ((SReadString{true, "next", 306}), ReadString(file));
}

TEST(CFile, ReadStringWhoseLateZeroByteIsTheLastOfTheFileFails)
{
    for (std::size_t length : {127u, 128u, 129u, 255u, 256u})
    {
        const SReadString result = ReadStringOver(std::string(length, 'a') + '\0');
        EXPECT_FALSE(result.isRead) << length;
        EXPECT_EQ("", result.text) << length;
    }
}

TEST(CFile, ReadStringFromAFileOpenForWritingFailsAndClearsTheText)
{
    const CTemporaryWorkingFolder folder;
    CFile file;
    EXPECT_TRUE(file.Create("new"));
    EXPECT_EQ((SReadString{false, "", 0}), ReadString(file));
}

TEST(CFile, ReadImageGivesExactlyTheBytesOfAFileOfAnySize)
{
    const CTemporaryWorkingFolder folder;
    for (const std::size_t size : {std::size_t(1), std::size_t(4096), LargeSize + 3, 9 * LargeSize})
    {
        const Bytes bytes = MakePattern(size);
        folder.Write("file", bytes);
        Bytes image{1, 2, 3};
        EXPECT_TRUE(CFile::ReadImage(image, "file")) << size;
        EXPECT_TRUE(bytes == image) << size;
    }
}

TEST(CFile, ReadImageReplacesAnImageThatWasLonger)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("file", "a\0\r\n"s);
    Bytes image(100, 0xEE);
    EXPECT_TRUE(CFile::ReadImage(image, "file"));
    EXPECT_EQ((Bytes{'a', 0, 13, 10}), image);
}

TEST(CFile, ReadImageOfAnEmptyFileGivesAnEmptyVector)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("empty", "");
    Bytes image{1, 2, 3};
    EXPECT_TRUE(CFile::ReadImage(image, "empty"));
    EXPECT_TRUE(image.empty());
}

TEST(CFile, ReadImageOfAMissingFileFailsAndLeavesTheVectorUnchanged)
{
    const CTemporaryWorkingFolder folder;
    Bytes image{1, 2, 3};
    EXPECT_FALSE(CFile::ReadImage(image, "missing"));
    EXPECT_EQ((Bytes{1, 2, 3}), image);
}

TEST(CFile, ReadImageOpensTheFileAsOpenDoes)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("UserData/x.dat", "slash");
    folder.Write(R"(Tarvelquinn\UserData\x.dat)", "translated");
    Bytes image;
    EXPECT_TRUE(CFile::ReadImage(image, R"(UserData\x.dat)"));
    EXPECT_EQ("slash", ToText(image));
}

TEST(CFile, ZeroByteEndsTheNameOfAnImage)
{
    const CTemporaryWorkingFolder folder;
    const Bytes bytes{1, 2, 3};
    EXPECT_TRUE(CFile::WriteImage(bytes, "name\0ignored"s));
    EXPECT_EQ((FolderContents{{"name", bytes}}), folder.GetContents());
    Bytes image;
    EXPECT_TRUE(CFile::ReadImage(image, "name\0ignored too"s));
    EXPECT_EQ(bytes, image);
}

TEST(CFile, ReadImageRefusesAFolder)
{
    if (testsupport::IsFolderAsLargeAsAFile)
        GTEST_SKIP() << testsupport::WhyFoldersTakeMemory;
    const CTemporaryWorkingFolder folder;
    folder.MakeFolder("folder");
    ExpectReadImageRefuses("folder");
    ExpectReadImageRefuses("folder/");
    ExpectReadImageRefuses(".");
    ExpectReadImageRefuses("/");
}

TEST(CFile, ReadImageOfAnythingOfSizeZeroGivesAnEmptyVector)
{
    for (const char* name : {"/proc", "/dev/zero"})
    {
        Bytes image{1, 2, 3};
        EXPECT_TRUE(CFile::ReadImage(image, name)) << name;
        EXPECT_TRUE(image.empty()) << name;
    }
}

TEST(CFile, ReadImageRefusesAStreamWithoutPositions)
{
    const CTemporaryWorkingFolder folder;
    ASSERT_EQ(0, mkfifo("pipe", 0600));
    const int otherEnd = open("pipe", O_RDWR);
    ExpectReadImageRefuses("pipe");
    close(otherEnd);
}

TEST(CFile, ReadImageRefusesAFileWhoseSizeCannotBeFoundOut)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    const CStreamFault fault("ftello", 1);
    ExpectReadImageRefuses("ten");
}

TEST(CFile, ReadImageRefusesAFileOver32BitsOfSize)
{
    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "exactly 4 GiB", 4 * Gibibyte);
    MakeSparseFile(folder, "4 GiB and a little", 4 * Gibibyte + 5);
    MakeSparseFile(folder, "12 GiB", 12 * Gibibyte);
    ExpectReadImageRefuses("exactly 4 GiB");
    ExpectReadImageRefuses("4 GiB and a little");
    ExpectReadImageRefuses("12 GiB");
}

TEST(CFile, ReadImageOfTheLargestSizeOf32BitsAsksForItsMemory)
{
    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "4 GiB less a byte", 4 * Gibibyte - 1);
    const long descriptors = CountOpenDescriptors();
    Bytes image;
    {
        // Stands for a system that has not got as much: 4 GiB are too many for a test.
        const CAllocationWatch watch(
            [](std::size_t size)
            {
                if (size >= 4 * Gibibyte - 1)
                    throw std::bad_alloc();
            });
        // Where sizes have 32 bits, a vector refuses before it asks: std::length_error.
        EXPECT_THROW(CFile::ReadImage(image, "4 GiB less a byte"), std::exception);
    }
    EXPECT_EQ(descriptors, CountOpenDescriptors());
}

TEST(CFile, ReadImageThatIsCutShortFailsWithTheVectorAtTheFilesSize)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("shrinking", MakePattern(LargeSize));
    const long descriptors = CountOpenDescriptors();
    Bytes image;
    {
        // The image's memory is taken after the file was measured and before it is read.
        const CAllocationWatch watch(
            [](std::size_t size)
            {
                if (size >= LargeSize)
                    std::filesystem::resize_file("shrinking", LargeSize / 2);
            });
        EXPECT_FALSE(CFile::ReadImage(image, "shrinking"));
    }
    EXPECT_EQ(LargeSize, image.size());
    EXPECT_EQ(descriptors, CountOpenDescriptors());
}

TEST(CFile, BufferThatGetsNoMemoryHoldsNone)
{
    filesystem::CFileBuffer buffer;
    buffer.Allocate(10);
    {
        const CAllocationWatch watch([](std::size_t) { throw std::bad_alloc(); });
        EXPECT_THROW(buffer.Allocate(20), std::bad_alloc);
    }
    EXPECT_EQ(0u, buffer.GetSize());
    EXPECT_EQ(nullptr, buffer.GetData());
}

TEST(CFile, ReadImageFailsWhereTheFileCannotBeClosed)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    folder.Write("empty", "");
    Bytes image;
    {
        const CStreamFault fault("fclose", 1);
        EXPECT_FALSE(CFile::ReadImage(image, "ten"));
        EXPECT_EQ("0123456789", ToText(image));
    }
    const CStreamFault fault("fclose", 1);
    EXPECT_FALSE(CFile::ReadImage(image, "empty"));
}

TEST(CFile, ReadImageAndWriteImageLeaveNoFileOpen)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("ten", "0123456789");
    folder.MakeFolder("folder");
    MakeFullFile("full");
    const long descriptors = CountOpenDescriptors();
    Bytes image(LargeSize);
    EXPECT_FALSE(CFile::WriteImage(image, "full"));
    EXPECT_FALSE(CFile::WriteImage(image, "folder"));
    EXPECT_FALSE(CFile::ReadImage(image, "folder"));
    EXPECT_TRUE(CFile::ReadImage(image, "ten"));
    EXPECT_TRUE(CFile::WriteImage(image, "copy"));
    EXPECT_EQ(descriptors, CountOpenDescriptors());
}

TEST(CFile, WriteImageWritesExactlyTheBytesOfAVectorOfAnySize)
{
    const CTemporaryWorkingFolder folder;
    for (const std::size_t size : {std::size_t(1), std::size_t(4096), LargeSize + 3, 9 * LargeSize})
    {
        const Bytes bytes = MakePattern(size);
        EXPECT_TRUE(CFile::WriteImage(bytes, "new")) << size;
        EXPECT_TRUE(bytes == folder.Read("new")) << size;
    }
}

TEST(CFile, WriteImageReplacesALongerFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("old", "0123456789");
    EXPECT_TRUE(CFile::WriteImage({'a', 0, 10}, "old"));
    EXPECT_EQ("a\0\n"s, ToText(folder.Read("old")));
}

TEST(CFile, WriteImageOfAnEmptyVectorMakesAnEmptyFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("old", "0123456789");
    EXPECT_TRUE(CFile::WriteImage({}, "old"));
    EXPECT_TRUE(CFile::WriteImage({}, "new"));
    EXPECT_EQ((FolderContents{{"new", {}}, {"old", {}}}), folder.GetContents());
}

TEST(CFile, WriteImageCreatesTheFileAsCreateDoes)
{
    const CTemporaryWorkingFolder folder;
    EXPECT_TRUE(CFile::WriteImage({1}, R"(Setting\x.dat)"));
    EXPECT_TRUE(CFile::WriteImage({2}, R"(a\b)"));
    const FolderContents expected{{R"(Tarvelquinn\Setting\x.dat)", {1}}, {R"(a\b)", {2}}};
    EXPECT_EQ(expected, folder.GetContents());
}

TEST(CFile, WriteImageInAMissingFolderFails)
{
    const CTemporaryWorkingFolder folder;
    EXPECT_FALSE(CFile::WriteImage({1}, "missing/new"));
    EXPECT_TRUE(folder.GetContents().empty());
}

TEST(CFile, WriteImageToAFullDiskFails)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    EXPECT_FALSE(CFile::WriteImage({1, 2, 3}, "full"));
    EXPECT_FALSE(CFile::WriteImage(MakePattern(LargeSize), "full"));
}

TEST(CFile, WriteImageFailsWhereTheFileCannotBeClosed)
{
    const CTemporaryWorkingFolder folder;
    {
        const CStreamFault fault("fclose", 1);
        EXPECT_FALSE(CFile::WriteImage({1, 2, 3}, "new"));
    }
    const CStreamFault fault("fclose", 1);
    EXPECT_FALSE(CFile::WriteImage({}, "empty"));
}

TEST(CFile, ReadTextImageStopsAtTheFirstZeroByte)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", "ab\r\nc\0d"s);
    std::string text = "before";
    EXPECT_TRUE(CFile::ReadTextImage(text, "text"));
    EXPECT_EQ("ab\r\nc", text);
}

TEST(CFile, ReadTextImageWithoutAZeroByteGivesTheWholeFile)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", "a\x95\x5C");
    std::string text = "before";
    EXPECT_TRUE(CFile::ReadTextImage(text, "text"));
    EXPECT_EQ("a\x95\x5C", text);
}

TEST(CFile, ReadTextImageOfAFileThatStartsWithAZeroByteIsEmpty)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("text", "\0a"s);
    std::string text = "before";
    EXPECT_TRUE(CFile::ReadTextImage(text, "text"));
    EXPECT_EQ("", text);
}

TEST(CFile, ReadTextImageOfAnEmptyFileSucceedsAndLeavesTheText)
{
    const CTemporaryWorkingFolder folder;
    folder.Write("empty", "");
    std::string text = "before";
    EXPECT_TRUE(CFile::ReadTextImage(text, "empty"));
    EXPECT_EQ("before", text);
}

TEST(CFile, ReadTextImageOfAMissingFileFailsAndLeavesTheText)
{
    const CTemporaryWorkingFolder folder;
    std::string text = "before";
    EXPECT_FALSE(CFile::ReadTextImage(text, "missing"));
    EXPECT_EQ("before", text);
}

TEST(CFile, WriteTextImageWritesTheTextWithItsZeroBytesAndNoTerminator)
{
    const CTemporaryWorkingFolder folder;
    EXPECT_TRUE(CFile::WriteTextImage("a\0b\n"s, "text"));
    EXPECT_TRUE(CFile::WriteTextImage("", "empty"));
    EXPECT_EQ("a\0b\n"s, ToText(folder.Read("text")));
    EXPECT_EQ("", ToText(folder.Read("empty")));
}

TEST(CFile, WriteTextImageFailsWhereWriteImageDoes)
{
    const CTemporaryWorkingFolder folder;
    MakeFullFile("full");
    EXPECT_FALSE(CFile::WriteTextImage("text", "full"));
    EXPECT_FALSE(CFile::WriteTextImage("text", "missing/new"));
}

TEST(CFile, RealNameOfUserDataStandsBelowTheApplicationsFolder)
{
    EXPECT_EQ(R"(Tarvelquinn\UserData\a.txt)", CFile::TransRealFileName(R"(UserData\a.txt)"));
    EXPECT_EQ(R"(Tarvelquinn\UserData\)", CFile::TransRealFileName(R"(UserData\)"));
    EXPECT_EQ(R"(Tarvelquinn\UserData\a\b)", CFile::TransRealFileName(R"(UserData\a\b)"));
}

TEST(CFile, RealNameOfASettingStandsBelowTheApplicationsFolder)
{
    EXPECT_EQ(R"(Tarvelquinn\Setting\a.txt)", CFile::TransRealFileName(R"(Setting\a.txt)"));
    EXPECT_EQ(R"(Tarvelquinn\Setting\)", CFile::TransRealFileName(R"(Setting\)"));
}

TEST(CFile, RealNameOfAnyOtherNameIsTheName)
{
    for (const std::string name :
         {"", "a.txt", R"(a\b)", "UserData", "Setting", "UserData/a", "Setting/a", R"(userdata\a)",
          R"(USERDATA\a)", R"(setting\a)", R"(Settings\a)", R"(UserData2\a)", R"(\UserData\a)",
          R"(a\UserData\a)", R"(.\Setting\a)"})
        EXPECT_EQ(name, CFile::TransRealFileName(name));
}

TEST(CFile, ApplicationsFolderIsRelativeToTheWorkingFolder)
{
    EXPECT_EQ("Tarvelquinn", CFile::GetAppUserFolderPath());
}

TEST(CFileLarge, ImageOver2GiBIsReadAndWrittenWhole)
{
    if (!AreLargeFilesTested())
        GTEST_SKIP() << "takes 6 GiB of memory and 3 GiB of disk; " << HowToTestLargeFiles;

    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "large", 3 * Gibibyte);
    Bytes image;
    ASSERT_TRUE(CFile::ReadImage(image, "large"));
    ASSERT_EQ(3 * Gibibyte, image.size());
    image.front() = 'a';
    image[2 * Gibibyte] = 'b';
    image.back() = 'c';
    ASSERT_TRUE(CFile::WriteImage(image, "copy"));

    Bytes copy;
    ASSERT_TRUE(CFile::ReadImage(copy, "copy"));
    EXPECT_TRUE(image == copy);
}

TEST(CFileLarge, ImageOfOneByteBelow4GiBIsReadWhole)
{
    if (!AreLargeFilesTested())
        GTEST_SKIP() << "takes 4 GiB of memory; " << HowToTestLargeFiles;

    const CTemporaryWorkingFolder folder;
    MakeSparseFile(folder, "large", 4 * Gibibyte - 1);
    Bytes image;
    EXPECT_TRUE(CFile::ReadImage(image, "large"));
    EXPECT_EQ(4 * Gibibyte - 1, image.size());
}

TEST(CFileLarge, ImageOver32BitsOfSizeIsRefusedBeforeTheFileIsTouched)
{
    if (!AreLargeFilesTested())
        GTEST_SKIP() << "takes 4 GiB of memory; " << HowToTestLargeFiles;

    const CTemporaryWorkingFolder folder;
    folder.Write("old", "0123456789");
    std::filesystem::create_symlink("/dev/null", "null");
    Bytes image(FourGibibytes);
    EXPECT_FALSE(CFile::WriteImage(image, "old"));
    EXPECT_EQ("0123456789", ToText(folder.Read("old")));
    image.pop_back();
    EXPECT_TRUE(CFile::WriteImage(image, "null"));
}

TEST(CFileLarge, TextOver32BitsOfLengthIsRefused)
{
    if (!AreLargeFilesTested())
        GTEST_SKIP() << "takes 4 GiB of memory; " << HowToTestLargeFiles;

    const CTemporaryWorkingFolder folder;
    std::filesystem::create_symlink("/dev/null", "null");
    std::string text(FourGibibytes, 'a');
    CFile file;
    EXPECT_TRUE(file.Create("null"));
    EXPECT_FALSE(file.WriteString(text.c_str(), false));
    EXPECT_EQ(0u, file.GetPos());
    text.pop_back();
    EXPECT_TRUE(file.WriteString(text.c_str(), false));
    EXPECT_EQ(4294967295u, file.GetPos());
}
