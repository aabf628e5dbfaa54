// What the generated tables hold, against the system's iconv(3) and the documented layout.

#include "Independent/CharacterCode/CCodePage932.h"
#include "Independent/CharacterCode/ShiftJISTables.h"
#include "Independent/CharacterCode/UTF16ToShiftJISTables.h"
#include "Independent/CharacterCode/UTF8ToShiftJISTables.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <vector>

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

const Pairs ExpectedUTF16Blocks = {
    {0x00A0, 32},  {0x00D0, 16},  {0x00F0, 16},   {0x0390, 64},  {0x0400, 96},   {0x2010, 48},
    {0x2100, 48},  {0x2160, 32},  {0x2190, 16},   {0x21D0, 16},  {0x2200, 64},   {0x2250, 32},
    {0x2280, 16},  {0x22A0, 32},  {0x2310, 16},   {0x2460, 32},  {0x2500, 80},   {0x25A0, 48},
    {0x25E0, 16},  {0x2600, 16},  {0x2640, 16},   {0x2660, 16},  {0x3000, 32},   {0x3040, 192},
    {0x3230, 16},  {0x32A0, 16},  {0x3300, 96},   {0x3370, 64},  {0x33C0, 16},   {0x4E00, 3200},
    {0x5A90, 16},  {0x5AB0, 640}, {0x5D40, 5024}, {0x70F0, 800}, {0x7420, 2688}, {0x7F30, 3184},
    {0x8C30, 240}, {0x8D60, 528}, {0x8F90, 1280}, {0x9570, 128}, {0x9610, 624},  {0x98A0, 192},
    {0x9990, 224}, {0x9AA0, 480}, {0x9CE0, 288},  {0x9E10, 16},  {0x9E70, 320},  {0xF920, 16},
    {0xF9D0, 16},  {0xFA00, 48},  {0xFF00, 160},  {0xFFE0, 16}};

/// What a reverse table holds for a code point: nothing for those that stand for themselves.
unsigned ReverseCode(char32_t codePoint)
{
    return codePoint <= 0x7E ? 0 : CCodePage932::Get().FindCode(codePoint);
}

} // namespace

TEST(ShiftJISTables, CodeRangesAreThe105Pairs)
{
    Pairs pairs;
    for (const SShiftJISCodeRange& range : g_ShiftJISCodeRange)
        pairs.emplace_back(range.first, range.last);
    EXPECT_EQ(105u, pairs.size());
    EXPECT_EQ(ExpectedCodeRanges(), pairs);
}

TEST(ShiftJISTables, CodeRangesCoverTheCodesOfIconvInTheirOrder)
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

TEST(ShiftJISTables, UTF16TableHoldsTheCharactersOfIconv)
{
    SKIP_WITHOUT_ICONV();
    ASSERT_EQ(7484u, std::size(g_ShiftJISToUTF16Table));
    std::size_t index = 0;
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
        ASSERT_EQ(character, char32_t{g_ShiftJISToUTF16Table[index++]}) << std::hex << code;
}

TEST(ShiftJISTables, UTF8TableHoldsTheFormsPaddedWithZeroBytes)
{
    SKIP_WITHOUT_ICONV();
    ASSERT_EQ(7484u, std::size(g_ShiftJISToUTF8Table));
    std::size_t index = 0;
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        std::string expected = EncodeUTF8(character);
        expected.resize(3, '\0');
        const std::uint8_t* form = g_ShiftJISToUTF8Table[index++];
        ASSERT_EQ(expected, std::string(form, form + 3)) << std::hex << code;
    }
}

TEST(UTF8ToShiftJISTables, ThereIsATableForEachPrefixOfACoveredCharacter)
{
    SKIP_WITHOUT_ICONV();
    std::set<int> expected;
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        const std::string form = EncodeUTF8(character);
        const int first = static_cast<unsigned char>(form[0]);
        if (form.size() == 2)
            expected.insert(first);
        if (form.size() == 3)
            expected.insert(first * 0x100 + static_cast<unsigned char>(form[1]));
    }
    std::set<int> keys;
    for (const SUTF8ToSJISTable& table : g_UTF8ToSJISTables)
        keys.insert(table.key);
    EXPECT_EQ(361u, std::size(g_UTF8ToSJISTables));
    EXPECT_EQ(expected, keys);
}

TEST(UTF8ToShiftJISTables, SixTablesAreOfTwoByteForms)
{
    std::vector<int> keys;
    for (const SUTF8ToSJISTable& table : g_UTF8ToSJISTables)
    {
        if (table.key <= 0xFF)
            keys.push_back(table.key);
    }
    EXPECT_EQ((std::vector<int>{0xC2, 0xC3, 0xCE, 0xCF, 0xD0, 0xD1}), keys);
}

TEST(UTF8ToShiftJISTables, EveryEntryIsTheCodeOfIconvOr0)
{
    SKIP_WITHOUT_ICONV();
    int codeCount = 0;
    for (const SUTF8ToSJISTable& table : g_UTF8ToSJISTables)
    {
        // 110xxxxx, or 1110xxxx 10xxxxxx
        const int prefix = table.key <= 0xFF
                               ? table.key & 0x1F
                               : ((table.key >> 8) & 0x0F) * 0x40 + (table.key & 0x3F);
        for (int last = 0; last < 64; ++last)
        {
            const auto codePoint = static_cast<char32_t>(prefix * 64 + last);
            ASSERT_EQ(ReverseCode(codePoint), table.codes[last]) << std::hex << +codePoint;
            codeCount += table.codes[last] != 0;
        }
    }
    EXPECT_EQ(7389, codeCount);
}

TEST(UTF8ToShiftJISTables, NamesEndWithTheKey)
{
    EXPECT_EQ(0x8198, g_UTF8ToSJIS_c2[0xA7 - 0x80]);   // section sign
    EXPECT_EQ(0x82A0, g_UTF8ToSJIS_e381[0x82 - 0x80]); // hiragana A
    EXPECT_EQ(0x00B1, g_UTF8ToSJIS_efbd[0xB1 - 0x80]); // half-width katakana A
    EXPECT_EQ(0x8191, g_UTF8ToSJIS_efbf[0xA0 - 0x80]); // full-width cent sign
    EXPECT_EQ(64u, std::size(g_UTF8ToSJIS_e280));
}

TEST(UTF16ToShiftJISTables, BlocksAreThe52InTheirOrder)
{
    Pairs blocks;
    for (const SUTF16ToSJISBlock& block : g_UTF16ToSJISBlocks)
        blocks.emplace_back(block.first, block.size);
    EXPECT_EQ(52u, blocks.size());
    EXPECT_EQ(ExpectedUTF16Blocks, blocks);
}

TEST(UTF16ToShiftJISTables, EveryEntryIsTheCodeOfIconvOr0)
{
    SKIP_WITHOUT_ICONV();
    int codeCount = 0;
    for (const SUTF16ToSJISBlock& block : g_UTF16ToSJISBlocks)
    {
        for (int i = 0; i < block.size; ++i)
        {
            const auto codePoint = static_cast<char32_t>(block.first + i);
            ASSERT_EQ(ReverseCode(codePoint), block.codes[i]) << std::hex << +codePoint;
            codeCount += block.codes[i] != 0;
        }
    }
    EXPECT_EQ(7389, codeCount);
}

TEST(UTF16ToShiftJISTables, NamesEndWithTheFirstCodePoint)
{
    EXPECT_EQ(0x8198, g_UTF16ToSJIS_00a0[0xA7 - 0xA0]);
    EXPECT_EQ(0x88EA, g_UTF16ToSJIS_4e00[0]);
    EXPECT_EQ(0x8191, g_UTF16ToSJIS_ffe0[0]);
    EXPECT_EQ(5024u, std::size(g_UTF16ToSJIS_5d40));
}
