#include "Independent/CharacterCode/Unicode.h"

#include <gtest/gtest.h>

namespace
{

using charactercode::TakeUTF8Character;
using charactercode::UTF16ToUTF8;
using charactercode::UTF8ToUTF16;

TEST(Unicode, EveryCodeComesBackFromUTF8)
{
    for (char32_t code = 1; code <= 0x10FFFF; ++code)
    {
        const std::u16string text = code < 0x10000
                                        ? std::u16string(1, static_cast<char16_t>(code))
                                        : std::u16string{
                                              static_cast<char16_t>(0xD7C0 + (code >> 10)),
                                              static_cast<char16_t>(0xDC00 + (code & 0x3FF))};
        std::u16string back;
        ASSERT_TRUE(UTF8ToUTF16(back, UTF16ToUTF8(text))) << std::hex << code;
        ASSERT_EQ(text, back) << std::hex << code;
    }
}

TEST(Unicode, TheBytesAreThoseOfUTF8)
{
    EXPECT_EQ("", UTF16ToUTF8(u""));
    EXPECT_EQ("aé日😀z", UTF16ToUTF8(u"aé日😀z"));
    EXPECT_EQ(std::string("\0\x7F", 2), UTF16ToUTF8(std::u16string(u"\0\x7F", 2)));
    EXPECT_EQ("\xF4\x8F\xBF\xBF", UTF16ToUTF8(u"\xDBFF\xDFFF"));
}

TEST(Unicode, HalfASurrogatePairIsKept)
{
    const std::u16string high(1, char16_t{0xD83D});
    const std::u16string low(1, char16_t{0xDE00});
    EXPECT_EQ("\xED\xA0\xBD", UTF16ToUTF8(high));
    EXPECT_EQ("\xED\xB8\x80", UTF16ToUTF8(low));
    EXPECT_EQ("\xED\xB8\x80\xED\xA0\xBD", UTF16ToUTF8(low + high));
    EXPECT_EQ("\xED\xA0\xBD\xF0\x9F\x98\x80", UTF16ToUTF8(high + high + low));
    std::u16string back;
    EXPECT_TRUE(UTF8ToUTF16(back, "\xED\xA0\xBD"));
    EXPECT_EQ(high, back);
}

TEST(Unicode, CharactersAreTakenOneByOne)
{
    std::string_view text = "aé\xED\xA0\xBD😀\xFF";
    char32_t code = 0;
    for (const char32_t expected : {U'a', U'é', char32_t{0xD83D}, U'😀'})
    {
        EXPECT_TRUE(TakeUTF8Character(text, code));
        EXPECT_EQ(expected, code);
    }
    EXPECT_FALSE(TakeUTF8Character(text, code));
    EXPECT_EQ("\xFF", text);
    text = "\xC1\xBF";
    EXPECT_FALSE(TakeUTF8Character(text, code));
    EXPECT_EQ("\xC1\xBF", text);
}

TEST(Unicode, SurrogatesAreKnown)
{
    EXPECT_FALSE(charactercode::IsSurrogate(0xD7FF));
    EXPECT_TRUE(charactercode::IsSurrogate(0xD800));
    EXPECT_TRUE(charactercode::IsSurrogate(0xDFFF));
    EXPECT_FALSE(charactercode::IsSurrogate(0xE000));
}

TEST(Unicode, NoCodeBeyondTheLastIsTaken)
{
    constexpr unsigned firstBeyond = 0x110000;
    constexpr unsigned lastOfFourBytes = 0x1FFFFF;
    for (unsigned code = firstBeyond; code <= lastOfFourBytes; ++code)
    {
        const std::string bytes = {
            static_cast<char>(0xF0 | code >> 18), static_cast<char>(0x80 | (code >> 12 & 0x3F)),
            static_cast<char>(0x80 | (code >> 6 & 0x3F)), static_cast<char>(0x80 | (code & 0x3F))};
        std::string_view text = bytes;
        char32_t taken = 0;
        ASSERT_FALSE(TakeUTF8Character(text, taken)) << code;
        ASSERT_EQ(bytes, text);
    }
}

TEST(Unicode, OtherBytesAreRefused)
{
    for (const char* bytes :
         {"\x80", "\xC3", "\xC3(", "\xE6\x97", "\xF0\x9F\x98", "\xC0\x80", "\xE0\x9F\xBF",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF", "a\xE9"})
    {
        std::u16string text = u"old";
        EXPECT_FALSE(UTF8ToUTF16(text, bytes)) << bytes;
        EXPECT_EQ(u"", text) << bytes;
    }
}

} // namespace
