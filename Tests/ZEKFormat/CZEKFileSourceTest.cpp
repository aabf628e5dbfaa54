#include "ZEKFormat/CZEKFileSource.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"

using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using zek::CZEKFileSource;

namespace
{

/// An open file of bytes that count from 1 to 255 again and again.
class FileSource : public testing::Test
{
protected:
    void Write(std::size_t size)
    {
        m_Bytes.resize(size);
        for (std::size_t i = 0; i < size; ++i)
            m_Bytes[i] = static_cast<unsigned char>(1 + i % 255);
        Write(m_Bytes);
    }

    void Write(const Bytes& bytes)
    {
        m_Bytes = bytes;
        m_Folder.Write("file", bytes);
        ASSERT_TRUE(m_File.Open(m_Folder.GetPath("file")));
    }

    void Resize(std::size_t size) { std::filesystem::resize_file(m_Folder.GetPath("file"), size); }

    CTemporaryFolder m_Folder;
    Bytes m_Bytes;
    filesystem::CRandomAccessFile m_File;
};

} // namespace

TEST_F(FileSource, FetchesAndTakesEveryBlock)
{
    Write(100000);
    for (const std::int64_t size : {1, 52, 4095})
    {
        CZEKFileSource source(m_File);
        for (std::int64_t pos = 0; pos + size <= 100000; pos += size)
        {
            ASSERT_TRUE(source.Fetch(size));
            ASSERT_EQ(pos, source.GetPos());
            ASSERT_EQ(100000 - pos, source.GetLeft());
            ASSERT_EQ(source.GetNext(), source.Take(0));
            const unsigned char* bytes = source.Take(size);
            ASSERT_TRUE(std::equal(bytes, bytes + size, m_Bytes.data() + pos)) << pos;
        }
    }
}

TEST_F(FileSource, StepsOverWhatIsNotRead)
{
    Write(100000);
    CZEKFileSource source(m_File);
    ASSERT_TRUE(source.Fetch(10));
    source.Skip(90001);
    EXPECT_EQ(90001, source.GetPos());
    ASSERT_TRUE(source.Fetch(4000));
    EXPECT_EQ(m_Bytes[90001], *source.GetNext());
    EXPECT_FALSE(source.IsUnreadable());
}

TEST_F(FileSource, DoesNotFetchPastTheEnd)
{
    Write(100);
    CZEKFileSource source(m_File);
    EXPECT_TRUE(source.Fetch(100));
    EXPECT_FALSE(source.Fetch(101));
    EXPECT_TRUE(source.IsUnreadable());
}

TEST_F(FileSource, TakesTextsOfAnyLength)
{
    for (const std::size_t length : {0u, 1u, 4095u, 4096u, 4097u, 70000u, 600000u})
    {
        Bytes bytes(length, 'x');
        bytes.insert(bytes.end(), {0, 'y', 0, 'z'});
        Write(bytes);
        CZEKFileSource source(m_File);
        std::string_view text;
        ASSERT_TRUE(source.TakeText(text));
        EXPECT_EQ(std::string(length, 'x'), text);
        ASSERT_TRUE(source.TakeText(text));
        EXPECT_EQ("y", text);
        EXPECT_EQ(static_cast<std::int64_t>(length) + 3, source.GetPos());
        EXPECT_FALSE(source.TakeText(text));
        EXPECT_EQ(0, source.GetLeft());
        EXPECT_FALSE(source.IsUnreadable());
    }
}

TEST_F(FileSource, CannotReadWhatIsGone)
{
    Write(20000);
    Resize(10000);
    CZEKFileSource source(m_File);
    EXPECT_EQ(20000, source.GetLeft());
    source.Skip(9000);
    EXPECT_TRUE(source.Fetch(1000));
    EXPECT_FALSE(source.Fetch(1001));
    EXPECT_TRUE(source.IsUnreadable());
}

TEST_F(FileSource, CannotReadATextThatIsGone)
{
    Write(20000);
    Resize(10000);
    CZEKFileSource source(m_File);
    std::string_view text;
    EXPECT_FALSE(source.TakeText(text));
    EXPECT_TRUE(source.IsUnreadable());
}
