// Every code and code point, and random bytes, against the system's iconv(3).

#include <cstring>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Independent/CharacterCode/CCodePage932.h"
#include "Independent/CharacterCode/CharacterCode.h"

using namespace charactercode;

namespace
{

/// A slow and plain conversion, to compare with.
struct SModelResult
{
    bool isAllConverted = true;
    std::u32string characters;
    std::string bytes;
};

std::string UpToNUL(const std::string& text)
{
    return text.substr(0, text.find('\0'));
}

bool IsBetween(int value, int first, int last)
{
    return first <= value && value <= last;
}

int Byte(const std::string& text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

SModelResult DecodeShiftJISSlowly(const std::string& sjis)
{
    const CCodePage932& codePage = CCodePage932::Get();
    SModelResult result;
    std::size_t position = 0;
    while (position < sjis.size())
    {
        const int byte = Byte(sjis, position);
        const bool isOneByte = IsBetween(byte, 0x00, 0x7E) || IsBetween(byte, 0xA1, 0xDF);
        const bool isCut = !isOneByte && position + 1 == sjis.size();
        char32_t character = 0;
        if (isOneByte)
            character = codePage.FindCharacter(static_cast<unsigned>(byte));
        else if (!isCut)
            character = codePage.FindCharacter(
                static_cast<unsigned>(byte * 0x100 + Byte(sjis, position + 1)));
        position += isOneByte || isCut ? 1 : 2;

        const bool isControl = byte < 0x20;
        if (isControl)
            result.characters += static_cast<char32_t>(byte);
        else
        {
            result.characters += character == 0 ? U'*' : character;
            result.isAllConverted = result.isAllConverted && character != 0;
        }
    }
    for (const char32_t character : result.characters)
        result.bytes += EncodeUTF8(character);
    result.bytes = UpToNUL(result.bytes);
    return result;
}

void AppendCodeOrStar(SModelResult& result, unsigned code)
{
    result.bytes += code == 0 ? "*" : CodeBytes(code);
    result.isAllConverted = result.isAllConverted && code != 0;
}

SModelResult EncodeUTF8ToShiftJISSlowly(const std::string& utf8)
{
    const CCodePage932& codePage = CCodePage932::Get();
    SModelResult result;
    std::size_t position = 0;
    while (position < utf8.size())
    {
        const int byte = Byte(utf8, position);
        if (byte <= 0x7E)
        {
            result.bytes += static_cast<char>(byte);
            ++position;
            continue;
        }

        const std::size_t size = std::strchr("\xC2\xC3\xCE\xCF\xD0\xD1", byte) != nullptr ? 2 : 3;
        if (utf8.size() - position < size)
        {
            AppendCodeOrStar(result, 0);
            ++position;
            continue;
        }
        // A form counts if it is the one that encodes a covered character.
        const std::string form = utf8.substr(position, size);
        const int lastBits = Byte(form, size - 1) & 0x3F;
        const int codePoint = size == 2
                                  ? (byte & 0x1F) << 6 | lastBits
                                  : (byte & 0x0F) << 12 | (Byte(form, 1) & 0x3F) << 6 | lastBits;
        const bool isItsForm = EncodeUTF8(static_cast<char32_t>(codePoint)) == form;
        AppendCodeOrStar(
            result, isItsForm ? codePage.FindCode(static_cast<char32_t>(codePoint)) : 0);
        position += size;
    }
    result.bytes = UpToNUL(result.bytes);
    return result;
}

std::wstring Widen(const std::u32string& characters)
{
    std::wstring wide;
    for (const char32_t character : characters)
        wide += static_cast<wchar_t>(character);
    return wide;
}

void ExpectShiftJISDecodedAsByTheModel(const std::string& sjis)
{
    const SModelResult expected = DecodeShiftJISSlowly(sjis);
    std::string utf8;
    std::wstring utf16;
    ASSERT_EQ(expected.isAllConverted, SJISToUTF8(utf8, sjis)) << Hexadecimal(sjis);
    ASSERT_EQ(expected.bytes, utf8) << Hexadecimal(sjis);
    ASSERT_EQ(expected.isAllConverted, SJISToUTF16(utf16, sjis)) << Hexadecimal(sjis);
    ASSERT_EQ(Widen(expected.characters), utf16) << Hexadecimal(sjis);
}

void ExpectUTF8EncodedAsByTheModel(const std::string& utf8)
{
    const SModelResult expected = EncodeUTF8ToShiftJISSlowly(utf8);
    std::string sjis;
    ASSERT_EQ(expected.isAllConverted, UTF8ToSJIS(sjis, utf8)) << Hexadecimal(utf8);
    ASSERT_EQ(Hexadecimal(expected.bytes), Hexadecimal(sjis)) << Hexadecimal(utf8);
}

/// Takes two bytes for the 16 bits of a wide character, or one for an ASCII character.
void ExpectUTF16EncodedAsByTheModel(const std::string& bytes)
{
    const CCodePage932& codePage = CCodePage932::Get();
    SModelResult expected;
    std::wstring utf16;
    for (std::size_t position = 0; position < bytes.size(); ++position)
    {
        int unit = Byte(bytes, position);
        if (unit > 0x7F && position + 1 < bytes.size())
            unit = unit % 0x80 * 0x200 + Byte(bytes, ++position);
        utf16 += static_cast<wchar_t>(unit);
        if (unit <= 0x7E)
            expected.bytes += static_cast<char>(unit);
        else
            AppendCodeOrStar(expected, codePage.FindCode(static_cast<char32_t>(unit)));
    }
    std::string sjis;
    ASSERT_EQ(expected.isAllConverted, UTF16ToSJIS(sjis, utf16)) << Hexadecimal(bytes);
    ASSERT_EQ(Hexadecimal(UpToNUL(expected.bytes)), Hexadecimal(sjis)) << Hexadecimal(bytes);
}

/// Runs of ASCII, which are copied several units at once, and bytes of which half decide how the
/// text is split, so that short texts hit many cases.
std::string RandomText(std::mt19937& random, const std::string& frequentBytes)
{
    std::string text;
    const std::size_t size = random() % 48;
    while (text.size() < size)
    {
        if (random() % 8 == 0)
            text.append(random() % 20, static_cast<char>('0' + random() % 64));
        const auto number = static_cast<std::size_t>(random());
        text += number % 2 == 0 ? static_cast<char>(number / 2 % 0x100)
                                : frequentBytes[number / 2 % frequentBytes.size()];
    }
    return text;
}

constexpr int RandomTextCount = 200000;

} // namespace

TEST(CharacterCodeAgainstIconv, CodePageHas7484CoveredCodes)
{
    SKIP_WITHOUT_ICONV();
    EXPECT_EQ(7484u, CCodePage932::Get().GetCharacters().size());
}

TEST(CharacterCodeAgainstIconv, EveryCoveredCodeConvertsToUTF8AsByIconv)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        std::string utf8;
        ASSERT_TRUE(SJISToUTF8(utf8, CodeBytes(code))) << std::hex << code;
        ASSERT_EQ(ConvertByIconv(CodeBytes(code), "UTF-8", "CP932"), utf8) << std::hex << code;
    }
}

TEST(CharacterCodeAgainstIconv, EveryCoveredCodeConvertsToUTF16AsByIconv)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        std::wstring utf16;
        ASSERT_TRUE(SJISToUTF16(utf16, CodeBytes(code))) << std::hex << code;
        ASSERT_EQ(std::wstring(1, static_cast<wchar_t>(character)), utf16) << std::hex << code;
    }
}

TEST(CharacterCodeAgainstIconv, EveryCoveredCharacterConvertsFromUTF8AsByIconv)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        const std::string utf8 = EncodeUTF8(character);
        std::string sjis;
        ASSERT_TRUE(UTF8ToSJIS(sjis, utf8)) << std::hex << code;
        ASSERT_EQ(ConvertByIconv(utf8, "CP932", "UTF-8"), sjis) << std::hex << code;
    }
}

TEST(CharacterCodeAgainstIconv, EveryCoveredCodeComesBackFromUTF8AndUTF16)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        std::string utf8;
        std::wstring utf16;
        std::string sjis;
        ASSERT_TRUE(SJISToUTF8(utf8, CodeBytes(code)) && UTF8ToSJIS(sjis, utf8));
        ASSERT_EQ(CodeBytes(code), sjis);
        ASSERT_TRUE(SJISToUTF16(utf16, CodeBytes(code)) && UTF16ToSJIS(sjis, utf16));
        ASSERT_EQ(CodeBytes(code), sjis);
    }
}

TEST(CharacterCodeAgainstIconv, EverySingleByteIsDecodedAsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    for (int byte = 0; byte <= 0xFF; ++byte)
        ExpectShiftJISDecodedAsByTheModel(std::string(1, static_cast<char>(byte)));
}

TEST(CharacterCodeAgainstIconv, EveryPairOfBytesIsDecodedAsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    for (int pair = 0; pair <= 0xFFFF && !HasFatalFailure(); ++pair)
        ExpectShiftJISDecodedAsByTheModel(
            {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)});
}

TEST(CharacterCodeAgainstIconv, EveryThreeByteCodePointConvertsFromUTF8IfItIsCovered)
{
    SKIP_WITHOUT_ICONV();
    for (char32_t codePoint = 0x800; codePoint <= 0xFFFF; ++codePoint)
    {
        const unsigned code = CCodePage932::Get().FindCode(codePoint);
        std::string sjis;
        ASSERT_EQ(code != 0, UTF8ToSJIS(sjis, EncodeUTF8(codePoint))) << std::hex << +codePoint;
        ASSERT_EQ(code == 0 ? "*" : CodeBytes(code), sjis) << std::hex << +codePoint;
    }
}

TEST(CharacterCodeAgainstIconv, EveryCodePointIsEncodedFromUTF8AsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    for (char32_t codePoint = 0; codePoint <= 0xFFFF && !HasFatalFailure(); ++codePoint)
    {
        ExpectUTF8EncodedAsByTheModel(EncodeUTF8(codePoint));
        ExpectUTF8EncodedAsByTheModel(EncodeUTF8(codePoint) + "abc");
    }
}

TEST(CharacterCodeAgainstIconv, EveryCodePointConvertsFromUTF16IfItIsCovered)
{
    SKIP_WITHOUT_ICONV();
    for (char32_t codePoint = 0x20; codePoint <= 0xFFFF; ++codePoint)
    {
        const unsigned code = CCodePage932::Get().FindCode(codePoint);
        std::string sjis;
        ASSERT_EQ(code != 0, UTF16ToSJIS(sjis, std::wstring(1, static_cast<wchar_t>(codePoint))))
            << std::hex << +codePoint;
        ASSERT_EQ(code == 0 ? "*" : CodeBytes(code), sjis) << std::hex << +codePoint;
    }
}

TEST(CharacterCodeAgainstIconv, CodePointsAboveFFFFConvertAsTheirLow16Bits)
{
    SKIP_WITHOUT_ICONV();
    if (sizeof(wchar_t) < 4)
        GTEST_SKIP() << "wchar_t has 16 bits here";
    for (char32_t codePoint = 0x10000; codePoint <= 0x10FFFF; ++codePoint)
    {
        const auto low = static_cast<wchar_t>(codePoint & 0xFFFF);
        std::string expected;
        std::string sjis;
        const bool isConverted = UTF16ToSJIS(expected, std::wstring(1, low));
        ASSERT_EQ(isConverted, UTF16ToSJIS(sjis, std::wstring(1, static_cast<wchar_t>(codePoint))));
        ASSERT_EQ(expected, sjis) << std::hex << +codePoint;
    }
}

TEST(CharacterCodeAgainstIconv, EveryTwoByteCodeCutShortGivesAStar)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        if (code <= 0xFF)
            continue;
        const std::string cut = "A" + CodeBytes(code).substr(0, 1);
        std::string utf8;
        std::wstring utf16;
        ASSERT_FALSE(SJISToUTF8(utf8, cut)) << Hexadecimal(cut);
        ASSERT_EQ("A*", utf8) << Hexadecimal(cut);
        ASSERT_FALSE(SJISToUTF16(utf16, cut)) << Hexadecimal(cut);
        ASSERT_EQ(L"A*", utf16) << Hexadecimal(cut);
    }
}

TEST(CharacterCodeAgainstIconv, EveryUTF8FormCutShortGivesAStarForEachByteLeft)
{
    SKIP_WITHOUT_ICONV();
    for (const auto& [code, character] : CCodePage932::Get().GetCharacters())
    {
        const std::string form = EncodeUTF8(character);
        for (std::size_t size = 1; size < form.size(); ++size)
        {
            const std::string cut = "A" + form.substr(0, size);
            std::string sjis;
            ASSERT_FALSE(UTF8ToSJIS(sjis, cut)) << Hexadecimal(cut);
            ASSERT_EQ("A" + std::string(size, '*'), sjis) << Hexadecimal(cut);
        }
    }
}

TEST(CharacterCodeAgainstIconv, RandomShiftJISIsDecodedAsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    std::mt19937 random(932);
    for (int i = 0; i < RandomTextCount && !HasFatalFailure(); ++i)
        ExpectShiftJISDecodedAsByTheModel(RandomText(random, "A\x7F\x80\x81\x82\x88\xA0\xFC\xFF"));
}

TEST(CharacterCodeAgainstIconv, RandomUTF8IsEncodedAsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    std::mt19937 random(8);
    for (int i = 0; i < RandomTextCount && !HasFatalFailure(); ++i)
        ExpectUTF8EncodedAsByTheModel(
            RandomText(random, "A\x7F\x80\x81\x82\xB8\xC2\xC3\xC4\xD0\xE3\xE4\xEF\xF0"));
}

TEST(CharacterCodeAgainstIconv, RandomUTF16IsEncodedAsByTheModel)
{
    SKIP_WITHOUT_ICONV();
    std::mt19937 random(16);
    for (int i = 0; i < RandomTextCount && !HasFatalFailure(); ++i)
        ExpectUTF16EncodedAsByTheModel(RandomText(random, "A\x7F\x80\x82\xB1\x4E\x30\xFF"));
}
