#include "ZekTool/Output/Text.h"

#include <fmt/format.h>

namespace zektool
{

namespace
{

struct SCharacter
{
    char32_t code;
    std::size_t size; ///< in bytes; 0 when there is none
};

/// The lead bytes of UTF-8 and what may follow them.
struct SLead
{
    unsigned char mask;
    unsigned char bits;
    unsigned char size; ///< of the character, in bytes
    char32_t smallest;  ///< a smaller code has a shorter form
};

constexpr SLead Leads[] = {
    {0x80, 0x00, 1, 0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

constexpr char32_t LargestCode = 0x10FFFF;

bool IsSurrogate(char32_t code)
{
    return code >= 0xD800 && code <= 0xDFFF;
}

/// C0 and C1 control characters: what they do to a terminal is not for a model to decide.
bool IsControl(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// Reads the character that bytes start with.
SCharacter ReadCharacter(std::string_view bytes)
{
    const auto first = static_cast<unsigned char>(bytes.front());
    for (const SLead& lead : Leads)
    {
        if ((first & lead.mask) != lead.bits || bytes.size() < lead.size)
            continue;
        char32_t code = static_cast<unsigned char>(first & ~lead.mask);
        for (char c : bytes.substr(1, lead.size - 1))
        {
            const auto byte = static_cast<unsigned char>(c);
            if ((byte & 0xC0) != 0x80)
                return {0, 0};
            code = code << 6 | (byte & 0x3FU);
        }
        const bool isValid = code >= lead.smallest && code <= LargestCode && !IsSurrogate(code);
        return {code, isValid ? std::size_t{lead.size} : 0};
    }
    return {0, 0};
}

} // namespace

bool IsUTF8(std::string_view bytes)
{
    while (!bytes.empty())
    {
        const SCharacter character = ReadCharacter(bytes);
        if (character.size == 0)
            return false;
        bytes.remove_prefix(character.size);
    }
    return true;
}

std::string MakeShowable(std::string_view bytes)
{
    std::string text;
    while (!bytes.empty())
    {
        const SCharacter character = ReadCharacter(bytes);
        const std::size_t size = character.size == 0 ? 1 : character.size;
        const bool isShown = character.size != 0 && !IsControl(character.code);
        for (char c : bytes.substr(0, size))
            text += isShown ? std::string(1, c)
                            : fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        bytes.remove_prefix(size);
    }
    return text;
}

std::string MakeQuoted(std::string_view bytes)
{
    return '"' + MakeShowable(bytes) + '"';
}

std::string MakeFailureLine(std::string_view path, EOutcome outcome, std::string_view reason)
{
    return fmt::format(
        "{}: {}{}\n", MakeShowable(path), outcome == EOutcome::Failed ? "failed: " : "",
        MakeShowable(reason));
}

std::string MakeCount(std::size_t count, std::string_view one, std::string_view several)
{
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

} // namespace zektool
