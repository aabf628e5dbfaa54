#include "Independent/FileImage/CFileImageAnalyser.h"

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/FileImage/FloatBits.h"
#include "Support/IntLimits.h"

using fileimage::CFileImageAnalyser;
using imagetest::BitsOfFloat;
using testsupport::HighestInt;
using testsupport::LowestInt;

namespace
{

/// A vector that is filled once has a heap block of exactly its size, so that a sanitizer sees
/// each read past the range.
using Bytes = std::vector<unsigned char>;

CFileImageAnalyser ReaderOver(const Bytes& bytes)
{
    return CFileImageAnalyser(bytes.data(), bytes.data() + bytes.size());
}

CFileImageAnalyser ReaderOver(const Bytes&&) = delete;

/// Expects a checked read to leave value and position alone wherever fewer bytes are left than it
/// takes.
template <typename Value>
void ExpectRefusedWhereShort(bool (CFileImageAnalyser::*read)(Value&), Value value, int size)
{
    for (int left = 0; left < size; ++left)
    {
        const Bytes bytes(static_cast<std::size_t>(1 + left), 0x01);
        CFileImageAnalyser reader = ReaderOver(bytes);
        reader.Skip(1);
        const Value before = value;
        EXPECT_FALSE((reader.*read)(value)) << left << " bytes left";
        EXPECT_EQ(before, value) << left << " bytes left";
        EXPECT_EQ(1, reader.GetPos()) << left << " bytes left";
    }
}

/// Expects a checked read over bytes to give a value and to take them all.
template <typename Value>
void ExpectRead(bool (CFileImageAnalyser::*read)(Value&), const Bytes& bytes, const Value& expected)
{
    CFileImageAnalyser reader = ReaderOver(bytes);
    Value value{};
    EXPECT_TRUE((reader.*read)(value));
    EXPECT_EQ(expected, value);
    EXPECT_EQ(static_cast<std::int64_t>(bytes.size()), reader.GetPos());
}

/// Expects a read of text to fail at the end of the range, with the text as given.
void ExpectTextFailsAtEnd(
    bool (CFileImageAnalyser::*read)(std::string&),
    const Bytes& bytes,
    const std::string& expectedText)
{
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "before";
    EXPECT_FALSE((reader.*read)(text));
    EXPECT_EQ(expectedText, text);
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_EQ(static_cast<std::int64_t>(bytes.size()), reader.GetPos());
}

/// One value of each kind, one a line.
const Bytes SmallImage{
    'c',                                            // char
    0xFE,                                           // byte
    0x01,                                           // bool
    0xFE, 0xFF,                                     // short
    0xFE, 0xFF,                                     // word
    0xFE, 0xFF, 0xFF, 0xFF,                         // int
    0xFE, 0xFF, 0xFF, 0xFF,                         // dword
    0x00, 0x00, 0x80, 0x3F,                         // float
    'a',  'b',  0x00, 'c',  'd',                    // string of 5 bytes
    0x01, 0x00, 0x03,                               // memory block
    'x',  'y',  'z',  0x00,                         // zero-terminated string
    'a',  'b',  'c',  'd',  0x00, 0x00, 0x00, 0x00, // string aligned to 4
    'l',  0x0D, 0x0A,                               // text line
};

/// A checked read of each value of the small image, and where that value ends.
struct SReadStep
{
    std::function<bool(CFileImageAnalyser&)> readsAsExpected;
    std::size_t end;
};

template <typename Value>
std::function<bool(CFileImageAnalyser&)>
Reads(bool (CFileImageAnalyser::*read)(Value&), const Value& expected)
{
    return [read, expected](CFileImageAnalyser& reader)
    {
        Value value{};
        return (reader.*read)(value) && value == expected;
    };
}

bool ReadsStringOf5(CFileImageAnalyser& reader)
{
    std::string text;
    return reader.GetString(text, 5) && text == "ab";
}

bool ReadsBlockOf3(CFileImageAnalyser& reader)
{
    Bytes block(3);
    return reader.GetMemoryBlock(block.data(), 3) && block == Bytes{0x01, 0x00, 0x03};
}

const std::vector<SReadStep> SmallImageSteps{
    {Reads(&CFileImageAnalyser::GetChar, 'c'), 1},
    {Reads<unsigned char>(&CFileImageAnalyser::GetByte, 0xFE), 2},
    {Reads(&CFileImageAnalyser::GetBool, true), 3},
    {Reads<short>(&CFileImageAnalyser::GetShort, -2), 5},
    {Reads<unsigned short>(&CFileImageAnalyser::GetWord, 65534), 7},
    {Reads(&CFileImageAnalyser::GetInt, -2), 11},
    {Reads(&CFileImageAnalyser::GetDWord, 4294967294u), 15},
    {Reads(&CFileImageAnalyser::GetFloat, 1.0f), 19},
    {ReadsStringOf5, 24},
    {ReadsBlockOf3, 27},
    {Reads<std::string>(&CFileImageAnalyser::GetZeroTerminatedString, "xyz"), 31},
    {Reads<std::string>(&CFileImageAnalyser::GetStringAligned4, "abcd"), 39},
    {Reads<std::string>(&CFileImageAnalyser::GetTextLine, "l"), 42},
};

} // namespace

static_assert(std::has_virtual_destructor_v<CFileImageAnalyser>);
static_assert(
    std::is_same_v<std::int64_t, decltype(std::declval<CFileImageAnalyser>().GetCanReadSize())>);
static_assert(std::is_same_v<std::int64_t, decltype(std::declval<CFileImageAnalyser>().GetPos())>);

TEST(CFileImageAnalyser, StartsAtTheFirstByte)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    const CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(0, reader.GetPos());
    EXPECT_EQ(3, reader.GetCanReadSize());
    EXPECT_EQ(bytes.data(), reader.GetReadPointer());
    EXPECT_FALSE(reader.IsEnd());
}

TEST(CFileImageAnalyser, EmptyRangeHasNothingButZeroBytes)
{
    const Bytes block{0x11};
    CFileImageAnalyser reader(block.data(), block.data());
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_EQ(nullptr, reader.GetReadPointer());
    EXPECT_EQ(0, reader.GetCanReadSize());
    EXPECT_EQ(0, reader.GetPos());
    EXPECT_TRUE(reader.IsCanRead(0));
    EXPECT_TRUE(reader.Skip(0));
    unsigned char byte = 0x5A;
    EXPECT_FALSE(reader.GetByte(byte));
    std::string text = "before";
    EXPECT_FALSE(reader.GetZeroTerminatedString(text));
    EXPECT_EQ(0x5A, byte);
    EXPECT_EQ("before", text);
}

TEST(CFileImageAnalyser, RangeOfAnEmptyVectorIsEmpty)
{
    const Bytes bytes;
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_EQ(0, reader.GetCanReadSize());
    EXPECT_TRUE(reader.IsCanRead(0));
    EXPECT_FALSE(reader.IsCanRead(1));
    std::string text = "before";
    EXPECT_TRUE(reader.GetString(text, 0));
    EXPECT_EQ("", text);
    EXPECT_FALSE(reader.GetTextLine(text));
    EXPECT_FALSE(reader.GetStringAligned4(text));
}

TEST(CFileImageAnalyser, IsEndHoldsOnlyWhenNoByteIsLeft)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_FALSE(reader.IsEnd());
    reader.GetByteNoCheck();
    EXPECT_FALSE(reader.IsEnd());
    reader.GetByteNoCheck();
    EXPECT_TRUE(reader.IsEnd());
}

TEST(CFileImageAnalyser, IsCanReadHoldsUpToTheBytesLeft)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.GetByteNoCheck();
    EXPECT_TRUE(reader.IsCanRead(1));
    EXPECT_TRUE(reader.IsCanRead(2));
    EXPECT_FALSE(reader.IsCanRead(3));
    EXPECT_FALSE(reader.IsCanRead(HighestInt));
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, ZeroBytesCanBeReadAtTheEnd)
{
    const Bytes bytes{0x11};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.GetByteNoCheck();
    EXPECT_TRUE(reader.IsCanRead(0));
    EXPECT_FALSE(reader.IsCanRead(1));
}

TEST(CFileImageAnalyser, NegativeSizeCanAlwaysBeRead)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser reader = ReaderOver(bytes);
    for (int position = 0; position <= 2; ++position)
    {
        EXPECT_TRUE(reader.IsCanRead(-1)) << position;
        EXPECT_TRUE(reader.IsCanRead(-100)) << position;
        EXPECT_TRUE(reader.IsCanRead(LowestInt)) << position;
        reader.Skip(1);
    }
}

TEST(CFileImageAnalyser, ReadPointerAddressesTheByteThatIsReadNext)
{
    Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.GetByteNoCheck();
    const unsigned char* flag = reader.GetReadPointer();
    EXPECT_EQ(bytes.data() + 1, flag);
    bytes[1] = 0x44;
    EXPECT_EQ(0x44, *flag);
    EXPECT_EQ(0x44, reader.GetByteNoCheck());
}

TEST(CFileImageAnalyser, ReadPointerIsNullAtTheEndAlthoughThePositionIsValid)
{
    const Bytes bytes{0x11};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.GetByteNoCheck();
    EXPECT_EQ(nullptr, reader.GetReadPointer());
    EXPECT_EQ(1, reader.GetPos());
    EXPECT_TRUE(reader.Skip(0));
}

TEST(CFileImageAnalyser, CanReadSizeCountsTheBytesLeft)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(3, reader.GetCanReadSize());
    reader.GetWordNoCheck();
    EXPECT_EQ(1, reader.GetCanReadSize());
    reader.GetByteNoCheck();
    EXPECT_EQ(0, reader.GetCanReadSize());
}

TEST(CFileImageAnalyser, PositionCountsTheBytesConsumed)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.GetWordNoCheck();
    EXPECT_EQ(2, reader.GetPos());
    reader.GetByteNoCheck();
    EXPECT_EQ(3, reader.GetPos());
}

TEST(CFileImageAnalyser, SkipMovesForwardUpToTheEnd)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_TRUE(reader.Skip(1));
    EXPECT_EQ(1, reader.GetPos());
    EXPECT_TRUE(reader.Skip(2));
    EXPECT_EQ(3, reader.GetPos());
}

TEST(CFileImageAnalyser, SkipPastTheEndStaysAndFails)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    EXPECT_FALSE(reader.Skip(3));
    EXPECT_FALSE(reader.Skip(HighestInt));
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, SkipOfZeroStaysAndSucceeds)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    EXPECT_TRUE(reader.Skip(0));
    EXPECT_EQ(1, reader.GetPos());
    reader.Skip(1);
    EXPECT_TRUE(reader.Skip(0));
    EXPECT_EQ(2, reader.GetPos());
}

TEST(CFileImageAnalyser, SkipOfNegativeSizeMovesBack)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(3);
    EXPECT_TRUE(reader.Skip(-2));
    EXPECT_EQ(1, reader.GetPos());
    EXPECT_EQ(0x22, reader.GetByteNoCheck());
}

TEST(CFileImageAnalyser, SkipBackIsNotStoppedAtTheStartOfTheRange)
{
    const Bytes bytes{0x10, 0x11, 0x12, 0x13};
    CFileImageAnalyser reader(bytes.data() + 2, bytes.data() + 4);
    EXPECT_EQ(0x12, reader.GetByteNoCheck());
    EXPECT_TRUE(reader.Skip(-2));
    EXPECT_EQ(-1, reader.GetPos());
    EXPECT_EQ(3, reader.GetCanReadSize());
    EXPECT_FALSE(reader.IsEnd());
    EXPECT_EQ(bytes.data() + 1, reader.GetReadPointer());
    EXPECT_EQ(0x11, reader.GetByteNoCheck());
}

TEST(CFileImageAnalyser, GetCharReadsTheRawByte)
{
    ExpectRead<char>(&CFileImageAnalyser::GetChar, {0x41}, 'A');
    ExpectRead<char>(&CFileImageAnalyser::GetChar, {0xFF}, '\xFF');
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetChar, 'z', 1);
}

TEST(CFileImageAnalyser, GetByteReadsAnUnsignedByte)
{
    ExpectRead<unsigned char>(&CFileImageAnalyser::GetByte, {0x00}, 0);
    ExpectRead<unsigned char>(&CFileImageAnalyser::GetByte, {0xFF}, 255);
    ExpectRefusedWhereShort<unsigned char>(&CFileImageAnalyser::GetByte, 0x5A, 1);
}

TEST(CFileImageAnalyser, GetBoolIsTrueForTheByteOneAlone)
{
    for (int byte = 0; byte <= 255; ++byte)
    {
        const Bytes bytes{static_cast<unsigned char>(byte)};
        CFileImageAnalyser reader = ReaderOver(bytes);
        bool value = byte != 1;
        EXPECT_TRUE(reader.GetBool(value)) << byte;
        EXPECT_EQ(byte == 1, value) << byte;
        EXPECT_EQ(1, reader.GetPos()) << byte;
    }
}

TEST(CFileImageAnalyser, BoolByteTwoReadsAsFalseAndSucceeds)
{
    const Bytes bytes{0x02};
    CFileImageAnalyser reader = ReaderOver(bytes);
    bool value = true;
    EXPECT_TRUE(reader.GetBool(value));
    EXPECT_FALSE(value);
}

TEST(CFileImageAnalyser, GetBoolAtTheEndFailsAndKeepsTheValue)
{
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetBool, true, 1);
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetBool, false, 1);
}

TEST(CFileImageAnalyser, GetShortReadsSigned16Bits)
{
    ExpectRead<short>(&CFileImageAnalyser::GetShort, {0x02, 0x00}, 2);
    ExpectRead<short>(&CFileImageAnalyser::GetShort, {0xFE, 0xFF}, -2);
    ExpectRead<short>(&CFileImageAnalyser::GetShort, {0x34, 0x12}, 0x1234);
    ExpectRead<short>(&CFileImageAnalyser::GetShort, {0x00, 0x80}, -32768);
    ExpectRead<short>(&CFileImageAnalyser::GetShort, {0xFF, 0x7F}, 32767);
    ExpectRefusedWhereShort<short>(&CFileImageAnalyser::GetShort, -7, 2);
}

TEST(CFileImageAnalyser, GetWordReadsUnsigned16Bits)
{
    ExpectRead<unsigned short>(&CFileImageAnalyser::GetWord, {0xFE, 0xFF}, 65534);
    ExpectRead<unsigned short>(&CFileImageAnalyser::GetWord, {0x34, 0x12}, 0x1234);
    ExpectRefusedWhereShort<unsigned short>(&CFileImageAnalyser::GetWord, 7, 2);
}

TEST(CFileImageAnalyser, GetIntReadsSigned32Bits)
{
    ExpectRead(&CFileImageAnalyser::GetInt, {0x78, 0x56, 0x34, 0x12}, 0x12345678);
    ExpectRead(&CFileImageAnalyser::GetInt, {0xFE, 0xFF, 0xFF, 0xFF}, -2);
    ExpectRead(&CFileImageAnalyser::GetInt, {0x00, 0x00, 0x00, 0x80}, LowestInt);
    ExpectRead(&CFileImageAnalyser::GetInt, {0xFF, 0xFF, 0xFF, 0x7F}, HighestInt);
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetInt, -7, 4);
}

TEST(CFileImageAnalyser, GetDWordReadsUnsigned32Bits)
{
    ExpectRead(&CFileImageAnalyser::GetDWord, {0x78, 0x56, 0x34, 0x12}, 0x12345678u);
    ExpectRead(&CFileImageAnalyser::GetDWord, {0xFE, 0xFF, 0xFF, 0xFF}, 4294967294u);
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetDWord, 7u, 4);
}

TEST(CFileImageAnalyser, GetFloatReadsTheBitPatternOfASingle)
{
    ExpectRead(&CFileImageAnalyser::GetFloat, {0x00, 0x00, 0x80, 0x3F}, 1.0f);
    ExpectRead(&CFileImageAnalyser::GetFloat, {0x00, 0x00, 0x20, 0xC0}, -2.5f);
    ExpectRefusedWhereShort(&CFileImageAnalyser::GetFloat, 1.5f, 4);
}

TEST(CFileImageAnalyser, GetFloatKeepsThePayloadOfANaN)
{
    const Bytes bytes{0x21, 0x43, 0xC5, 0xFF};
    CFileImageAnalyser reader = ReaderOver(bytes);
    float value = 0.0f;
    EXPECT_TRUE(reader.GetFloat(value));
    EXPECT_EQ(0xFFC54321u, BitsOfFloat(value));
}

TEST(CFileImageAnalyser, ThreeBytesAreTooFewForAnIntButHoldAWord)
{
    const Bytes bytes{0x34, 0x12, 0x56};
    CFileImageAnalyser reader = ReaderOver(bytes);
    int integer = 7;
    EXPECT_FALSE(reader.GetInt(integer));
    EXPECT_EQ(0, reader.GetPos());
    unsigned short word = 0;
    EXPECT_TRUE(reader.GetWord(word));
    EXPECT_EQ(0x1234, word);
    EXPECT_EQ(1, reader.GetCanReadSize());
}

TEST(CFileImageAnalyser, ValuesMayStartAtAnyAddress)
{
    for (int start = 0; start < 4; ++start)
    {
        const Bytes bytes{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07};
        CFileImageAnalyser reader = ReaderOver(bytes);
        reader.Skip(start);
        unsigned int value = 0;
        EXPECT_TRUE(reader.GetDWord(value)) << start;
        EXPECT_EQ(0x04030201u + 0x01010101u * static_cast<unsigned int>(start), value) << start;
    }
}

TEST(CFileImageAnalyser, GetMemoryBlockCopiesTheBytesAndStepsOverThem)
{
    const Bytes bytes{0x11, 0x00, 0x0A, 0xFF};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    Bytes block(4, 0xEE);
    EXPECT_TRUE(reader.GetMemoryBlock(block.data(), 2));
    EXPECT_EQ((Bytes{0x00, 0x0A, 0xEE, 0xEE}), block);
    EXPECT_EQ(3, reader.GetPos());
}

TEST(CFileImageAnalyser, GetMemoryBlockTakesAllBytesLeft)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser reader = ReaderOver(bytes);
    Bytes block(2);
    EXPECT_TRUE(reader.GetMemoryBlock(block.data(), 2));
    EXPECT_EQ(bytes, block);
    EXPECT_TRUE(reader.IsEnd());
}

TEST(CFileImageAnalyser, GetMemoryBlockOverMoreThanIsLeftChangesNothing)
{
    const Bytes bytes{0x11, 0x22, 0x33};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    Bytes block(3, 0xEE);
    EXPECT_FALSE(reader.GetMemoryBlock(block.data(), 3));
    EXPECT_FALSE(reader.GetMemoryBlock(block.data(), HighestInt));
    EXPECT_EQ((Bytes{0xEE, 0xEE, 0xEE}), block);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetMemoryBlockOfZeroBytesSucceedsAtTheEnd)
{
    const Bytes bytes{0x11};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    Bytes block{0xEE};
    EXPECT_TRUE(reader.GetMemoryBlock(block.data(), 0));
    EXPECT_TRUE(reader.GetMemoryBlock(nullptr, 0));
    EXPECT_EQ((Bytes{0xEE}), block);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetMemoryBlockOfNegativeSizeIsRefused)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    Bytes block{0xEE};
    EXPECT_FALSE(reader.GetMemoryBlock(block.data(), -1));
    EXPECT_FALSE(reader.GetMemoryBlock(block.data(), LowestInt));
    EXPECT_EQ((Bytes{0xEE}), block);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetStringEndsAtTheFirstZeroByteButTakesTheWholeField)
{
    const Bytes bytes{'a', 'b', 0x00, 'c', 'd', 'e'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "something longer before";
    EXPECT_TRUE(reader.GetString(text, 5));
    EXPECT_EQ("ab", text);
    EXPECT_EQ(2u, text.length());
    EXPECT_EQ(5, reader.GetPos());
}

TEST(CFileImageAnalyser, GetStringWithoutAZeroByteGivesTheWholeField)
{
    const Bytes bytes{'a', 0x95, 0x5C, 'd'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text;
    EXPECT_TRUE(reader.GetString(text, 4));
    EXPECT_EQ(
        "a\x95\x5C"
        "d",
        text);
    EXPECT_TRUE(reader.IsEnd());
}

TEST(CFileImageAnalyser, GetStringOfAFieldThatStartsWithAZeroByteIsEmpty)
{
    const Bytes bytes{0x00, 'b', 'c'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "before";
    EXPECT_TRUE(reader.GetString(text, 3));
    EXPECT_EQ("", text);
    EXPECT_EQ(3, reader.GetPos());
}

TEST(CFileImageAnalyser, GetStringOfLengthZeroIsEmptyAndSucceedsAtTheEnd)
{
    const Bytes bytes{'a'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    std::string text = "before";
    EXPECT_TRUE(reader.GetString(text, 0));
    EXPECT_EQ("", text);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetStringOverMoreThanIsLeftChangesNothing)
{
    const Bytes bytes{'a', 'b', 0x00};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    std::string text = "before";
    EXPECT_FALSE(reader.GetString(text, 3));
    EXPECT_FALSE(reader.GetString(text, HighestInt));
    EXPECT_EQ("before", text);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetStringOfNegativeLengthIsRefused)
{
    const Bytes bytes{'a', 'b'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    reader.Skip(1);
    std::string text = "before";
    EXPECT_FALSE(reader.GetString(text, -1));
    EXPECT_FALSE(reader.GetString(text, LowestInt));
    EXPECT_EQ("before", text);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetZeroTerminatedStringStepsOverTheZeroByte)
{
    const Bytes bytes{'a', 0x95, 0x5C, 0x00, 'x', 0x00, 'y'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "something longer before";
    EXPECT_TRUE(reader.GetZeroTerminatedString(text));
    EXPECT_EQ("a\x95\x5C", text);
    EXPECT_EQ(4, reader.GetPos());
    EXPECT_TRUE(reader.GetZeroTerminatedString(text));
    EXPECT_EQ("x", text);
    EXPECT_EQ(6, reader.GetPos());
}

TEST(CFileImageAnalyser, EmptyZeroTerminatedStringTakesOneByte)
{
    const Bytes bytes{0x00, 'x'};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "before";
    EXPECT_TRUE(reader.GetZeroTerminatedString(text));
    EXPECT_EQ("", text);
    EXPECT_EQ(1, reader.GetPos());
}

TEST(CFileImageAnalyser, GetZeroTerminatedStringMayEndWithTheRange)
{
    ExpectRead<std::string>(
        &CFileImageAnalyser::GetZeroTerminatedString, {'a', 'b', 'c', 0x00}, "abc");
}

TEST(CFileImageAnalyser, GetZeroTerminatedStringWithoutAZeroByteFailsAtTheEnd)
{
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetZeroTerminatedString, {'a', 'b', 'c'}, "before");
}

TEST(CFileImageAnalyser, GetZeroTerminatedStringDoesNotSeeAZeroByteAfterTheRange)
{
    const Bytes bytes{'a', 'b', 0x00};
    CFileImageAnalyser reader(bytes.data(), bytes.data() + 2);
    std::string text = "before";
    EXPECT_FALSE(reader.GetZeroTerminatedString(text));
    EXPECT_EQ("before", text);
    EXPECT_EQ(2, reader.GetPos());
}

TEST(CFileImageAnalyser, TextReadFromPastTheEndFailsAndMovesNothing)
{
    using ReadText = bool (CFileImageAnalyser::*)(std::string&);
    for (const ReadText read :
         {&CFileImageAnalyser::GetZeroTerminatedString, &CFileImageAnalyser::GetStringAligned4,
          &CFileImageAnalyser::GetTextLine})
    {
        const Bytes bytes{'a', 'b', 0x00, 'c', '\n'};
        CFileImageAnalyser reader(bytes.data() + 2, bytes.data() + 1);
        std::string text = "before";
        EXPECT_FALSE((reader.*read)(text));
        EXPECT_EQ("before", text);
        EXPECT_EQ(0, reader.GetPos());
    }
}

TEST(CFileImageAnalyser, FromPastTheEndOnlyAMoveBackIsPossible)
{
    const Bytes bytes{'a', 'b'};
    CFileImageAnalyser reader(bytes.data() + 2, bytes.data() + 1);
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_EQ(nullptr, reader.GetReadPointer());
    EXPECT_EQ(-1, reader.GetCanReadSize());
    EXPECT_FALSE(reader.IsCanRead(0));
    EXPECT_FALSE(reader.Skip(0));
    EXPECT_EQ(0, reader.GetPos());
    EXPECT_TRUE(reader.Skip(-1));
    EXPECT_EQ(-1, reader.GetPos());
}

TEST(CFileImageAnalyser, CountsOver32BitsAreWhole)
{
    if (sizeof(void*) < 8)
        GTEST_SKIP() << "addresses have 32 bits here";
    // Addresses alone: nothing is read.
    constexpr std::uint64_t start = std::uint64_t{1} << 40;
    constexpr std::int64_t size = 5000000000;
    const auto getAddress = [](std::uint64_t number)
    { return reinterpret_cast<const unsigned char*>(static_cast<std::uintptr_t>(number)); };
    CFileImageAnalyser reader(
        getAddress(start), getAddress(start + static_cast<std::uint64_t>(size)));
    EXPECT_EQ(size, reader.GetCanReadSize());
    EXPECT_TRUE(reader.IsCanRead(HighestInt));
    EXPECT_TRUE(reader.Skip(HighestInt));
    EXPECT_TRUE(reader.Skip(HighestInt));
    EXPECT_EQ(std::int64_t{2} * HighestInt, reader.GetPos());
    EXPECT_EQ(size - std::int64_t{2} * HighestInt, reader.GetCanReadSize());
}

TEST(CFileImageAnalyser, AlignedStringTakesAMultipleOfFourBytes)
{
    const std::vector<std::int64_t> sizeByLength{4, 4, 4, 4, 8, 8, 8, 8, 12};
    for (std::size_t length = 0; length < sizeByLength.size(); ++length)
    {
        Bytes bytes(length, 'a');
        bytes.resize(16, 0x00);
        CFileImageAnalyser reader = ReaderOver(bytes);
        std::string text = "before";
        EXPECT_TRUE(reader.GetStringAligned4(text)) << length;
        EXPECT_EQ(std::string(length, 'a'), text);
        EXPECT_EQ(sizeByLength[length], reader.GetPos()) << length;
    }
}

TEST(CFileImageAnalyser, AlignedStringOfFourCharactersTakesEightBytes)
{
    ExpectRead<std::string>(
        &CFileImageAnalyser::GetStringAligned4, {'a', 'b', 'c', 'd', 0, 0, 0, 0}, "abcd");
}

TEST(CFileImageAnalyser, AlignmentCountsFromTheStartOfTheStringNotOfTheRange)
{
    for (int start = 1; start < 4; ++start)
    {
        Bytes bytes(static_cast<std::size_t>(start), 0xEE);
        bytes.insert(bytes.end(), {'a', 'b', 0x00, 0x00, 0x77});
        CFileImageAnalyser reader = ReaderOver(bytes);
        reader.Skip(start);
        std::string text;
        EXPECT_TRUE(reader.GetStringAligned4(text)) << start;
        EXPECT_EQ("ab", text);
        EXPECT_EQ(0x77, reader.GetByteNoCheck()) << start;
    }
}

TEST(CFileImageAnalyser, FillerOfAnAlignedStringMayHaveAnyValue)
{
    ExpectRead<std::string>(&CFileImageAnalyser::GetStringAligned4, {'a', 0x00, 0xFF, 'b'}, "a");
}

TEST(CFileImageAnalyser, AlignedStringWithShortFillerFailsAtTheEndWithTheTextRead)
{
    ExpectTextFailsAtEnd(
        &CFileImageAnalyser::GetStringAligned4, {'a', 'b', 'c', 'd', 0x00, 0x00}, "abcd");
    ExpectTextFailsAtEnd(
        &CFileImageAnalyser::GetStringAligned4, {'a', 'b', 'c', 'd', 0x00}, "abcd");
    ExpectTextFailsAtEnd(
        &CFileImageAnalyser::GetStringAligned4, {'a', 'b', 'c', 'd', 0x00, 0x00, 0x00}, "abcd");
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetStringAligned4, {0x00, 0x00, 0x00}, "");
}

TEST(CFileImageAnalyser, AlignedStringWithoutAZeroByteFailsAtTheEnd)
{
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetStringAligned4, {'a', 'b', 'c', 'd'}, "before");
}

TEST(CFileImageAnalyser, TextLineDropsEveryCarriageReturnAndStopsAfterTheLineFeed)
{
    const Bytes bytes{0x61, 0x0D, 0x62, 0x0D, 0x0A, 0x63};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text = "before";
    EXPECT_TRUE(reader.GetTextLine(text));
    EXPECT_EQ("ab", text);
    EXPECT_EQ(1, reader.GetCanReadSize());
    EXPECT_FALSE(reader.GetTextLine(text));
    EXPECT_EQ("ab", text);
    EXPECT_TRUE(reader.IsEnd());
}

TEST(CFileImageAnalyser, TextLineWithoutALineFeedFailsAtTheEnd)
{
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetTextLine, {'a', 'b'}, "before");
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetTextLine, {'a', 0x00, 'b'}, "before");
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetTextLine, {'a', 0x0D}, "before");
    ExpectTextFailsAtEnd(&CFileImageAnalyser::GetTextLine, {}, "before");
}

TEST(CFileImageAnalyser, EmptyTextLineReadsAsEmpty)
{
    ExpectRead<std::string>(&CFileImageAnalyser::GetTextLine, {0x0A}, "");
    ExpectRead<std::string>(&CFileImageAnalyser::GetTextLine, {0x0D, 0x0A}, "");
}

TEST(CFileImageAnalyser, ZeroByteCutsTheTextOfALineButNotTheLine)
{
    const Bytes bytes{'a', 'b', 0x00, 'c', 0x0A, 'd', 0x0A};
    CFileImageAnalyser reader = ReaderOver(bytes);
    std::string text;
    EXPECT_TRUE(reader.GetTextLine(text));
    EXPECT_EQ("ab", text);
    EXPECT_EQ(2u, text.length());
    EXPECT_EQ(5, reader.GetPos());
    EXPECT_TRUE(reader.GetTextLine(text));
    EXPECT_EQ("d", text);
}

TEST(CFileImageAnalyser, TextLineKeepsAllOtherBytes)
{
    Bytes bytes;
    std::string expected;
    for (int byte = 1; byte <= 255; ++byte)
    {
        if (byte == 10)
            continue;
        bytes.push_back(static_cast<unsigned char>(byte));
        if (byte != 13)
            expected += static_cast<char>(byte);
    }
    bytes.push_back(10);
    ExpectRead(&CFileImageAnalyser::GetTextLine, bytes, expected);
}

TEST(CFileImageAnalyser, GetByteNoCheckReadsAnUnsignedByte)
{
    const Bytes bytes{0xFE, 0x01};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(254, reader.GetByteNoCheck());
    EXPECT_EQ(1, reader.GetPos());
    EXPECT_EQ(1, reader.GetByteNoCheck());
}

TEST(CFileImageAnalyser, GetShortNoCheckReadsSigned16Bits)
{
    const Bytes bytes{0xFE, 0xFF, 0x34, 0x12};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(-2, reader.GetShortNoCheck());
    EXPECT_EQ(2, reader.GetPos());
    EXPECT_EQ(0x1234, reader.GetShortNoCheck());
}

TEST(CFileImageAnalyser, GetWordNoCheckReadsUnsigned16Bits)
{
    const Bytes bytes{0xFE, 0xFF, 0x34, 0x12};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(65534, reader.GetWordNoCheck());
    EXPECT_EQ(2, reader.GetPos());
    EXPECT_EQ(0x1234, reader.GetWordNoCheck());
}

TEST(CFileImageAnalyser, GetIntNoCheckReadsSigned32Bits)
{
    const Bytes bytes{0xFE, 0xFF, 0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(-2, reader.GetIntNoCheck());
    EXPECT_EQ(4, reader.GetPos());
    EXPECT_EQ(0x12345678, reader.GetIntNoCheck());
}

TEST(CFileImageAnalyser, GetDWordNoCheckReadsUnsigned32Bits)
{
    const Bytes bytes{0xFE, 0xFF, 0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(4294967294u, reader.GetDWordNoCheck());
    EXPECT_EQ(4, reader.GetPos());
    EXPECT_EQ(0x12345678u, reader.GetDWordNoCheck());
}

TEST(CFileImageAnalyser, GetFloatNoCheckReadsTheBitPatternOfASingle)
{
    const Bytes bytes{0x00, 0x00, 0x80, 0x3F, 0x21, 0x43, 0xC5, 0xFF};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_EQ(1.0f, reader.GetFloatNoCheck());
    EXPECT_EQ(4, reader.GetPos());
    EXPECT_EQ(0xFFC54321u, BitsOfFloat(reader.GetFloatNoCheck()));
}

TEST(CFileImageAnalyser, OneCheckCoversARunOfUncheckedReads)
{
    const Bytes bytes{0x01, 0x02, 0x00, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80, 0x3F};
    CFileImageAnalyser reader = ReaderOver(bytes);
    ASSERT_TRUE(reader.IsCanRead(11));
    EXPECT_EQ(1, reader.GetByteNoCheck());
    EXPECT_EQ(2, reader.GetShortNoCheck());
    EXPECT_EQ(3, reader.GetIntNoCheck());
    EXPECT_EQ(1.0f, reader.GetFloatNoCheck());
    EXPECT_TRUE(reader.IsEnd());
}

TEST(CFileImageAnalyser, FailureIsNotRemembered)
{
    const Bytes bytes{0x11};
    CFileImageAnalyser reader = ReaderOver(bytes);
    EXPECT_FALSE(reader.Skip(2));
    EXPECT_TRUE(reader.Skip(1));
    EXPECT_FALSE(reader.Skip(1));
    EXPECT_TRUE(reader.Skip(-1));
    unsigned char byte = 0;
    EXPECT_TRUE(reader.GetByte(byte));
    EXPECT_EQ(0x11, byte);
}

TEST(CFileImageAnalyser, ReadersOverTheSameRangeMoveIndependently)
{
    const Bytes bytes{0x11, 0x22};
    CFileImageAnalyser first = ReaderOver(bytes);
    CFileImageAnalyser second = ReaderOver(bytes);
    EXPECT_EQ(0x11, first.GetByteNoCheck());
    EXPECT_EQ(0x22, first.GetByteNoCheck());
    EXPECT_EQ(0x11, second.GetByteNoCheck());
}

TEST(CFileImageAnalyser, EveryPrefixOfAnImageGivesExactlyTheValuesThatAreWhole)
{
    for (std::size_t length = 0; length <= SmallImage.size(); ++length)
    {
        const Bytes prefix(SmallImage.data(), SmallImage.data() + length);
        CFileImageAnalyser reader = ReaderOver(prefix);
        for (const SReadStep& step : SmallImageSteps)
        {
            const bool isWhole = step.end <= length;
            EXPECT_EQ(isWhole, step.readsAsExpected(reader))
                << "value that ends at " << step.end << " of " << length << " bytes";
            if (!isWhole)
                break;
            EXPECT_EQ(static_cast<std::int64_t>(step.end), reader.GetPos());
        }
    }
}
