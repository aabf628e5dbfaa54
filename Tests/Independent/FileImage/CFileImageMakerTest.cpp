#include "Independent/FileImage/CFileImageMaker.h"

#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Independent/FileImage/CFileImageAnalyser.h"

using fileimage::CFileImageAnalyser;
using fileimage::CFileImageMaker;
using namespace std::string_literals;

namespace
{

using Bytes = std::vector<unsigned char>;

/// An image in the making together with the reads that must give its values back.
class CRandomImage
{
public:
    explicit CRandomImage(unsigned int seed) : m_Random(seed)
    {
        for (unsigned int count = Below(60); count > 0; --count)
            AddRandomValue();
    }

    void ExpectReadBackEqual() const
    {
        // Of exactly the image's size, so that a sanitizer sees a read past the end.
        const Bytes image = m_Maker.GetImageData();
        CFileImageAnalyser reader(image.data(), image.data() + image.size());
        for (const std::function<void(CFileImageAnalyser&)>& expectValue : m_Expectations)
            expectValue(reader);
        EXPECT_TRUE(reader.IsEnd());
    }

private:
    unsigned int Bits() { return static_cast<unsigned int>(m_Random()); }

    unsigned int Below(unsigned int limit) { return Bits() % limit; }

    /// Up to 9 bytes other than zero.
    std::string Text()
    {
        std::string text;
        for (unsigned int length = Below(10); length > 0; --length)
            text += static_cast<char>(1 + Below(255));
        return text;
    }

    template <typename Value>
    void Expect(bool (CFileImageAnalyser::*read)(Value&), const Value& expected)
    {
        m_Expectations.push_back(
            [read, expected](CFileImageAnalyser& reader)
            {
                Value value{};
                EXPECT_TRUE((reader.*read)(value));
                EXPECT_EQ(expected, value);
            });
    }

    void AddRandomValue()
    {
        const unsigned int bits = Bits();
        switch (Below(11))
        {
        case 0:
            m_Maker.AddByte(static_cast<unsigned char>(bits));
            Expect(&CFileImageAnalyser::GetByte, static_cast<unsigned char>(bits));
            break;
        case 1:
            m_Maker.AddBool(bits % 2 == 0);
            Expect(&CFileImageAnalyser::GetBool, bits % 2 == 0);
            break;
        case 2:
            m_Maker.AddWord(static_cast<unsigned short>(bits));
            Expect(&CFileImageAnalyser::GetWord, static_cast<unsigned short>(bits));
            break;
        case 3:
            m_Maker.AddWord(static_cast<unsigned short>(bits));
            Expect(&CFileImageAnalyser::GetShort, static_cast<short>(bits));
            break;
        case 4:
            m_Maker.AddDWord(bits);
            Expect(&CFileImageAnalyser::GetDWord, bits);
            break;
        case 5:
            m_Maker.AddInt(static_cast<int>(bits));
            Expect(&CFileImageAnalyser::GetInt, static_cast<int>(bits));
            break;
        case 6:
        {
            const float value = static_cast<float>(bits) / 7.0f - 1.0e8f;
            m_Maker.AddFloat(value);
            Expect(&CFileImageAnalyser::GetFloat, value);
            break;
        }
        case 7:
        {
            const std::string text = Text();
            m_Maker.AddZeroTerminatedString(text);
            Expect(&CFileImageAnalyser::GetZeroTerminatedString, text);
            break;
        }
        case 8:
        {
            const std::string text = Text();
            m_Maker.AddStringAligned4(text);
            Expect(&CFileImageAnalyser::GetStringAligned4, text);
            break;
        }
        case 9:
            AddTextOfFixedLength();
            break;
        case 10:
            AddBlock();
            break;
        }
    }

    void AddTextOfFixedLength()
    {
        const std::string text = Text();
        m_Maker.AddString(text);
        m_Expectations.push_back(
            [text](CFileImageAnalyser& reader)
            {
                std::string value;
                EXPECT_TRUE(reader.GetString(value, static_cast<int>(text.length())));
                EXPECT_EQ(text, value);
            });
    }

    void AddBlock()
    {
        Bytes block(1 + Below(10));
        for (unsigned char& byte : block)
            byte = static_cast<unsigned char>(Bits());
        m_Maker.AddMemoryBlock(block.data(), static_cast<int>(block.size()));
        m_Expectations.push_back(
            [block](CFileImageAnalyser& reader)
            {
                Bytes value(block.size());
                EXPECT_TRUE(reader.GetMemoryBlock(value.data(), static_cast<int>(value.size())));
                EXPECT_EQ(block, value);
            });
    }

    std::mt19937 m_Random;
    CFileImageMaker m_Maker;
    std::vector<std::function<void(CFileImageAnalyser&)>> m_Expectations;
};

} // namespace

static_assert(std::has_virtual_destructor_v<CFileImageMaker>);
static_assert(std::is_copy_constructible_v<CFileImageMaker>);
static_assert(std::is_copy_assignable_v<CFileImageMaker>);
static_assert(std::is_nothrow_move_constructible_v<CFileImageMaker>);
static_assert(std::is_nothrow_move_assignable_v<CFileImageMaker>);
static_assert(
    std::is_same_v<const Bytes&, decltype(std::declval<const CFileImageMaker&>().GetImageData())>);

TEST(CFileImageMaker, StartsWithAnEmptyImage)
{
    const CFileImageMaker maker;
    EXPECT_TRUE(maker.GetImageData().empty());
}

TEST(CFileImageMaker, AddByteAppendsTheByte)
{
    CFileImageMaker maker;
    maker.AddByte(0x00);
    maker.AddByte(0x7F);
    maker.AddByte(0xFF);
    EXPECT_EQ((Bytes{0x00, 0x7F, 0xFF}), maker.GetImageData());
}

TEST(CFileImageMaker, AddBoolAppendsOneForTrueAndZeroForFalse)
{
    CFileImageMaker maker;
    maker.AddBool(true);
    maker.AddBool(false);
    EXPECT_EQ((Bytes{0x01, 0x00}), maker.GetImageData());
}

TEST(CFileImageMaker, AddWordAppendsTheLowByteFirst)
{
    CFileImageMaker maker;
    maker.AddWord(0xABCD);
    EXPECT_EQ((Bytes{0xCD, 0xAB}), maker.GetImageData());
}

TEST(CFileImageMaker, AddDWordAppendsTheLowestByteFirst)
{
    CFileImageMaker maker;
    maker.AddDWord(0xFEDCBA98u);
    EXPECT_EQ((Bytes{0x98, 0xBA, 0xDC, 0xFE}), maker.GetImageData());
}

TEST(CFileImageMaker, AddIntAppendsTheSame32BitsAsAddDWord)
{
    CFileImageMaker maker;
    maker.AddInt(0x12345678);
    maker.AddInt(-2);
    maker.AddInt(std::numeric_limits<int>::min());
    EXPECT_EQ(
        (Bytes{0x78, 0x56, 0x34, 0x12, 0xFE, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x80}),
        maker.GetImageData());
}

TEST(CFileImageMaker, AddFloatAppendsTheBitPatternOfASingle)
{
    CFileImageMaker maker;
    maker.AddFloat(1.0f);
    maker.AddFloat(-2.5f);
    maker.AddFloat(-0.0f);
    EXPECT_EQ(
        (Bytes{0x00, 0x00, 0x80, 0x3F, 0x00, 0x00, 0x20, 0xC0, 0x00, 0x00, 0x00, 0x80}),
        maker.GetImageData());
}

TEST(CFileImageMaker, AddFloatKeepsThePayloadOfANaN)
{
    const unsigned int bits = 0xFFC54321u;
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    CFileImageMaker maker;
    maker.AddFloat(value);
    EXPECT_EQ((Bytes{0x21, 0x43, 0xC5, 0xFF}), maker.GetImageData());
}

TEST(CFileImageMaker, AddStringAppendsTheBytesWithoutATerminator)
{
    CFileImageMaker maker;
    maker.AddString("ab");
    maker.AddString("");
    maker.AddString("c");
    EXPECT_EQ((Bytes{'a', 'b', 'c'}), maker.GetImageData());
}

TEST(CFileImageMaker, AddStringAppendsZeroBytesOfTheTextToo)
{
    CFileImageMaker maker;
    maker.AddString("a\0b\0"s);
    EXPECT_EQ((Bytes{'a', 0x00, 'b', 0x00}), maker.GetImageData());
}

TEST(CFileImageMaker, AddZeroTerminatedStringAppendsTheBytesAndOneZero)
{
    CFileImageMaker maker;
    maker.AddZeroTerminatedString("ab");
    maker.AddZeroTerminatedString("");
    maker.AddZeroTerminatedString("\x95\x5C");
    EXPECT_EQ((Bytes{'a', 'b', 0x00, 0x00, 0x95, 0x5C, 0x00}), maker.GetImageData());
}

TEST(CFileImageMaker, AddZeroTerminatedStringAppendsZeroBytesOfTheTextToo)
{
    CFileImageMaker maker;
    maker.AddZeroTerminatedString("a\0b"s);
    EXPECT_EQ((Bytes{'a', 0x00, 'b', 0x00}), maker.GetImageData());
}

TEST(CFileImageMaker, AlignedStringCountsZeroBytesOfTheTextToo)
{
    CFileImageMaker maker;
    maker.AddStringAligned4("a\0bcd"s);
    EXPECT_EQ((Bytes{'a', 0x00, 'b', 'c', 'd', 0x00, 0x00, 0x00}), maker.GetImageData());
}

TEST(CFileImageMaker, AlignedStringFillsUpToFourBytesWhereverItStarts)
{
    const std::vector<std::pair<std::string, Bytes>> cases{
        {"", {0, 0, 0, 0}},
        {"a", {'a', 0, 0, 0}},
        {"ab", {'a', 'b', 0, 0}},
        {"abc", {'a', 'b', 'c', 0}},
        {"abcd", {'a', 'b', 'c', 'd', 0, 0, 0, 0}},
        {"abcdefg", {'a', 'b', 'c', 'd', 'e', 'f', 'g', 0}},
    };
    for (std::size_t lengthBefore = 0; lengthBefore < 5; ++lengthBefore)
    {
        for (const auto& [text, appended] : cases)
        {
            Bytes expected(lengthBefore, 0xEE);
            CFileImageMaker maker;
            maker.AddMemoryBlock(expected.data(), static_cast<int>(expected.size()));
            maker.AddStringAligned4(text);
            expected.insert(expected.end(), appended.begin(), appended.end());
            EXPECT_EQ(expected, maker.GetImageData()) << text << " after " << lengthBefore;
        }
    }
}

TEST(CFileImageMaker, AddMemoryBlockAppendsTheBytes)
{
    const Bytes block{0x00, 0xFF, 0x0A, 0x99};
    CFileImageMaker maker;
    maker.AddByte(0x11);
    maker.AddMemoryBlock(block.data(), 3);
    EXPECT_EQ((Bytes{0x11, 0x00, 0xFF, 0x0A}), maker.GetImageData());
}

TEST(CFileImageMaker, AddMemoryBlockOfNullAppendsNothing)
{
    CFileImageMaker maker;
    maker.AddMemoryBlock(nullptr, 5);
    EXPECT_TRUE(maker.GetImageData().empty());
}

TEST(CFileImageMaker, AddMemoryBlockOfZeroBytesAppendsNothing)
{
    const Bytes block{0x01};
    CFileImageMaker maker;
    maker.AddMemoryBlock(block.data(), 0);
    EXPECT_TRUE(maker.GetImageData().empty());
}

TEST(CFileImageMaker, AddMemoryBlockOfNegativeSizeAppendsNothing)
{
    const Bytes block{0x01};
    CFileImageMaker maker;
    maker.AddMemoryBlock(block.data(), -1);
    maker.AddMemoryBlock(block.data(), std::numeric_limits<int>::min());
    EXPECT_TRUE(maker.GetImageData().empty());
}

TEST(CFileImageMaker, ImageDataReferenceShowsWhatIsAddedLater)
{
    CFileImageMaker maker;
    const Bytes& image = maker.GetImageData();
    maker.AddByte(0x11);
    EXPECT_EQ((Bytes{0x11}), image);
}

TEST(CFileImageMaker, ValuesFollowEachOtherWithoutGaps)
{
    CFileImageMaker maker;
    maker.AddBool(true);
    maker.AddWord(0x1234);
    maker.AddInt(-2);
    EXPECT_EQ((Bytes{0x01, 0x34, 0x12, 0xFE, 0xFF, 0xFF, 0xFF}), maker.GetImageData());
}

TEST(CFileImageMaker, RandomImagesReadBackEqual)
{
    for (unsigned int seed = 1; seed <= 2000 && !HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        CRandomImage(seed).ExpectReadBackEqual();
    }
}
