#include "ZekTool/Output/Text.h"

#include <gtest/gtest.h>

namespace
{

using namespace zektool;

TEST(Text, UTF8IsWhatItsDefinitionSays)
{
    for (const char* text :
         {"", "a", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(IsUTF8(text)) << text;
    for (const char* bytes :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC2", "\xE3\x81",
          "\xF0\x9F\x98", "\xC2\x41", "a\xE9", "\xE3\x81\x41"})
        EXPECT_FALSE(IsUTF8(bytes)) << MakeShowable(bytes);
}

TEST(Text, WhatWouldBreakALineOrATerminalIsWrittenInHex)
{
    EXPECT_EQ("a b'\"\\c", MakeShowable("a b'\"\\c"));
    EXPECT_EQ("\xE6\x97\xA5", MakeShowable("\xE6\x97\xA5"));
    EXPECT_EQ("a\\x0ab\\x1b[2J\\x7f", MakeShowable("a\nb\x1B[2J\x7F"));
    EXPECT_EQ(
        "\\xc2\\x9b1m", MakeShowable("\xC2\x9B"
                                     "1m"));
    EXPECT_EQ("\xC2\xA0", MakeShowable("\xC2\xA0"));
    for (const char* steering : {"\u061C", "\u200E", "\u2028", "\u202E", "\u2066", "\u2069"})
        EXPECT_EQ(std::string::npos, MakeShowable(steering).find(steering));
    for (const char* plain : {"\u200D", "\u2027", "\u202F", "\u2065", "\u206A"})
        EXPECT_EQ(plain, MakeShowable(plain));
    EXPECT_EQ("\\xe9x\\xff", MakeShowable("\xE9x\xFF"));
    EXPECT_EQ("\"a\\x00\"", MakeQuoted(std::string_view("a\0", 2)));
}

TEST(Text, SmallLettersAreThoseOfEnglishAlone)
{
    EXPECT_EQ("az@[\x80\xC3\x84", zektool::MakeSmall("AZ@[\x80\xC3\x84"));
    EXPECT_EQ('b', zektool::MakeSmall('B'));
}

TEST(Text, OnlyOneIsSingular)
{
    EXPECT_EQ("0 meshes", MakeCount(0, "mesh", "meshes"));
    EXPECT_EQ("1 mesh", MakeCount(1, "mesh", "meshes"));
    EXPECT_EQ("2 meshes", MakeCount(2, "mesh", "meshes"));
}

TEST(Text, AFailureIsALineOfItsModel)
{
    EXPECT_EQ("a\\x0a: failed: no\n", MakeFailureLine("a\n", EOutcome::Failed, "no"));
    EXPECT_EQ("a: not done\n", MakeFailureLine("a", EOutcome::NotDone, "not done"));
}

} // namespace
