#include "Independent/CharacterCode/Unicode.h"

#include <array>

namespace charactercode
{

namespace
{

constexpr char32_t FirstHighSurrogate = 0xD800;
constexpr char32_t FirstLowSurrogate = 0xDC00;
constexpr char32_t AfterLowSurrogates = 0xE000;
constexpr char32_t FirstSupplementary = 0x10000;
constexpr char32_t LargestCode = 0x10FFFF;
constexpr int SurrogateBits = 10;
constexpr char32_t SurrogateMask = (1U << SurrogateBits) - 1;
constexpr int ContinuationBits = 6;
constexpr char32_t ContinuationMask = (1U << ContinuationBits) - 1;

/// A form of UTF-8.
struct SForm
{
    unsigned char mask;       ///< the bits of the first byte that tell the form ...
    unsigned char bits;       ///< ... and their value
    std::size_t continuation; ///< the number of bytes after the first
    char32_t smallest;        ///< a smaller code has a shorter form
};

constexpr std::array<SForm, 4> Forms = {{
    {0x80, 0x00, 0, 0},
    {0xE0, 0xC0, 1, 0x80},
    {0xF0, 0xE0, 2, 0x800},
    {0xF8, 0xF0, 3, FirstSupplementary},
}};

void AppendUTF8(std::string& output, char32_t code)
{
    std::size_t last = Forms.size() - 1;
    while (code < Forms[last].smallest)
        --last;
    const SForm& form = Forms[last];
    for (std::size_t left = form.continuation + 1; left-- > 0;)
    {
        const char32_t bits = code >> (ContinuationBits * static_cast<int>(left));
        output += static_cast<char>(
            left == form.continuation ? form.bits | bits : 0x80 | (bits & ContinuationMask));
    }
}

bool IsIn(char32_t unit, char32_t first, char32_t after)
{
    return unit >= first && unit < after;
}

} // namespace

bool TakeUTF8Character(std::string_view& text, char32_t& code)
{
    const auto first = static_cast<unsigned char>(text.front());
    for (const SForm& form : Forms)
    {
        if ((first & form.mask) != form.bits)
            continue;
        if (text.size() <= form.continuation)
            return false;
        code = first & static_cast<unsigned char>(~form.mask);
        for (char c : text.substr(1, form.continuation))
        {
            const auto byte = static_cast<unsigned char>(c);
            if ((byte & ~ContinuationMask) != 0x80)
                return false;
            code = code << ContinuationBits | (byte & ContinuationMask);
        }
        if (code < form.smallest || code > LargestCode)
            return false;
        text.remove_prefix(1 + form.continuation);
        return true;
    }
    return false;
}

bool UTF8ToUTF16(std::u16string& output, std::string_view input)
{
    output.clear();
    while (!input.empty())
    {
        char32_t code;
        if (!TakeUTF8Character(input, code))
        {
            output.clear();
            return false;
        }
        if (code >= FirstSupplementary)
        {
            code -= FirstSupplementary;
            output += static_cast<char16_t>(FirstHighSurrogate + (code >> SurrogateBits));
            code = FirstLowSurrogate + (code & SurrogateMask);
        }
        output += static_cast<char16_t>(code);
    }
    return true;
}

std::string UTF16ToUTF8(std::u16string_view input)
{
    std::string output;
    for (std::size_t i = 0; i < input.size(); ++i)
    {
        char32_t code = input[i];
        if (IsIn(code, FirstHighSurrogate, FirstLowSurrogate) && i + 1 < input.size() &&
            IsIn(input[i + 1], FirstLowSurrogate, AfterLowSurrogates))
        {
            ++i;
            code = FirstSupplementary + ((code - FirstHighSurrogate) << SurrogateBits) +
                   (input[i] - FirstLowSurrogate);
        }
        AppendUTF8(output, code);
    }
    return output;
}

} // namespace charactercode
