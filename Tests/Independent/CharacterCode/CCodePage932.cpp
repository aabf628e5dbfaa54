#include "Independent/CharacterCode/CCodePage932.h"

#include <iconv.h>

namespace
{

struct SCodes
{
    unsigned first;
    unsigned last;
};

constexpr SCodes LeftOut[] = {
    {0x00, 0x1F},     // control bytes
    {0x7F, 0xA0},     //
    {0xE0, 0xFF},     // not characters of one byte
    {0x8790, 0x8792}, // NEC row 13, characters that row 2 has
    {0x8795, 0x8797}, //
    {0x879A, 0x879C}, //
    {0xED40, 0xEEFC}, // NEC selection of IBM extensions
    {0xF040, 0xF9FC}, // user-defined
    {0xFA4A, 0xFA54}, // IBM extensions, characters that NEC row 13 or row 2 has
    {0xFA58, 0xFA5B}, //
};

bool IsLeftOut(unsigned code)
{
    for (const SCodes& codes : LeftOut)
    {
        if (codes.first <= code && code <= codes.last)
            return true;
    }
    return false;
}

} // namespace

bool IsCodePage932Known()
{
    return ConvertByIconv("a", "UTF-16BE", "CP932").has_value();
}

std::optional<std::string> ConvertByIconv(const std::string& text, const char* to, const char* from)
{
    const iconv_t converter = iconv_open(to, from);
    if (converter == reinterpret_cast<iconv_t>(-1))
        return std::nullopt;

    std::string input = text;
    std::string output(text.size() * 4 + 4, '\0');
    char* in = input.data();
    char* out = output.data();
    std::size_t inLeft = input.size();
    std::size_t outLeft = output.size();
    const std::size_t result = iconv(converter, &in, &inLeft, &out, &outLeft);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1))
        return std::nullopt;
    output.resize(output.size() - outLeft);
    return output;
}

std::string CodeBytes(unsigned code)
{
    std::string bytes;
    if (code > 0xFF)
        bytes += static_cast<char>(code >> 8);
    return bytes + static_cast<char>(code & 0xFF);
}

std::string EncodeUTF8(char32_t codePoint)
{
    if (codePoint < 0x80)
        return {static_cast<char>(codePoint)};
    const char last = static_cast<char>(0x80 | (codePoint & 0x3F));
    if (codePoint < 0x800)
        return {static_cast<char>(0xC0 | (codePoint >> 6)), last};
    return {
        static_cast<char>(0xE0 | (codePoint >> 12)),
        static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)), last};
}

std::string Hexadecimal(const std::string& text)
{
    std::string digits;
    for (const char byte : text)
    {
        digits += "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4];
        digits += "0123456789ABCDEF"[static_cast<unsigned char>(byte) & 0x0F];
        digits += ' ';
    }
    return digits;
}

const CCodePage932& CCodePage932::Get()
{
    static const CCodePage932 codePage;
    return codePage;
}

CCodePage932::CCodePage932()
{
    for (unsigned code = 0; code <= 0xFFFF; ++code)
    {
        const std::optional<std::string> utf16 =
            ConvertByIconv(CodeBytes(code), "UTF-16BE", "CP932");
        const bool isOneCharacter = utf16.has_value() && utf16->size() == 2;
        if (!isOneCharacter || IsLeftOut(code))
            continue;
        const auto high = static_cast<unsigned char>((*utf16)[0]);
        const auto low = static_cast<unsigned char>((*utf16)[1]);
        const auto codePoint = static_cast<char32_t>(high * 0x100 + low);
        m_Characters[code] = codePoint;
        m_Codes[codePoint] = code;
    }
}

char32_t CCodePage932::FindCharacter(unsigned code) const
{
    const auto found = m_Characters.find(code);
    return found == m_Characters.end() ? 0 : found->second;
}

unsigned CCodePage932::FindCode(char32_t codePoint) const
{
    const auto found = m_Codes.find(codePoint);
    return found == m_Codes.end() ? 0 : found->second;
}
