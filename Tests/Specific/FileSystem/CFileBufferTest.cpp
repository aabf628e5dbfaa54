#include "Specific/FileSystem/CFileBuffer.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Specific/FileSystem/CFile.h"
#include "Support/CTemporaryFolder.h"

namespace
{

using filesystem::CFile;
using filesystem::CFileBuffer;

constexpr std::size_t LargeSize = 5 * 1024 * 1024 + 1; // on huge pages

std::vector<unsigned char> MakeBytes(std::size_t size)
{
    std::vector<unsigned char> bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<unsigned char>(i * 31 + i / 251);
    return bytes;
}

bool IsEqual(const CFileBuffer& buffer, const std::vector<unsigned char>& bytes)
{
    return buffer.GetSize() == bytes.size() &&
           std::equal(bytes.begin(), bytes.end(), buffer.GetData());
}

TEST(CFileBuffer, StartsWithoutBytes)
{
    const CFileBuffer buffer;
    EXPECT_EQ(0U, buffer.GetSize());
    EXPECT_EQ(nullptr, buffer.GetData());
}

TEST(CFileBuffer, HoldsAsManyBytesAsAskedForLast)
{
    CFileBuffer buffer;
    for (std::size_t size : {std::size_t{1}, LargeSize, std::size_t{0}, std::size_t{4096}})
    {
        buffer.Allocate(size);
        EXPECT_EQ(size, buffer.GetSize());
        std::fill_n(buffer.GetData(), size, static_cast<unsigned char>(7));
    }
}

TEST(CFileBuffer, FileIsReadAndWrittenWholeWhateverItsSize)
{
    const testsupport::CTemporaryFolder folder;
    for (std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, LargeSize})
    {
        const std::vector<unsigned char> bytes = MakeBytes(size);
        ASSERT_TRUE(CFile::WriteImage(bytes, folder.GetPath("a")));
        CFileBuffer buffer;
        ASSERT_TRUE(CFile::ReadBuffer(buffer, folder.GetPath("a")));
        EXPECT_TRUE(IsEqual(buffer, bytes)) << size;

        ASSERT_TRUE(CFile::WriteBuffer(buffer, folder.GetPath("b")));
        std::vector<unsigned char> copy;
        ASSERT_TRUE(CFile::ReadImage(copy, folder.GetPath("b")));
        EXPECT_EQ(bytes, copy) << size;
    }
}

TEST(CFileBuffer, MissingFileOrFolderIsRefused)
{
    const testsupport::CTemporaryFolder folder;
    CFileBuffer buffer;
    buffer.Allocate(3);
    buffer.GetData()[0] = 7;
    EXPECT_FALSE(CFile::ReadBuffer(buffer, folder.GetPath("missing")));
    EXPECT_EQ(3U, buffer.GetSize());
    EXPECT_EQ(7, buffer.GetData()[0]);
    EXPECT_FALSE(CFile::WriteBuffer(buffer, folder.GetPath("missing/file")));
}

} // namespace
