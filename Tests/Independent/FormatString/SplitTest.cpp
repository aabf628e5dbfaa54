#include <random>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/FormatString/FormatString.h"
#include "RandomText.h"

using formatstring::Split;
using testsupport::MakeRandomText;
using namespace std::string_literals;

using Pieces = std::vector<std::string>;

static_assert(std::is_same_v<decltype(&Split), Pieces (*)(const std::string&, const std::string&)>);

namespace
{

const std::string Alphabet = "ab,\x81\0"s;

/// What `Split` does, byte by byte.
Pieces SplitSlowly(const std::string& text, const std::string& separator)
{
    Pieces pieces{""};
    for (std::size_t i = 0; i < text.length();)
    {
        if (text.substr(i, separator.length()) == separator)
        {
            pieces.emplace_back();
            i += separator.length();
        }
        else
        {
            pieces.back() += text[i++];
        }
    }
    return pieces;
}

std::string Join(const Pieces& pieces, const std::string& separator)
{
    std::string text = pieces.front();
    for (std::size_t i = 1; i < pieces.size(); ++i)
        text += separator + pieces[i];
    return text;
}

} // namespace

TEST(Split, GivesThePiecesBetweenSeparators)
{
    EXPECT_EQ(Pieces({"a", "b", "", "c"}), Split("a,b,,c", ","));
}

TEST(Split, OfTheEmptyTextIsOneEmptyPiece)
{
    EXPECT_EQ(Pieces({""}), Split("", ","));
}

TEST(Split, OfATextWithoutTheSeparatorIsThatText)
{
    EXPECT_EQ(Pieces({"abc"}), Split("abc", ","));
    EXPECT_EQ(Pieces({"a"}), Split("a", "ab"));
}

TEST(Split, GivesEmptyPiecesForConsecutiveSeparators)
{
    EXPECT_EQ(Pieces({"", "", ""}), Split(",,", ","));
}

TEST(Split, GivesEmptyPiecesBeforeAndAfterSeparatorsAtTheEnds)
{
    EXPECT_EQ(Pieces({"", "a", ""}), Split(",a,", ","));
    EXPECT_EQ(Pieces({"", ""}), Split(", ", ", "));
}

TEST(Split, TakesASeparatorOfSeveralBytesAsAWhole)
{
    EXPECT_EQ(Pieces({"a,b", "c"}), Split("a,b, c", ", "));
    EXPECT_EQ(Pieces({"", "a"}), Split("aaa", "aa"));
}

TEST(Split, FindsTheSeparatorInsideATwoByteCharacter)
{
    EXPECT_EQ(Pieces({"a\x83", "b"}), Split("a\x83\\b", "\\"));
}

TEST(Split, TakesZeroBytesLikeOthers)
{
    EXPECT_EQ(Pieces({"a\0b"s, "c"}), Split("a\0b,c"s, ","));
    EXPECT_EQ(Pieces({"a", "b"}), Split("a\0b"s, "\0"s));
}

TEST(Split, AtAnEmptySeparatorGivesTheTextAsTheOnlyPiece)
{
    EXPECT_EQ(Pieces({"abc"}), Split("abc", ""));
    EXPECT_EQ(Pieces({""}), Split("", ""));
}

TEST(Split, AgreesWithASlowModelOnRandomTextsAndJoinsToTheText)
{
    std::mt19937 random(20242);
    for (int i = 0; i < 50000 && !testing::Test::HasFailure(); ++i)
    {
        const std::string text = MakeRandomText(random, Alphabet, 0, 12);
        const std::string separator = MakeRandomText(random, Alphabet, 1, 3);
        SCOPED_TRACE(
            "case " + std::to_string(i) + ", text " + testing::PrintToString(text) +
            ", separator " + testing::PrintToString(separator));
        const Pieces pieces = Split(text, separator);
        EXPECT_EQ(SplitSlowly(text, separator), pieces);
        EXPECT_EQ(text, Join(pieces, separator));
    }
}
