#include "Independent/FormatString/LFormat.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "CountingText.h"

static_assert(std::is_same_v<decltype(&LFormat::Make), std::string (*)(const char*, ...)>);

TEST(LFormat, MakePadsANumberAndAppendsAText)
{
    EXPECT_EQ("007.png", LFormat::Make("%03d.%s", 7, "png"));
}

TEST(LFormat, MakeOfAFormatWithoutConversionsGivesItsText)
{
    EXPECT_EQ("plain", LFormat::Make("plain"));
    EXPECT_EQ("", LFormat::Make("%s", ""));
}

TEST(LFormat, MakeInterpretsAPercentOnce)
{
    EXPECT_EQ("100%", LFormat::Make("100%%"));
    EXPECT_EQ("%d %n", LFormat::Make("%s", "%d %n"));
}

TEST(LFormat, MakeEndsAtTheFirstZeroByteOfTheResult)
{
    EXPECT_EQ("a", LFormat::Make("a%cb", 0));
}

TEST(LFormat, MakeFormatsEachKindOfArgument)
{
    EXPECT_EQ(
        "-5|4294967291|ff|1.25|x|  y",
        LFormat::Make("%d|%u|%x|%.2f|%c|%3s", -5, -5, 255, 1.25, 'x', "y"));
}

TEST(LFormat, MakeKeepsTheLongestTextThatTheBufferHolds)
{
    const std::string text = MakeCountingText(LongestText);
    EXPECT_EQ(text, LFormat::Make("%s", text.c_str()));
}

TEST(LFormat, MakeCutsATextOneCharacterTooLong)
{
    const std::string text = MakeCountingText(LongestText + 1);
    EXPECT_EQ(text.substr(0, LongestText), LFormat::Make("%s", text.c_str()));
}

TEST(LFormat, MakeCutsATextOfTwentyThousandCharacters)
{
    const std::string text = MakeCountingText(20000);
    EXPECT_EQ(text.substr(0, LongestText), LFormat::Make("%s", text.c_str()));
    EXPECT_EQ(text.substr(0, LongestText), LFormat::Make("%s.%s", text.c_str(), "png"));
}

TEST(LFormat, MakeCutsInsideANumber)
{
    const std::string text = MakeCountingText(LongestText - 2);
    EXPECT_EQ(text + "12", LFormat::Make("%s%d", text.c_str(), 123456));
}
