#include "Independent/CharacterCode/CharacterCode.h"

#include <string>

#include <gtest/gtest.h>

using namespace charactercode;
using namespace std::string_literals;

namespace
{

/// What a conversion returned and what it left in an output that was not empty before.
template <typename String>
struct SResult
{
    bool isAllConverted;
    String output;
};

template <typename String>
bool operator==(const SResult<String>& a, const SResult<String>& b)
{
    return a.isAllConverted == b.isAllConverted && a.output == b.output;
}

template <typename String>
void PrintTo(const SResult<String>& result, std::ostream* stream)
{
    *stream << (result.isAllConverted ? "true, " : "false, ")
            << testing::PrintToString(result.output);
}

template <typename Output, typename Input>
SResult<Output> Run(bool (*convert)(Output&, const Input&), const Input& input)
{
    Output output(3, 'x');
    const bool isAllConverted = convert(output, input);
    return {isAllConverted, output};
}

SResult<std::string> ToUTF8(const std::string& sjis)
{
    return Run(SJISToUTF8, sjis);
}

SResult<std::string> FromUTF8(const std::string& utf8)
{
    return Run(UTF8ToSJIS, utf8);
}

SResult<std::wstring> ToUTF16(const std::string& sjis)
{
    return Run(SJISToUTF16, sjis);
}

SResult<std::string> FromUTF16(const std::wstring& utf16)
{
    return Run(UTF16ToSJIS, utf16);
}

SResult<std::string> Converted(const std::string& output)
{
    return {true, output};
}

SResult<std::wstring> Converted(const std::wstring& output)
{
    return {true, output};
}

SResult<std::string> Failed(const std::string& output)
{
    return {false, output};
}

SResult<std::wstring> Failed(const std::wstring& output)
{
    return {false, output};
}

/// A text of one character and its forms.
struct SForms
{
    const char* sjis;
    const char* utf8;
    const wchar_t* utf16;
};

void ExpectEveryDirection(const SForms& forms)
{
    EXPECT_EQ(Converted(forms.utf8), ToUTF8(forms.sjis));
    EXPECT_EQ(Converted(forms.utf16), ToUTF16(forms.sjis));
    EXPECT_EQ(Converted(forms.sjis), FromUTF8(forms.utf8));
    EXPECT_EQ(Converted(forms.sjis), FromUTF16(forms.utf16));
}

constexpr bool IsWideCharacter32Bits = sizeof(wchar_t) == 4;

/// A wide character of 32 bits, also where the compiler's own has 16.
wchar_t Wide(unsigned long value)
{
    return static_cast<wchar_t>(value);
}

} // namespace

// Interface

TEST(SJISToUTF8, ConvertsATextOfAllKindsOfCharacters)
{
    // A, section sign, half-width A, hiragana A, kanji one
    EXPECT_EQ(
        Converted("A\xC2\xA7\xEF\xBD\xB1\xE3\x81\x82\xE4\xB8\x80"),
        ToUTF8("A\x81\x98\xB1\x82\xA0\x88\xEA"));
}

TEST(UTF8ToSJIS, ConvertsATextOfAllKindsOfCharacters)
{
    // A, section sign, half-width A, hiragana A, kanji one
    EXPECT_EQ(
        Converted("A\x81\x98\xB1\x82\xA0\x88\xEA"),
        FromUTF8("A\xC2\xA7\xEF\xBD\xB1\xE3\x81\x82\xE4\xB8\x80"));
}

TEST(SJISToUTF16, ConvertsATextOfAllKindsOfCharacters)
{
    EXPECT_EQ(Converted(L"A\xFF71\x3042\x4E00"), ToUTF16("A\xB1\x82\xA0\x88\xEA"));
}

TEST(UTF16ToSJIS, ConvertsATextOfAllKindsOfCharacters)
{
    EXPECT_EQ(Converted("A\xB1\x82\xA0\x88\xEA"), FromUTF16(L"A\xFF71\x3042\x4E00"));
}

TEST(SJISToUTF8, EmptyInputClearsTheOutputAndSucceeds)
{
    EXPECT_EQ(Converted(""), ToUTF8(""));
}

TEST(UTF8ToSJIS, EmptyInputClearsTheOutputAndSucceeds)
{
    EXPECT_EQ(Converted(""), FromUTF8(""));
}

TEST(SJISToUTF16, EmptyInputClearsTheOutputAndSucceeds)
{
    EXPECT_EQ(Converted(L""), ToUTF16(""));
}

TEST(UTF16ToSJIS, EmptyInputClearsTheOutputAndSucceeds)
{
    EXPECT_EQ(Converted(""), FromUTF16(L""));
}

TEST(CharacterCode, OneStringAsInputAndOutputIsAnEmptyInput)
{
    std::string text = "abc";
    EXPECT_TRUE(SJISToUTF8(text, text));
    EXPECT_EQ("", text);
    text = "abc";
    EXPECT_TRUE(UTF8ToSJIS(text, text));
    EXPECT_EQ("", text);
}

TEST(CharacterCode, LongTextOfManyBytesACharacterConvertsFromAnyStart)
{
    for (std::size_t letters = 0; letters < 3; ++letters)
    {
        std::string sjis(letters, 'a');
        std::string utf8(letters, 'a');
        std::wstring utf16(letters, L'a');
        for (int i = 0; i < 40; ++i)
        {
            sjis += "\x82\xA0";
            utf8 += "\xE3\x81\x82";
            utf16 += L'\x3042';
        }
        ExpectEveryDirection({sjis.c_str(), utf8.c_str(), utf16.c_str()});
    }
}

TEST(CharacterCode, LettersStayAsTheyAre)
{
    ExpectEveryDirection({"abc", "abc", L"abc"});
}

TEST(CharacterCode, BackslashIsNotAYenSign)
{
    ExpectEveryDirection({"\x5C", "\x5C", L"\x5C"});
}

TEST(CharacterCode, TildeIsNotAnOverline)
{
    ExpectEveryDirection({"\x7E", "\x7E", L"\x7E"});
}

TEST(CharacterCode, ControlBytesBelow20AreCopied)
{
    for (char control = 1; control < 0x20; ++control)
    {
        const std::string narrow(1, control);
        const std::wstring wide(1, static_cast<wchar_t>(control));
        ExpectEveryDirection({narrow.c_str(), narrow.c_str(), wide.c_str()});
    }
}

TEST(CharacterCode, SignsFollowMicrosoftsMapping)
{
    ExpectEveryDirection({"\x81\x5C", "\xE2\x80\x95", L"\x2015"});
    ExpectEveryDirection({"\x81\x60", "\xEF\xBD\x9E", L"\xFF5E"});
    ExpectEveryDirection({"\x81\x61", "\xE2\x88\xA5", L"\x2225"});
    ExpectEveryDirection({"\x81\x7C", "\xEF\xBC\x8D", L"\xFF0D"});
    ExpectEveryDirection({"\x81\x91", "\xEF\xBF\xA0", L"\xFFE0"});
    ExpectEveryDirection({"\x81\xCA", "\xEF\xBF\xA2", L"\xFFE2"});
}

TEST(CharacterCode, HalfWidthKatakanaIsASingleByte)
{
    ExpectEveryDirection({"\xB1", "\xEF\xBD\xB1", L"\xFF71"});
}

TEST(CharacterCode, HalfWidthKatakanaRunsFromA1ToDF)
{
    ExpectEveryDirection({"\xA1", "\xEF\xBD\xA1", L"\xFF61"});
    ExpectEveryDirection({"\xDF", "\xEF\xBE\x9F", L"\xFF9F"});
}

TEST(CharacterCode, HiraganaIsTwoBytes)
{
    ExpectEveryDirection({"\x82\xA0", "\xE3\x81\x82", L"\x3042"});
}

TEST(CharacterCode, TrailByteMayBeABackslash)
{
    ExpectEveryDirection({"\x95\x5C", "\xE8\xA1\xA8", L"\x8868"});
}

TEST(CharacterCode, AFailureIsRememberedWhenWhatFollowsConverts)
{
    EXPECT_EQ(Failed("*\xE3\x81\x82"), ToUTF8("\x82\xF2\x82\xA0"));
    EXPECT_EQ(Failed(L"*\x3042"), ToUTF16("\x82\xF2\x82\xA0"));
    EXPECT_EQ(Failed("*\x82\xA0"), FromUTF8("\xC2\xA5\xE3\x81\x82"));
    EXPECT_EQ(Failed("*\x82\xA0"), FromUTF16(L"\x00A5\x3042"));
}

TEST(CharacterCode, FindsTheOneOtherCharacterInALongRunOfLetters)
{
    const std::string letters(50, 'a');
    for (std::size_t position = 0; position < letters.size(); ++position)
    {
        std::string sjis = letters;
        std::string utf8 = letters;
        std::wstring utf16(letters.begin(), letters.end());
        sjis.replace(position, 1, "\xB1");
        utf8.replace(position, 1, "\xEF\xBD\xB1");
        utf16[position] = L'\xFF71';
        ExpectEveryDirection({sjis.c_str(), utf8.c_str(), utf16.c_str()});

        sjis.replace(position, 1, "\x7F");
        utf16[position] = L'\x7F';
        EXPECT_FALSE(ToUTF8(sjis).isAllConverted);
        EXPECT_FALSE(FromUTF8(sjis).isAllConverted);
        EXPECT_FALSE(ToUTF16(sjis).isAllConverted);
        EXPECT_FALSE(FromUTF16(utf16).isAllConverted);
    }
}

// Shift_JIS input

TEST(SJISToUTF8, CodeAfterTheLastHiraganaIsNotCovered)
{
    EXPECT_EQ(Failed("*"), ToUTF8("\x82\xF2"));
    EXPECT_EQ(Failed(L"*"), ToUTF16("\x82\xF2"));
}

TEST(SJISToUTF8, GoesOnAfterACodeThatIsNotCovered)
{
    EXPECT_EQ(Failed("*A"), ToUTF8("\x82\xF2\x41"));
    EXPECT_EQ(Failed(L"*A"), ToUTF16("\x82\xF2\x41"));
}

TEST(SJISToUTF8, LeadByteAtTheEndGivesAStarAlone)
{
    EXPECT_EQ(Failed("A*"), ToUTF8("A\x88"));
    EXPECT_EQ(Failed(L"A*"), ToUTF16("A\x88"));
}

TEST(SJISToUTF8, NECSelectionOfIBMExtensionsIsNotCovered)
{
    EXPECT_EQ(Failed("*"), ToUTF8("\xED\x40"));
    EXPECT_EQ(Failed(L"*"), ToUTF16("\xED\x40"));
}

TEST(SJISToUTF8, UserDefinedAreaIsNotCovered)
{
    EXPECT_EQ(Failed("*"), ToUTF8("\xF0\x40"));
    EXPECT_EQ(Failed(L"*"), ToUTF16("\xF0\x40"));
}

TEST(SJISToUTF8, SecondCodeOfACharacterIsNotCovered)
{
    EXPECT_EQ(Failed("*"), ToUTF8("\x87\x90"));
    EXPECT_EQ(Failed(L"*"), ToUTF16("\x87\x90"));
    EXPECT_EQ(Converted("\xE2\x89\x92"), ToUTF8("\x81\xE0")); // the first code of U+2252
}

TEST(SJISToUTF8, Bytes7F80AndA0SwallowTheByteAfter)
{
    for (const char* lead : {"\x7F", "\x80", "\xA0"})
    {
        EXPECT_EQ(Failed("*b"), ToUTF8(lead + "ab"s));
        EXPECT_EQ(Failed(L"*b"), ToUTF16(lead + "ab"s));
        EXPECT_EQ(Failed("*"), ToUTF8(lead));
        EXPECT_EQ(Failed(L"*"), ToUTF16(lead));
    }
}

TEST(SJISToUTF8, BytesFromFDOnSwallowTheByteAfter)
{
    for (const char* lead : {"\xFD", "\xFE", "\xFF"})
    {
        EXPECT_EQ(Failed("*b"), ToUTF8(lead + "ab"s));
        EXPECT_EQ(Failed(L"*b"), ToUTF16(lead + "ab"s));
    }
}

TEST(SJISToUTF8, NULTruncatesTheOutput)
{
    EXPECT_EQ(Converted("ab"), ToUTF8("ab\0cd"s));
}

TEST(SJISToUTF8, FailureAfterANULStillCounts)
{
    EXPECT_EQ(Failed("ab"), ToUTF8("ab\0\x82\xF2"s));
}

TEST(SJISToUTF8, NULAsATrailByteIsSwallowed)
{
    EXPECT_EQ(Failed("*b"), ToUTF8("\x82\0b"s));
}

TEST(SJISToUTF16, NULIsCopied)
{
    EXPECT_EQ(Converted(L"ab\0cd"s), ToUTF16("ab\0cd"s));
}

// UTF-8 input

TEST(UTF8ToSJIS, YenSignHasNoCode)
{
    EXPECT_EQ(Failed("*"), FromUTF8("\xC2\xA5"));
}

TEST(UTF8ToSJIS, SectionSignHasACode)
{
    EXPECT_EQ(Converted("\x81\x98"), FromUTF8("\xC2\xA7"));
}

TEST(UTF8ToSJIS, TwoByteLeadTakesOneByteWhateverItIs)
{
    for (const char* lead : {"\xC2", "\xC3", "\xCE", "\xCF", "\xD0", "\xD1"})
        EXPECT_EQ(Failed("*b"), FromUTF8(lead + "ab"s));
}

TEST(UTF8ToSJIS, TwoByteLeadAtTheEndGivesAStarAlone)
{
    EXPECT_EQ(Failed("A*"), FromUTF8("A\xC2"));
}

TEST(UTF8ToSJIS, OtherTwoByteLeadsTakeTwoBytes)
{
    for (const char* lead : {"\xC4", "\xCD", "\xD2", "\xDF"})
        EXPECT_EQ(Failed("*b"), FromUTF8(lead + "\x80"s + "ab"));
}

TEST(UTF8ToSJIS, Byte7FTakesTwoBytes)
{
    EXPECT_EQ(
        Failed("*c"), FromUTF8("\x7F"
                               "abc"));
}

TEST(UTF8ToSJIS, ThreeByteLeadTakesTwoBytesWhateverTheyAre)
{
    EXPECT_EQ(
        Failed("*c"), FromUTF8("\xE3"
                               "abc"));
    EXPECT_EQ(
        Failed("*c"), FromUTF8("\xE3"
                               "a\x82"
                               "c"));
    EXPECT_EQ(
        Failed("*c"), FromUTF8("\xE3\x81"
                               "bc"));
}

TEST(UTF8ToSJIS, LastByteOutside80ToBFHasNoCode)
{
    EXPECT_EQ(Failed("*"), FromUTF8("\xE3\x81\x7F"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xE3\x81\xC0"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xC2\x7F"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xC2\xE7"));
}

TEST(UTF8ToSJIS, ThreeByteFormNeedsALeadByteE0ToEF)
{
    EXPECT_EQ(Converted("\x82\xA0"), FromUTF8("\xE3\x81\x82"));
    EXPECT_EQ(Failed("*"), FromUTF8("\x93\x81\x82"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xD3\x81\x82"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xF3\x81\x82"));
}

TEST(UTF8ToSJIS, ThreeByteFormNeedsASecondByte80ToBF)
{
    EXPECT_EQ(Failed("*"), FromUTF8("\xE3\x01\x82"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xE3\x41\x82"));
    EXPECT_EQ(Failed("*"), FromUTF8("\xE3\xC1\x82"));
}

TEST(UTF8ToSJIS, BytesOfACutThreeByteFormGiveAStarEach)
{
    EXPECT_EQ(Failed("A**"), FromUTF8("A\xE3\x81"));
    EXPECT_EQ(Failed("A*"), FromUTF8("A\xE3"));
}

TEST(UTF8ToSJIS, TextAfterALeadWithTooFewBytesIsConverted)
{
    EXPECT_EQ(
        Failed("*b"), FromUTF8("\xE3"
                               "b"));
}

TEST(UTF8ToSJIS, FourByteFormGivesAStarForThreeBytesAndOneForTheFourth)
{
    EXPECT_EQ(Failed("**"), FromUTF8("\xF0\x9F\x98\x80"));
}

TEST(UTF8ToSJIS, FourthByteOfAFourByteFormSwallowsTwoBytesAfterIt)
{
    EXPECT_EQ(
        Failed("**c"), FromUTF8("\xF0\x9F\x98\x80"
                                "abc"));
}

TEST(UTF8ToSJIS, FourthByteOfAFourByteFormLeavesASingleByteAfterIt)
{
    EXPECT_EQ(
        Failed("**a"), FromUTF8("\xF0\x9F\x98\x80"
                                "a"));
}

TEST(UTF8ToSJIS, OverlongFormHasNoCode)
{
    EXPECT_EQ(Failed("*"), FromUTF8("\xE0\x82\xA7")); // U+00A7
}

TEST(UTF8ToSJIS, NULTruncatesTheOutput)
{
    EXPECT_EQ(Converted("ab"), FromUTF8("ab\0cd"s));
}

TEST(UTF8ToSJIS, FailureAfterANULStillCounts)
{
    EXPECT_EQ(Failed("ab"), FromUTF8("ab\0\xC2\xA5"s));
}

// UTF-16 input

TEST(UTF16ToSJIS, OnlyTheLow16BitsCount)
{
    if (!IsWideCharacter32Bits)
        GTEST_SKIP() << "wchar_t has 16 bits here";
    EXPECT_EQ(Converted("\x88\xEA"), FromUTF16({Wide(0x24E00)}));
    EXPECT_EQ(Converted("A"), FromUTF16({Wide(0x10041)}));
    EXPECT_EQ(Failed("*"), FromUTF16({Wide(0x1F600)}));
}

TEST(UTF16ToSJIS, DeleteYenSignAndOverlineHaveNoCode)
{
    EXPECT_EQ(Failed("*"), FromUTF16({Wide(0x7F)}));
    EXPECT_EQ(Failed("*"), FromUTF16({Wide(0xA5)}));
    EXPECT_EQ(Failed("*"), FromUTF16({Wide(0x203E)}));
}

TEST(UTF16ToSJIS, ARowOfDeletesGivesAStarEach)
{
    EXPECT_EQ(Failed("********"), FromUTF16(std::wstring(8, L'\x7F')));
}

TEST(UTF16ToSJIS, SurrogatePairGivesTwoStars)
{
    EXPECT_EQ(Failed("**b"), FromUTF16({Wide(0xD83D), Wide(0xDE00), L'b'}));
}

TEST(UTF16ToSJIS, NULTruncatesTheOutput)
{
    EXPECT_EQ(Converted("ab"), FromUTF16(L"ab\0cd"s));
}

TEST(UTF16ToSJIS, FailureAfterANULStillCounts)
{
    EXPECT_EQ(Failed("ab"), FromUTF16(L"ab\0\x00A5"s));
}

TEST(UTF16ToSJIS, ValueWithLow16BitsZeroTruncatesTheOutput)
{
    if (!IsWideCharacter32Bits)
        GTEST_SKIP() << "wchar_t has 16 bits here";
    EXPECT_EQ(Converted("a"), FromUTF16({L'a', Wide(0x10000), L'b'}));
}
