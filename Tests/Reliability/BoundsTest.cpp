#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Support/CTemporaryFolder.h"
#include "Support/IntLimits.h"
#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKSink.h"
#include "ZEKFormat/CZEKWalk.h"

// That nothing is read outside of what there is, by trying everything: every length up to Longest,
// every position in it, every demand up to Longest and around it, and those at which an int wraps.
//
// Assumed is what the classes demand: what is read without a check, taken or skipped has been found
// to be there, and what is skipped back lies in the range. Bytes lie in a heap block of exactly
// their number, so that a build with the address sanitizer sees a read beside it, and in any build
// what was read is compared with what lies there. Larger numbers take no other path: no code here
// compares with a number between Longest and those at which an int wraps.

using fileimage::CFileImageAnalyser;
using testsupport::Bytes;
using testsupport::CTemporaryFolder;
using testsupport::HighestInt;
using testsupport::LowestInt;
using zek::CZEKFileSource;
using zek::CZEKImageSource;
using zek::CZEKWalk;
using zek::EZEKFieldType;

namespace
{

constexpr int Longest = 12;

/// Bytes that all differ, so that each shows where it was read.
Bytes MakeBytes(int length)
{
    Bytes bytes(static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i + 1);
    return bytes;
}

/// All ints up to one more than Longest, above and below zero, those beside the powers of two, and
/// those whose product with a size wraps to little.
std::vector<int> MakeDemands(int size)
{
    std::vector<std::int64_t> demands;
    for (int demand = -Longest - 1; demand <= Longest + 1; ++demand)
        demands.push_back(demand);
    constexpr std::int64_t wrap = std::int64_t{1} << 32;
    for (int beside = -2; beside <= 2; ++beside)
    {
        for (std::int64_t power = 16; power < wrap; power *= 2)
            demands.insert(demands.end(), {power + beside, -power + beside});
        for (int times = -size; times <= size; ++times)
            demands.push_back(times * wrap / size + beside);
    }
    std::vector<int> ints;
    for (const std::int64_t demand : demands)
        if (demand >= LowestInt && demand <= HighestInt)
            ints.push_back(static_cast<int>(demand));
    return ints;
}

/// Has a function try every length, and every position in it.
template <typename Try>
void ForEveryPosition(Try tryPosition)
{
    for (int length = 0; length <= Longest; ++length)
    {
        const Bytes bytes = MakeBytes(length);
        for (int pos = 0; pos <= length; ++pos)
            tryPosition(bytes, pos);
    }
}

CFileImageAnalyser MakeReader(const Bytes& bytes, int pos)
{
    CFileImageAnalyser reader(bytes.data(), bytes.data() + bytes.size());
    reader.Skip(pos);
    return reader;
}

/// Expects a read of a number of bytes to succeed exactly where they are there, and to end after
/// them or not to move.
template <typename Value>
void ExpectReadWithin(bool (CFileImageAnalyser::*read)(Value&), int size)
{
    ForEveryPosition(
        [&](const Bytes& bytes, int pos)
        {
            CFileImageAnalyser reader = MakeReader(bytes, pos);
            const bool isThere = size <= static_cast<int>(bytes.size()) - pos;
            Value value;
            ASSERT_EQ(isThere, (reader.*read)(value));
            ASSERT_EQ(isThere ? pos + size : pos, reader.GetPos());
        });
}

/// Calls a function with every text of up to 6 of the characters that texts end at, and one other.
template <typename Try>
void ForEveryText(Try tryText)
{
    constexpr std::array<unsigned char, 4> characters = {'\0', '\n', '\r', 'a'};
    for (int length = 0; length <= 6; ++length)
    {
        for (std::size_t number = 0; number < std::size_t{1} << 2 * length; ++number)
        {
            Bytes bytes(static_cast<std::size_t>(length));
            for (std::size_t i = 0; i < bytes.size(); ++i)
                bytes[i] = characters[number >> 2 * i & 3];
            for (int pos = 0; pos <= length; ++pos)
                tryText(bytes, pos, std::string(bytes.begin() + pos, bytes.end()));
        }
    }
}

/// Hears of all that is walked over, and remembers whether it lay where it should.
class CWithinSink : public zek::CZEKSink
{
public:
    CWithinSink(const Bytes& bytes, bool wantsElements)
        : m_Bytes(bytes)
        , m_WantsElements(wantsElements)
    {
    }

    bool WantsElements(const char*) const { return m_WantsElements; }

    void Field(
        const char*, EZEKFieldType type, int count, std::int64_t offset, const unsigned char* bytes)
    {
        const std::int64_t size = std::int64_t{count} * GetSize(type);
        Hear(offset, size);
        m_IsWithin = m_IsWithin && std::equal(bytes, bytes + size, m_Bytes.data() + offset);
    }

    void Array(const char*, std::int64_t offset, int size, std::int64_t count)
    {
        Hear(offset, size * count);
    }

    bool IsWithin() const { return m_IsWithin; }
    std::int64_t GetHeardSize() const { return m_HeardSize; }

private:
    void Hear(std::int64_t offset, std::int64_t size)
    {
        const auto length = static_cast<std::int64_t>(m_Bytes.size());
        m_IsWithin = m_IsWithin && offset >= 0 && size >= 0 && size <= length - offset;
        m_HeardSize += size;
    }

    const Bytes& m_Bytes;
    bool m_WantsElements;
    bool m_IsWithin = true;
    std::int64_t m_HeardSize = 0;
};

/// Expects an array of count elements to be walked exactly where it is there, as a whole and
/// element by element.
template <typename Source>
void ExpectArrayWithin(const Bytes& bytes, const Source& start, int size, int count)
{
    const std::int64_t left = start.GetLeft();
    const std::int64_t whole = std::int64_t{size} * std::max(count, 0);
    // The demand is an int, which wraps.
    const std::int64_t wrapped =
        static_cast<int>(static_cast<unsigned>(size) * static_cast<unsigned>(count));
    const bool isThere = whole <= left && wrapped <= left;
    const auto walkElement = [&](auto& fields) { fields.Bytes("", size); };
    for (const bool wantsElements : {false, true})
    {
        CWithinSink sink(bytes, wantsElements);
        Source source = start;
        CZEKWalk<Source, CWithinSink> walk(source, sink);
        ASSERT_EQ(isThere, walk.Array("", count, walkElement, [] {})) << size << '*' << count;
        ASSERT_EQ(left - (isThere ? whole : 0), source.GetLeft()) << size << '*' << count;
        ASSERT_TRUE(sink.IsWithin()) << size << '*' << count;

        CWithinSink sinkOfEach(bytes, wantsElements);
        Source sourceOfEach = start;
        CZEKWalk<Source, CWithinSink> walkOfEach(sourceOfEach, sinkOfEach);
        const std::int64_t walked = std::min(whole, left / size * size);
        ASSERT_EQ(whole <= left, walkOfEach.ArrayOneByOne("", count, walkElement, [] {}));
        ASSERT_EQ(walked, sinkOfEach.GetHeardSize()) << size << '*' << count;
        ASSERT_EQ(left - walked, sourceOfEach.GetLeft()) << size << '*' << count;
        ASSERT_TRUE(sinkOfEach.IsWithin()) << size << '*' << count;
    }
}

/// Walks a file of a length that may have been cut since it was opened, in every way.
class CFileTrial
{
public:
    CFileTrial(const Bytes& bytes, int cutLength) : m_Bytes(bytes), m_CutLength(cutLength) {}

    /// Goes on from where a source is with every block, every step and every text that there can
    /// be, and from there again, until the file ends.
    void GoOn(const CZEKFileSource& start)
    {
        TryTooMuch(start);
        TryText(start);
        for (std::int64_t size = 1; size <= start.GetLeft(); ++size)
        {
            TryBlock(start, size);
            CZEKFileSource source = start;
            source.Skip(size);
            GoOn(source);
        }
    }

private:
    void TryBlock(CZEKFileSource source, std::int64_t size)
    {
        const std::int64_t pos = source.GetPos();
        const bool isThere = size <= m_CutLength - pos;
        ASSERT_EQ(isThere, source.Fetch(size)) << "at " << pos;
        ASSERT_EQ(!isThere, source.IsUnreadable());
        if (!isThere)
            return;
        const unsigned char* bytes = source.Take(size);
        ASSERT_TRUE(std::equal(bytes, bytes + size, m_Bytes.data() + pos));
        ASSERT_EQ(pos + size, source.GetPos());
        GoOn(source);
    }

    /// More than there is.
    void TryTooMuch(const CZEKFileSource& start)
    {
        for (const std::int64_t size : {start.GetLeft() + 1, std::int64_t{HighestInt}})
        {
            CZEKFileSource source = start;
            ASSERT_FALSE(source.Fetch(size));
            ASSERT_EQ(start.GetPos(), source.GetPos());
        }
    }

    void TryText(CZEKFileSource source)
    {
        const std::int64_t pos = source.GetPos();
        const auto begin = m_Bytes.begin() + static_cast<std::ptrdiff_t>(pos);
        const auto zero = std::find(begin, m_Bytes.end(), 0);
        std::string_view text;
        const bool isTaken = source.TakeText(text);
        ASSERT_GE(source.GetLeft(), 0);
        ASSERT_EQ(zero < m_Bytes.begin() + m_CutLength, isTaken) << "at " << pos;
        if (!isTaken)
            return;
        ASSERT_EQ(std::string(begin, zero), text);
        ASSERT_EQ(zero + 1 - m_Bytes.begin(), source.GetPos());
        GoOn(source);
    }

    const Bytes& m_Bytes;
    int m_CutLength;
};

} // namespace

TEST(Bounds, TheReaderReadsEachTypeOnlyWhereItIsThere)
{
    ExpectReadWithin(&CFileImageAnalyser::GetChar, 1);
    ExpectReadWithin(&CFileImageAnalyser::GetByte, 1);
    ExpectReadWithin(&CFileImageAnalyser::GetBool, 1);
    ExpectReadWithin(&CFileImageAnalyser::GetShort, 2);
    ExpectReadWithin(&CFileImageAnalyser::GetWord, 2);
    ExpectReadWithin(&CFileImageAnalyser::GetInt, 4);
    ExpectReadWithin(&CFileImageAnalyser::GetDWord, 4);
    ExpectReadWithin(&CFileImageAnalyser::GetFloat, 4);
}

TEST(Bounds, TheReaderTakesWhatIsDemandedOnlyWhereItIsThere)
{
    const std::vector<int> demands = MakeDemands(1);
    ForEveryPosition(
        [&](const Bytes& bytes, int pos)
        {
            const int left = static_cast<int>(bytes.size()) - pos;
            for (const int demand : demands)
            {
                CFileImageAnalyser reader = MakeReader(bytes, pos);
                ASSERT_EQ(demand <= left, reader.IsCanRead(demand));
                const bool isThere = demand >= 0 && demand <= left;
                const int end = isThere ? pos + demand : pos;

                Bytes block(static_cast<std::size_t>(end - pos));
                ASSERT_EQ(isThere, reader.GetMemoryBlock(block.data(), demand));
                ASSERT_EQ(end, reader.GetPos());
                ASSERT_TRUE(std::equal(block.begin(), block.end(), bytes.begin() + pos));

                reader = MakeReader(bytes, pos);
                std::string text;
                ASSERT_EQ(isThere, reader.GetString(text, demand));
                ASSERT_EQ(end, reader.GetPos());
                ASSERT_EQ(std::string(block.begin(), block.end()), text);

                if (demand < -pos)
                    continue;
                reader = MakeReader(bytes, pos);
                ASSERT_EQ(demand <= left, reader.Skip(demand));
                ASSERT_EQ(demand <= left ? pos + demand : pos, reader.GetPos());
                ASSERT_EQ(reader.GetPos() == static_cast<int>(bytes.size()), reader.IsEnd());
            }
        });
}

TEST(Bounds, TheReaderEndsTextsWithinTheRange)
{
    ForEveryText(
        [](const Bytes& bytes, int pos, const std::string& rest)
        {
            const auto length = static_cast<std::int64_t>(bytes.size());
            const std::string text = rest.substr(0, rest.find('\0'));
            const auto end = pos + static_cast<std::int64_t>(text.size()) + 1;
            std::string out;
            CFileImageAnalyser reader = MakeReader(bytes, pos);
            ASSERT_EQ(end <= length, reader.GetZeroTerminatedString(out));
            ASSERT_EQ(std::min(end, length), reader.GetPos());
            ASSERT_EQ(end <= length ? text : "", out);

            const std::int64_t aligned = pos + (end - pos + 3) / 4 * 4;
            reader = MakeReader(bytes, pos);
            ASSERT_EQ(end <= length && aligned <= length, reader.GetStringAligned4(out));
            ASSERT_EQ(end <= length ? std::min(aligned, length) : length, reader.GetPos());
        });
}

TEST(Bounds, TheReaderEndsLinesWithinTheRange)
{
    ForEveryText(
        [](const Bytes& bytes, int pos, const std::string& rest)
        {
            std::string line = rest.substr(0, rest.find('\n'));
            const bool isThere = line.size() < rest.size();
            const std::size_t size = line.size() + (isThere ? 1 : 0);
            line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
            std::string out;
            CFileImageAnalyser reader = MakeReader(bytes, pos);
            ASSERT_EQ(isThere, reader.GetTextLine(out));
            ASSERT_EQ(pos + static_cast<std::int64_t>(size), reader.GetPos());
            ASSERT_EQ(isThere ? line.substr(0, line.find('\0')) : "", out);
        });
}

TEST(Bounds, TheWalkTakesArraysOfAnImageOnlyWhereTheyAreThere)
{
    for (int size = 1; size <= Longest + 1; ++size)
    {
        const std::vector<int> counts = MakeDemands(size);
        ForEveryPosition(
            [&](const Bytes& bytes, int pos)
            {
                const auto left = static_cast<std::int64_t>(bytes.size()) - pos;
                const CZEKImageSource source(bytes.data() + pos, left, pos);
                for (const int count : counts)
                    ExpectArrayWithin(bytes, source, size, count);
            });
    }
}

TEST(Bounds, TheWalkTakesArraysOfAFileOnlyWhereTheyAreThere)
{
    const CTemporaryFolder folder;
    ForEveryPosition(
        [&](const Bytes& bytes, int pos)
        {
            folder.Write("file", bytes);
            filesystem::CRandomAccessFile file;
            ASSERT_TRUE(file.Open(folder.GetPath("file")));
            for (int readSize = 1; readSize <= Longest + 1; ++readSize)
            {
                CZEKFileSource source(file, readSize);
                source.Skip(pos);
                for (int size = 1; size <= Longest + 1; ++size)
                    for (const int count : {LowestInt, -1, 0, 1, 2, 3, 4, 6, 12, 13, HighestInt})
                        ExpectArrayWithin(bytes, source, size, count);
            }
        });
}

TEST(Bounds, TheWindowGivesEachByteOfAFileAndNoOther)
{
    constexpr int longest = 5;
    const CTemporaryFolder folder;
    for (int length = 0; length <= longest; ++length)
    {
        // Every arrangement of zeros, at which texts end.
        for (unsigned zeros = 0; zeros < 1u << length; ++zeros)
        {
            Bytes bytes = MakeBytes(length);
            for (std::size_t i = 0; i < bytes.size(); ++i)
                bytes[i] = (zeros >> i & 1) != 0 ? 0 : bytes[i];
            for (int cutLength = 0; cutLength <= length; ++cutLength)
            {
                folder.Write("file", bytes);
                filesystem::CRandomAccessFile file;
                ASSERT_TRUE(file.Open(folder.GetPath("file")));
                folder.Write("file", Bytes(bytes.begin(), bytes.begin() + cutLength));
                for (int readSize = 1; readSize <= longest + 1; ++readSize)
                    CFileTrial(bytes, cutLength).GoOn(CZEKFileSource(file, readSize));
            }
        }
    }
}
