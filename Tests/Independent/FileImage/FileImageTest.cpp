#include "Independent/FileImage/FileImage.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/FileImage/FloatBits.h"

using namespace fileimage;
using imagetest::BitsOfFloat;
using imagetest::FloatOfBits;

namespace
{

using Bytes = std::vector<unsigned char>;

} // namespace

TEST(FileImage, ReadIntTakesFourBytesLowestFirst)
{
    const Bytes bytes{0x78, 0x56, 0x34, 0x12};
    EXPECT_EQ(0x12345678, ReadInt(bytes.data()));
}

TEST(FileImage, ReadIntIsTwosComplement)
{
    const Bytes minusTwo{0xFE, 0xFF, 0xFF, 0xFF};
    const Bytes lowest{0x00, 0x00, 0x00, 0x80};
    const Bytes highest{0xFF, 0xFF, 0xFF, 0x7F};
    EXPECT_EQ(-2, ReadInt(minusTwo.data()));
    EXPECT_EQ(std::numeric_limits<int>::min(), ReadInt(lowest.data()));
    EXPECT_EQ(std::numeric_limits<int>::max(), ReadInt(highest.data()));
}

TEST(FileImage, ReadWordTakesTwoBytesLowByteFirst)
{
    const Bytes bytes{0x34, 0x12};
    EXPECT_EQ(0x1234, ReadWord(bytes.data()));
}

TEST(FileImage, ReadWordIsUnsigned)
{
    const Bytes bytes{0xFE, 0xFF};
    EXPECT_EQ(65534, ReadWord(bytes.data()));
}

TEST(FileImage, ReadDWordTakesFourBytesLowestFirst)
{
    const Bytes bytes{0x78, 0x56, 0x34, 0x12};
    EXPECT_EQ(0x12345678u, ReadDWord(bytes.data()));
}

TEST(FileImage, ReadDWordIsUnsigned)
{
    const Bytes bytes{0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(4294967294u, ReadDWord(bytes.data()));
}

TEST(FileImage, ReadFloatTakesTheBitPatternOfASingle)
{
    const Bytes one{0x00, 0x00, 0x80, 0x3F};
    const Bytes minusTwoAndAHalf{0x00, 0x00, 0x20, 0xC0};
    EXPECT_EQ(1.0f, ReadFloat(one.data()));
    EXPECT_EQ(-2.5f, ReadFloat(minusTwoAndAHalf.data()));
}

TEST(FileImage, ReadFloatKeepsEveryBit)
{
    const Bytes negativeZero{0x00, 0x00, 0x00, 0x80};
    const Bytes smallestSubnormal{0x01, 0x00, 0x00, 0x00};
    const Bytes quietNaNWithPayload{0x21, 0x43, 0xC5, 0xFF};
    EXPECT_EQ(0x80000000u, BitsOfFloat(ReadFloat(negativeZero.data())));
    EXPECT_EQ(0x00000001u, BitsOfFloat(ReadFloat(smallestSubnormal.data())));
    EXPECT_EQ(0xFFC54321u, BitsOfFloat(ReadFloat(quietNaNWithPayload.data())));
}

TEST(FileImage, ReadsFromAnyAddress)
{
    const Bytes bytes{0x01, 0x02, 0x03, 0x40, 0x40, 0x06, 0x07};
    for (std::size_t start = 0; start < 4; ++start)
    {
        const unsigned char* p = bytes.data() + start;
        const unsigned int expected = p[0] + 0x100u * p[1] + 0x10000u * p[2] + 0x1000000u * p[3];
        EXPECT_EQ(expected, ReadDWord(p)) << start;
        EXPECT_EQ(static_cast<int>(expected), ReadInt(p)) << start;
        EXPECT_EQ(p[0] + 0x100 * p[1], ReadWord(p)) << start;
        EXPECT_EQ(FloatOfBits(expected), ReadFloat(p)) << start;
    }
}

TEST(FileImage, WriteIntStoresFourBytesLowestFirst)
{
    Bytes bytes(4, 0xEE);
    WriteInt(bytes.data(), 0x12345678);
    EXPECT_EQ((Bytes{0x78, 0x56, 0x34, 0x12}), bytes);
}

TEST(FileImage, WriteIntIsTwosComplement)
{
    Bytes bytes(4, 0xEE);
    WriteInt(bytes.data(), -2);
    EXPECT_EQ((Bytes{0xFE, 0xFF, 0xFF, 0xFF}), bytes);
    WriteInt(bytes.data(), std::numeric_limits<int>::min());
    EXPECT_EQ((Bytes{0x00, 0x00, 0x00, 0x80}), bytes);
}

TEST(FileImage, WriteWordStoresTwoBytesLowByteFirst)
{
    Bytes bytes(2, 0xEE);
    WriteWord(bytes.data(), 0xABCD);
    EXPECT_EQ((Bytes{0xCD, 0xAB}), bytes);
}

TEST(FileImage, WriteDWordStoresFourBytesLowestFirst)
{
    Bytes bytes(4, 0xEE);
    WriteDWord(bytes.data(), 0xFEDCBA98u);
    EXPECT_EQ((Bytes{0x98, 0xBA, 0xDC, 0xFE}), bytes);
}

TEST(FileImage, WritesTouchOnlyTheirOwnBytesAtAnyAddress)
{
    for (std::size_t start = 0; start < 4; ++start)
    {
        Bytes expected(8, 0xEE);
        Bytes word = expected;
        expected[start] = 0x22;
        expected[start + 1] = 0x11;
        WriteWord(word.data() + start, 0x1122);
        EXPECT_EQ(expected, word) << start;

        Bytes dword(8, 0xEE);
        Bytes integer(8, 0xEE);
        expected[start] = 0x44;
        expected[start + 1] = 0x33;
        expected[start + 2] = 0x22;
        expected[start + 3] = 0x11;
        WriteDWord(dword.data() + start, 0x11223344u);
        WriteInt(integer.data() + start, 0x11223344);
        EXPECT_EQ(expected, dword) << start;
        EXPECT_EQ(expected, integer) << start;
    }
}

TEST(FileImage, FloatIsStoredAsTheDWordOfItsBits)
{
    Bytes bytes(4, 0xEE);
    WriteDWord(bytes.data(), BitsOfFloat(1.0f));
    EXPECT_EQ((Bytes{0x00, 0x00, 0x80, 0x3F}), bytes);
    EXPECT_EQ(1.0f, ReadFloat(bytes.data()));
}
