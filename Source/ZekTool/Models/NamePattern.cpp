#include "ZekTool/Models/NamePattern.h"

#include <cstddef>

namespace zektool
{

namespace
{

constexpr std::size_t NoMatch = std::string_view::npos;

/// Matches a byte with the brackets that a pattern starts with. Returns the size of these, or
/// `NoMatch`. A bracket that is not closed stands for itself.
std::size_t MatchBrackets(std::string_view pattern, char byte)
{
    const bool isNegated = pattern.size() > 1 && (pattern[1] == '!' || pattern[1] == '^');
    const std::size_t first = isNegated ? 2 : 1;
    const auto value = static_cast<unsigned char>(byte);
    bool isMatched = false;
    std::size_t pos = first;
    const auto takeByte = [&]
    {
        pos += pattern[pos] == '\\' && pos + 1 < pattern.size() ? 1 : 0;
        return static_cast<unsigned char>(pattern[pos++]);
    };
    while (pos < pattern.size() && (pos == first || pattern[pos] != ']'))
    {
        const unsigned char start = takeByte();
        unsigned char end = start;
        if (pos + 1 < pattern.size() && pattern[pos] == '-' && pattern[pos + 1] != ']')
        {
            ++pos;
            end = takeByte();
        }
        isMatched = isMatched || (start <= value && value <= end);
    }
    if (pos >= pattern.size())
        return byte == '[' ? 1 : NoMatch;
    return isMatched != isNegated ? pos + 1 : NoMatch;
}

/// Matches a byte with what a pattern starts with, which is no asterisk. Returns the size of that,
/// or `NoMatch`.
std::size_t MatchByte(std::string_view pattern, char byte)
{
    switch (pattern.front())
    {
    case '?':
        return 1;
    case '[':
        return MatchBrackets(pattern, byte);
    case '\\':
        return pattern.size() > 1 && pattern[1] == byte ? 2 : NoMatch;
    default:
        return pattern.front() == byte ? 1 : NoMatch;
    }
}

} // namespace

bool IsMatching(std::string_view name, std::string_view pattern)
{
    // Where to go on when the bytes that the last asterisk stands for were too few.
    std::string_view nextPattern;
    std::string_view nextName;
    bool hasAsterisk = false;
    while (!name.empty() || !pattern.empty())
    {
        if (!pattern.empty() && pattern.front() == '*')
        {
            pattern.remove_prefix(1);
            nextPattern = pattern;
            nextName = name;
            hasAsterisk = true;
            continue;
        }
        const std::size_t size =
            pattern.empty() || name.empty() ? NoMatch : MatchByte(pattern, name.front());
        if (size != NoMatch)
        {
            pattern.remove_prefix(size);
            name.remove_prefix(1);
            continue;
        }
        if (!hasAsterisk || nextName.empty())
            return false;
        nextName.remove_prefix(1);
        name = nextName;
        pattern = nextPattern;
    }
    return true;
}

} // namespace zektool
