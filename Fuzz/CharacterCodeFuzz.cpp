// Converts arbitrary bytes and code units in all four directions. A text that converts whole must
// come back the same, and both ways to Unicode must agree.

#include "FuzzTarget.h"
#include "Independent/CharacterCode/CharacterCode.h"

using fuzz::Require;

namespace
{

/// The narrow conversions stop at the first zero byte.
std::string CutAtZero(const std::string& text)
{
    return text.substr(0, text.find('\0'));
}

void CheckShiftJIS(const std::string& shiftJIS)
{
    std::string utf8;
    std::wstring utf16;
    const bool isWhole = charactercode::SJISToUTF8(utf8, shiftJIS);
    Require(
        charactercode::SJISToUTF16(utf16, shiftJIS) == isWhole,
        "UTF-8 and UTF-16 cover the same characters");
    if (!isWhole)
        return;

    std::string back;
    Require(charactercode::UTF8ToSJIS(back, utf8), "what came from Shift_JIS converts back");
    Require(back == CutAtZero(shiftJIS), "Shift_JIS survives UTF-8");
    Require(charactercode::UTF16ToSJIS(back, utf16), "what came from Shift_JIS converts back");
    Require(back == CutAtZero(shiftJIS), "Shift_JIS survives UTF-16");
}

void CheckUTF8(const std::string& utf8)
{
    std::string shiftJIS;
    const bool isWhole = charactercode::UTF8ToSJIS(shiftJIS, utf8);
    if (!isWhole)
        return;
    std::string back;
    Require(charactercode::SJISToUTF8(back, shiftJIS), "what came from UTF-8 converts back");
    // The second byte of a three-byte form is not looked at beyond the table that it names, and
    // the tables hold valid forms only, so a whole conversion had valid UTF-8.
    Require(back == CutAtZero(utf8), "UTF-8 survives Shift_JIS");
}

void CheckUTF16(const std::string& bytes)
{
    std::wstring utf16;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        utf16.push_back(static_cast<wchar_t>(
            static_cast<unsigned char>(bytes[i]) << 8 | static_cast<unsigned char>(bytes[i + 1])));

    std::string shiftJIS;
    if (!charactercode::UTF16ToSJIS(shiftJIS, utf16))
        return;
    std::wstring back;
    Require(charactercode::SJISToUTF16(back, shiftJIS), "what came from UTF-16 converts back");
    Require(back == utf16.substr(0, utf16.find(L'\0')), "UTF-16 survives Shift_JIS");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    CheckShiftJIS(bytes);
    CheckUTF8(bytes);
    CheckUTF16(bytes);
    return 0;
}
