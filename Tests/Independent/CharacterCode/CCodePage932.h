#pragma once

#include <map>
#include <optional>
#include <string>

/// Skips the test where the system's iconv(3) does not know the code page.
#define SKIP_WITHOUT_ICONV()   \
    if (!IsCodePage932Known()) \
    GTEST_SKIP() << "iconv(3) knows no CP932 here (Debian: package libc6)"

/// Tells whether the system's iconv(3) has CP932.
bool IsCodePage932Known();

/// Converts by iconv(3); nothing if any of the text cannot be converted.
std::optional<std::string>
ConvertByIconv(const std::string& text, const char* to, const char* from);

/// A one-byte code below 0x100 or a two-byte code as bytes.
std::string CodeBytes(unsigned code);

/// The UTF-8 form of a value below 0x10000, of a surrogate as of any other.
std::string EncodeUTF8(char32_t codePoint);

/// The text with each byte in two hexadecimal digits.
std::string Hexadecimal(const std::string& text);

/// The covered part of code page 932: what iconv(3) says, less the codes that are left out.
class CCodePage932
{
public:
    /// The one object, built on first use.
    static const CCodePage932& Get();

    /// The code points by Shift_JIS code, ascending.
    const std::map<unsigned, char32_t>& GetCharacters() const { return m_Characters; }

    /// The character of a code, or 0.
    char32_t FindCharacter(unsigned code) const;

    /// The code of a character, or 0.
    unsigned FindCode(char32_t codePoint) const;

private:
    CCodePage932();

    std::map<unsigned, char32_t> m_Characters;
    std::map<char32_t, unsigned> m_Codes;
};
