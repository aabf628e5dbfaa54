#include "Independent/FormatString/FormatString.h"

#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "CountingText.h"
#include "Support/IntLimits.h"

using namespace formatstring;
using namespace std::string_literals;
using testsupport::HighestInt;
using testsupport::LowestInt;

namespace
{

template <typename Function>
constexpr bool Is(Function)
{
    return true;
}

static_assert(Is<std::string (*)(const char*, ...)>(&Format));
static_assert(Is<std::string (*)(const char*, va_list&)>(&Format));
static_assert(Is<int (*)(char*, unsigned long, const char*, va_list&)>(&FormatArgs));
static_assert(Is<int (*)(char*, unsigned int, const char*, int)>(&PrintInt));
static_assert(Is<int (*)(char*, unsigned int, const char*, float)>(&PrintFloat));
static_assert(Is<int (*)(char*, unsigned int, const char*, const char*)>(&PrintString));
static_assert(Is<char* (*)(char*, unsigned int, const char*)>(&CopyString));
static_assert(Is<bool (*)(const std::string&, int&)>(&ScanInt));
static_assert(Is<bool (*)(const std::string&, unsigned int&)>(&ScanUnsignedInt));
static_assert(Is<bool (*)(const std::string&, int&)>(&ScanHexInt));
static_assert(Is<bool (*)(const std::string&, float&)>(&ScanFloat));
static_assert(Is<std::string (*)(int)>(&ToString));
static_assert(Is<std::string (*)(float)>(&ToString));
static_assert(Is<std::string (*)(const std::string&)>(&ToString));

/// A size that is too small for every text, passed where it must not be enforced.
constexpr unsigned int TooSmall = 1;

/// Room for a text of 20,000 characters, filled with something.
struct SBuffer
{
    std::string bytes = std::string(20001, '#');
    char* data = bytes.data();
};

std::string FormatCollected(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const std::string text = Format(format, args);
    va_end(args);
    return text;
}

int FormatArgsCollected(char* dest, unsigned long size, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const int count = FormatArgs(dest, size, format, args);
    va_end(args);
    return count;
}

} // namespace

TEST(Format, GivesTheFormattedText)
{
    EXPECT_EQ("LightMap012.png", Format("LightMap%03d.%s", 12, "png"));
    EXPECT_EQ("50%", Format("50%%"));
    EXPECT_EQ("", Format(""));
}

TEST(Format, EndsAtTheFirstZeroByteOfTheResult)
{
    EXPECT_EQ("a", Format("a%cb", 0));
}

TEST(Format, KeepsTheLongestTextThatTheBufferHolds)
{
    const std::string text = MakeCountingText(LongestText);
    EXPECT_EQ(text, Format("%s", text.c_str()));
}

TEST(Format, CutsALongerText)
{
    for (std::size_t length : {std::size_t{16384}, std::size_t{20000}})
    {
        const std::string text = MakeCountingText(length);
        EXPECT_EQ(text.substr(0, LongestText), Format("%s", text.c_str())) << length;
    }
}

TEST(FormatOfCollectedArguments, GivesTheFormattedText)
{
    EXPECT_EQ("7 and 1.5 and x", FormatCollected("%d and %.1f and %s", 7, 1.5, "x"));
}

TEST(FormatOfCollectedArguments, EndsAtTheFirstZeroByteOfTheResult)
{
    EXPECT_EQ("a", FormatCollected("a%cb", 0));
}

TEST(FormatOfCollectedArguments, KeepsTheLongestTextThatTheBufferHolds)
{
    const std::string text = MakeCountingText(LongestText);
    EXPECT_EQ(text, FormatCollected("%s", text.c_str()));
}

TEST(FormatOfCollectedArguments, CutsALongerText)
{
    for (std::size_t length : {std::size_t{16384}, std::size_t{20000}})
    {
        const std::string text = MakeCountingText(length);
        EXPECT_EQ(text.substr(0, LongestText), FormatCollected("%s", text.c_str())) << length;
    }
}

TEST(FormatArgs, FormatsIntoTheCallersBufferAndReturnsTheCount)
{
    SBuffer buffer;
    EXPECT_EQ(6, FormatArgsCollected(buffer.data, 20001, "%d-%s", 12, "abc"));
    EXPECT_EQ("12-abc\0#"s, buffer.bytes.substr(0, 8));
}

TEST(FormatArgs, DoesNotEnforceTheSize)
{
    for (unsigned long size : {0ul, 1ul, 4ul})
    {
        SBuffer buffer;
        EXPECT_EQ(6, FormatArgsCollected(buffer.data, size, "%s", "abcdef"));
        EXPECT_STREQ("abcdef", buffer.data);
    }
}

TEST(FormatArgs, DoesNotCutALongText)
{
    const std::string text = MakeCountingText(20000);
    SBuffer buffer;
    EXPECT_EQ(20000, FormatArgsCollected(buffer.data, FormatBufferSize, "%s", text.c_str()));
    EXPECT_EQ(text, buffer.data);
}

TEST(PrintInt, FormatsOneIntAndReturnsTheCount)
{
    SBuffer buffer;
    EXPECT_EQ(5, PrintInt(buffer.data, 20001, "[%03d]", 7));
    EXPECT_EQ("[007]\0#"s, buffer.bytes.substr(0, 7));
}

TEST(PrintInt, DoesNotEnforceTheSize)
{
    SBuffer buffer;
    EXPECT_EQ(20000, PrintInt(buffer.data, TooSmall, "%020000d", -1));
    EXPECT_EQ("-" + std::string(19998, '0') + "1", buffer.data);
}

TEST(PrintFloat, FormatsTheFloatWidenedToDouble)
{
    SBuffer buffer;
    EXPECT_EQ(4, PrintFloat(buffer.data, 20001, "%.2f", 1.5f));
    EXPECT_EQ("1.50\0#"s, buffer.bytes.substr(0, 6));
    EXPECT_EQ(12, PrintFloat(buffer.data, 20001, "%.10f", 0.1f));
    EXPECT_STREQ("0.1000000015", buffer.data);
}

TEST(PrintFloat, DoesNotEnforceTheSize)
{
    SBuffer buffer;
    EXPECT_EQ(9, PrintFloat(buffer.data, TooSmall, "%f", -2.5f));
    EXPECT_STREQ("-2.500000", buffer.data);
}

TEST(PrintString, FormatsOneTextAndReturnsTheCount)
{
    SBuffer buffer;
    EXPECT_EQ(6, PrintString(buffer.data, 20001, "<%4s>", "%d"));
    EXPECT_EQ("<  %d>\0#"s, buffer.bytes.substr(0, 8));
}

TEST(PrintString, DoesNotEnforceTheSize)
{
    const std::string text = MakeCountingText(20000);
    SBuffer buffer;
    EXPECT_EQ(20000, PrintString(buffer.data, TooSmall, "%s", text.c_str()));
    EXPECT_EQ(text, buffer.data);
}

TEST(CopyString, CopiesTheTextWithItsTerminatorAndReturnsTheDestination)
{
    SBuffer buffer;
    EXPECT_EQ(buffer.data, CopyString(buffer.data, 20001, "%s\\n"));
    EXPECT_EQ("%s\\n\0#"s, buffer.bytes.substr(0, 6));
    EXPECT_EQ(buffer.data, CopyString(buffer.data, 20001, ""));
    EXPECT_STREQ("", buffer.data);
}

TEST(CopyString, DoesNotEnforceTheSize)
{
    const std::string text = MakeCountingText(20000);
    SBuffer buffer;
    CopyString(buffer.data, TooSmall, text.c_str());
    EXPECT_EQ(text, buffer.data);
}

TEST(ScanInt, IgnoresWhatFollowsTheNumber)
{
    int value = 0;
    EXPECT_TRUE(ScanInt("12abc", value));
    EXPECT_EQ(12, value);
}

TEST(ScanInt, LeavesTheValueUnchangedWhereThereIsNoNumber)
{
    for (const std::string& text : {"abc"s, ""s, " "s, "-"s, "a1"s, "\0001"s})
    {
        int value = 99;
        EXPECT_FALSE(ScanInt(text, value)) << text;
        EXPECT_EQ(99, value) << text;
    }
}

TEST(ScanInt, ReadsDecimalIntsOfTheWholeRangeAfterWhiteSpace)
{
    int value = 0;
    EXPECT_TRUE(ScanInt("-2147483648", value));
    EXPECT_EQ(LowestInt, value);
    EXPECT_TRUE(ScanInt(" \t\n+2147483647", value));
    EXPECT_EQ(HighestInt, value);
    EXPECT_TRUE(ScanInt("010", value));
    EXPECT_EQ(10, value);
    EXPECT_TRUE(ScanInt("0x10", value));
    EXPECT_EQ(0, value);
}

TEST(ScanUnsignedInt, ReadsTheWholeUnsignedRange)
{
    unsigned int value = 0;
    EXPECT_TRUE(ScanUnsignedInt("4294967295 apples", value));
    EXPECT_EQ(4294967295u, value);
    EXPECT_TRUE(ScanUnsignedInt(" 0", value));
    EXPECT_EQ(0u, value);
}

TEST(ScanUnsignedInt, LeavesTheValueUnchangedWhereThereIsNoNumber)
{
    for (const std::string& text : {"abc"s, ""s, "x1"s})
    {
        unsigned int value = 99;
        EXPECT_FALSE(ScanUnsignedInt(text, value)) << text;
        EXPECT_EQ(99u, value) << text;
    }
}

TEST(ScanHexInt, ReadsHexadecimalDigits)
{
    int value = 0;
    EXPECT_TRUE(ScanHexInt("ff", value));
    EXPECT_EQ(255, value);
    EXPECT_TRUE(ScanHexInt("0x1Fz", value));
    EXPECT_EQ(31, value);
    EXPECT_TRUE(ScanHexInt("10", value));
    EXPECT_EQ(16, value);
    EXPECT_TRUE(ScanHexInt("ffffffff", value));
    EXPECT_EQ(-1, value);
}

TEST(ScanHexInt, LeavesTheValueUnchangedWhereThereIsNoNumber)
{
    for (const std::string& text : {"xyz"s, ""s, "g1"s})
    {
        int value = 99;
        EXPECT_FALSE(ScanHexInt(text, value)) << text;
        EXPECT_EQ(99, value) << text;
    }
}

TEST(ScanFloat, ReadsADecimalFraction)
{
    float value = 0.0f;
    EXPECT_TRUE(ScanFloat("1.5m", value));
    EXPECT_EQ(1.5f, value);
    EXPECT_TRUE(ScanFloat(" -25e-1", value));
    EXPECT_EQ(-2.5f, value);
    EXPECT_TRUE(ScanFloat("3", value));
    EXPECT_EQ(3.0f, value);
}

TEST(ScanFloat, LeavesTheValueUnchangedWhereThereIsNoNumber)
{
    for (const std::string& text : {"abc"s, ""s, "."s})
    {
        float value = 9.5f;
        EXPECT_FALSE(ScanFloat(text, value)) << text;
        EXPECT_EQ(9.5f, value) << text;
    }
}

TEST(ToString, OfAnIntIsItsDecimalText)
{
    EXPECT_EQ("0", ToString(0));
    EXPECT_EQ("2147483647", ToString(HighestInt));
    EXPECT_EQ("-2147483648", ToString(LowestInt));
}

TEST(ToString, OfAFloatHasSixDecimals)
{
    EXPECT_EQ("1.500000", ToString(1.5f));
    EXPECT_EQ("-0.000001", ToString(-1e-6f));
    EXPECT_EQ("0.000000", ToString(1e-9f));
    EXPECT_EQ("16777216.000000", ToString(16777216.0f));
}

TEST(ToString, OfATextIsACopyUpToItsFirstZeroByte)
{
    EXPECT_EQ("%d %s", ToString("%d %s"s));
    EXPECT_EQ("ab", ToString("ab\0cd"s));
    EXPECT_EQ("", ToString(""s));
}

TEST(ToString, OfALongTextIsCutAsByFormat)
{
    const std::string text = MakeCountingText(20000);
    EXPECT_EQ(text.substr(0, LongestText), ToString(text));
}
