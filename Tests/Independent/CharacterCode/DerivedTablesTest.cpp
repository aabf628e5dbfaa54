// The code ranges against the system's iconv(3), and what the compiler derives from them. That the
// characters are right, the conversions show.

#include "Independent/CharacterCode/DerivedTables.h"

#include <vector>

#include <gtest/gtest.h>

#include "Independent/CharacterCode/CCodePage932.h"

using namespace charactercode;

namespace
{

using Pairs = std::vector<std::pair<int, int>>;

/// The two halves of a full row, 0x40..0x7E and 0x80..0xFC, for each of the lead bytes.
void AddFullRows(Pairs& pairs, int firstLead, int lastLead)
{
    for (int lead = firstLead; lead <= lastLead; ++lead)
    {
        pairs.emplace_back(lead * 0x100 + 0x40, lead * 0x100 + 0x7E);
        pairs.emplace_back(lead * 0x100 + 0x80, lead * 0x100 + 0xFC);
    }
}

Pairs ExpectedCodeRanges()
{
    Pairs pairs = {
        {0x0020, 0x007E}, {0x00A1, 0x00DF}, {0x8140, 0x817E}, {0x8180, 0x81AC}, {0x81B8, 0x81BF},
        {0x81C8, 0x81CE}, {0x81DA, 0x81DF}, {0x81E0, 0x81E8}, {0x81F0, 0x81F7}, {0x81FC, 0x81FC},
        {0x824F, 0x824F}, {0x8250, 0x8258}, {0x8260, 0x8279}, {0x8281, 0x829A}, {0x829F, 0x82F1},
        {0x8340, 0x837E}, {0x8380, 0x8396}, {0x839F, 0x83B6}, {0x83BF, 0x83D6}, {0x8440, 0x8460},
        {0x8470, 0x847E}, {0x8480, 0x8491}, {0x849F, 0x84BE}, {0x8740, 0x875D}, {0x875F, 0x8775},
        {0x877E, 0x877E}, {0x8780, 0x878F}, {0x8793, 0x8794}, {0x8798, 0x8799}, {0x889F, 0x88FC}};
    AddFullRows(pairs, 0x89, 0x97);
    pairs.insert(pairs.end(), {{0x9840, 0x9872}, {0x989F, 0x98FC}});
    AddFullRows(pairs, 0x99, 0x9F);
    AddFullRows(pairs, 0xE0, 0xE9);
    pairs.insert(
        pairs.end(), {{0xEA40, 0xEA7E},
                      {0xEA80, 0xEAA4},
                      {0xFA40, 0xFA49},
                      {0xFA55, 0xFA57},
                      {0xFA5C, 0xFA7E},
                      {0xFA80, 0xFAFC},
                      {0xFB40, 0xFB7E},
                      {0xFB80, 0xFBFC},
                      {0xFC40, 0xFC4B}});
    return pairs;
}

} // namespace

TEST(ShiftJISTable, CodeRangesAreThe105Pairs)
{
    Pairs pairs;
    for (const SShiftJISCodeRange& range : g_ShiftJISCodeRange)
        pairs.emplace_back(range.first, range.last);
    EXPECT_EQ(105u, pairs.size());
    EXPECT_EQ(ExpectedCodeRanges(), pairs);
}

TEST(ShiftJISTable, CodeRangesCoverTheCodesOfIconvInTheirOrder)
{
    SKIP_WITHOUT_ICONV();
    std::vector<unsigned> codes;
    for (const SShiftJISCodeRange& range : g_ShiftJISCodeRange)
    {
        for (unsigned code = range.first; code <= range.last; ++code)
            codes.push_back(code);
    }
    std::vector<unsigned> expected;
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
        expected.push_back(code);
    EXPECT_EQ(expected, codes);
}

TEST(DerivedTables, IndexIsThePlaceInTheRangesLaidEndToEnd)
{
    EXPECT_EQ(NotCovered, CalcShiftJISIndex(0x1F));
    EXPECT_EQ(0, CalcShiftJISIndex(0x20));
    EXPECT_EQ(94, CalcShiftJISIndex(0x7E));
    EXPECT_EQ(NotCovered, CalcShiftJISIndex(0x7F));
    EXPECT_EQ(95, CalcShiftJISIndex(0xA1));
    EXPECT_EQ(157, CalcShiftJISIndex(0xDF));
    EXPECT_EQ(NotCovered, CalcShiftJISIndex(0xE0));
    EXPECT_EQ(158, CalcShiftJISIndex(0x8140));
    EXPECT_EQ(7483, CalcShiftJISIndex(0xFC4B));
    EXPECT_EQ(NotCovered, CalcShiftJISIndex(0xFC4C));
}

TEST(DerivedTables, EveryCodeHasTheCharacterOfItsIndexOrNone)
{
    int codeCount = 0;
    for (int code = 0; code <= 0xFFFF; ++code)
    {
        const int index = CalcShiftJISIndex(code);
        const int character = index == NotCovered ? 0 : g_ShiftJISToUTF16Table[index];
        ASSERT_EQ(character, g_DerivedTables.characters[static_cast<std::size_t>(code)])
            << std::hex << code;
        codeCount += character != 0;
    }
    EXPECT_EQ(7484, codeCount);
}

TEST(DerivedTables, EveryCharacterHasTheCodeThatHasItOrNone)
{
    int characterCount = 0;
    for (std::size_t character = 0; character <= 0xFFFF; ++character)
    {
        const std::uint16_t code = g_DerivedTables.codes[character];
        if (code == 0)
            continue;
        ASSERT_EQ(character, g_DerivedTables.characters[code]) << std::hex << character;
        ++characterCount;
    }
    EXPECT_EQ(7484, characterCount);
}

TEST(DerivedTables, SixBytesStartATwoByteForm)
{
    std::vector<int> leads;
    for (int byte = 0; byte <= 0xFF; ++byte)
    {
        if (g_DerivedTables.isTwoByteLead[static_cast<std::size_t>(byte)])
            leads.push_back(byte);
    }
    EXPECT_EQ((std::vector<int>{0xC2, 0xC3, 0xCE, 0xCF, 0xD0, 0xD1}), leads);
}
