#include <random>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/FormatString/FormatString.h"
#include "RandomText.h"
#include "Support/LeadByte.h"

using formatstring::Replace;
using testsupport::IsLeadByte;
using testsupport::MakeRandomText;
using namespace std::string_literals;

static_assert(std::is_same_v<
              decltype(&Replace),
              std::string (*)(const std::string&, const std::string&, const std::string&)>);

namespace
{

const std::string Alphabet = "aab\\\x81\x9F\xE0\xEF\x80\xA0\xF0\0"s;

/// What `Replace` does, told by what stands at the front of the text.
std::string ReplaceSlowly(const std::string& text, const std::string& from, const std::string& to)
{
    if (text.length() < from.length())
        return "";
    if (text.substr(0, from.length()) == from)
        return to + ReplaceSlowly(text.substr(from.length()), from, to);
    if (!IsLeadByte(text[0]))
        return text.substr(0, 1) + ReplaceSlowly(text.substr(1), from, to);
    if (text.length() == 1)
        return text + '\0';
    return text.substr(0, 2) + ReplaceSlowly(text.substr(2), from, to);
}

} // namespace

TEST(Replace, ReplacesEveryMatch)
{
    EXPECT_EQ("aXaX", Replace("abcabc", "bc", "X"));
    EXPECT_EQ("XX", Replace("aa", "a", "X"));
}

TEST(Replace, DropsTheTailThatNoMatchCovers)
{
    EXPECT_EQ("abcde", Replace("abcdef", "xy", "Z"));
    EXPECT_EQ("abcd", Replace("abcdef", "xyz", "Z"));
    EXPECT_EQ("Xa", Replace("bcab", "bc", "X"));
}

TEST(Replace, KeepsTheWholeTextWhenOneByteIsReplaced)
{
    EXPECT_EQ("abcdef", Replace("abcdef", "x", "Z"));
    EXPECT_EQ("a/b/c", Replace("a\\b\\c", "\\", "/"));
}

TEST(Replace, OfATextShorterThanFromIsEmpty)
{
    EXPECT_EQ("", Replace("ab", "abc", "X"));
    EXPECT_EQ("", Replace("", "a", "X"));
}

TEST(Replace, OfATextEqualToFromIsTo)
{
    EXPECT_EQ("X", Replace("abc", "abc", "X"));
    EXPECT_EQ("", Replace("abc", "abc", ""));
}

TEST(Replace, FindsAMatchAtTheLastPositionWhereItFits)
{
    EXPECT_EQ("abX", Replace("abcd", "cd", "X"));
}

TEST(Replace, TakesMatchesFromLeftToRightWithoutOverlap)
{
    EXPECT_EQ("X", Replace("aaa", "aa", "X"));
    EXPECT_EQ("XX", Replace("aaaa", "aa", "X"));
}

TEST(Replace, DoesNotLookIntoWhatItPutIn)
{
    EXPECT_EQ("aaaa", Replace("aa", "a", "aa"));
    EXPECT_EQ("abb", Replace("ab", "a", "ab"));
}

TEST(Replace, ComparesZeroBytesLikeOthers)
{
    EXPECT_EQ("a-b"s, Replace("a\0b"s, "\0"s, "-"));
    EXPECT_EQ("a\0\0b"s, Replace("a-b", "-", "\0\0"s));
}

TEST(Replace, NeverSeeksAMatchInsideATwoByteCharacter)
{
    EXPECT_EQ("\x83\x5C/", Replace("\x83\x5C\\", "\\", "/"));
    EXPECT_EQ(
        "\x83"
        "ab"s,
        Replace(
            "\x83"
            "ab"s,
            "a", "X"));
    EXPECT_EQ(
        "\x83"
        "aX"s,
        Replace(
            "\x83"
            "aab"s,
            "ab", "X"));
}

TEST(Replace, TakesJustTheLeadBytesOfShiftJISForSuch)
{
    for (int byte = 0; byte < 256; ++byte)
    {
        const std::string character(1, static_cast<char>(byte));
        if (byte != '\\')
        {
            EXPECT_EQ(
                character + (IsLeadByte(character[0]) ? "\\" : "/"),
                Replace(character + "\\", "\\", "/"))
                << byte;
        }
    }
}

TEST(Replace, ReplacesAWholeTwoByteCharacter)
{
    EXPECT_EQ(
        "aXb", Replace(
                   "a\x83\x5C"
                   "bc",
                   "\x83\x5C", "X"));
}

TEST(Replace, MatchesALeadByteByItself)
{
    EXPECT_EQ("X\\", Replace("\x83\\", "\x83", "X"));
}

TEST(Replace, CopiesBothBytesOfATwoByteCharacterAtTheLastPosition)
{
    EXPECT_EQ(
        "ab\x83"
        "c"s,
        Replace(
            "ab\x83"
            "c"s,
            "xy", "Z"));
}

TEST(Replace, AppendsAZeroByteToALeadByteAtTheVeryEnd)
{
    EXPECT_EQ("a\x81\0"s, Replace("a\x81", "x", "Z"));
    EXPECT_EQ("\xEF\0"s, Replace("\xEF", "x", "Z"));
    EXPECT_EQ("a", Replace("a\x81", "xy", "Z")) << "after the last position, hence dropped";
}

TEST(Replace, WithAnEmptyFromGivesTheTextBack)
{
    EXPECT_EQ("abc", Replace("abc", "", "X"));
    EXPECT_EQ("a\x81", Replace("a\x81", "", "X"));
    EXPECT_EQ("", Replace("", "", "X"));
}

TEST(Replace, AgreesWithASlowModelOnRandomTexts)
{
    std::mt19937 random(20241);
    for (int i = 0; i < 50000 && !testing::Test::HasFailure(); ++i)
    {
        const std::string text = MakeRandomText(random, Alphabet, 0, 12);
        const std::string from = MakeRandomText(random, Alphabet, 1, 3);
        const std::string to = MakeRandomText(random, Alphabet, 0, 3);
        EXPECT_EQ(ReplaceSlowly(text, from, to), Replace(text, from, to))
            << "case " << i << ", text " << testing::PrintToString(text) << ", from "
            << testing::PrintToString(from) << ", to " << testing::PrintToString(to);
    }
}
