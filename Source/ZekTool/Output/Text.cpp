#include "ZekTool/Output/Text.h"

#include <algorithm>

#include <fmt/format.h>

#include "Independent/CharacterCode/Unicode.h"

namespace zektool
{

namespace
{

struct SCharacter
{
    char32_t code;
    std::size_t size; ///< in bytes; 0 when there is none
};

/// Control characters, ends of lines and paragraphs, and what turns the direction of writing: what
/// they do to a terminal is not for a model to decide.
bool IsControl(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x61C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

/// Reads the character that bytes start with.
SCharacter ReadCharacter(std::string_view bytes)
{
    std::string_view rest = bytes;
    char32_t code = 0;
    if (!charactercode::TakeUTF8Character(rest, code) || charactercode::IsSurrogate(code))
        return {0, 0};
    return {code, bytes.size() - rest.size()};
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
    // Most names are plain.
    if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= ' ' && c <= '~'; }))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty())
    {
        const SCharacter character = ReadCharacter(bytes);
        const std::string_view taken = bytes.substr(0, character.size == 0 ? 1 : character.size);
        if (character.size != 0 && !IsControl(character.code))
            text += taken;
        else
            for (char c : taken)
                text += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        bytes.remove_prefix(taken.size());
    }
    return text;
}

std::string MakeQuoted(std::string_view bytes)
{
    return '"' + MakeShowable(bytes) + '"';
}

std::string MakeSmall(std::string_view text)
{
    std::string small(text);
    for (char& c : small)
        c = MakeSmall(c);
    return small;
}

std::string MakeFailureLine(std::string_view path, EOutcome outcome, std::string_view reason)
{
    return fmt::format(
        "{}: {}{}\n", MakeShowable(path), outcome == EOutcome::Failed ? "failed: " : "",
        MakeShowable(reason));
}

std::string MakeCount(std::uint64_t count, std::string_view one, std::string_view several)
{
    return fmt::format("{} {}", count, count == 1 ? one : several);
}

} // namespace zektool
