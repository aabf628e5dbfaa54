#include "ZekTool/Models/NamePattern.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

namespace zektool
{

namespace
{

constexpr std::size_t NoMatch = std::string_view::npos;

struct SClass
{
    std::string_view name;
    int (*isMember)(int);
};

constexpr std::array<SClass, 12> Classes = {{
    {"alnum", std::isalnum},
    {"alpha", std::isalpha},
    {"blank", std::isblank},
    {"cntrl", std::iscntrl},
    {"digit", std::isdigit},
    {"graph", std::isgraph},
    {"lower", std::islower},
    {"print", std::isprint},
    {"punct", std::ispunct},
    {"space", std::isspace},
    {"upper", std::isupper},
    {"xdigit", std::isxdigit},
}};

/// Matches a byte with what stands in brackets.
class CBracket
{
public:
    /// For a pattern from its bracket on.
    CBracket(std::string_view pattern, char byte)
        : m_Pattern(pattern)
        , m_Byte(static_cast<unsigned char>(byte))
    {
    }

    /// Returns where the pattern goes on behind the bracket, or `NoMatch`. A bracket that is not
    /// closed stands for itself.
    std::size_t Match()
    {
        const bool isNegated = Get(0) == '!' || Get(0) == '^';
        m_Pos += isNegated ? 1 : 0;
        const std::size_t first = m_Pos;
        while (m_Pos < m_Pattern.size() && (m_Pos == first || Get(0) != ']'))
        {
            if (!MatchElement())
                return NoMatch;
        }
        if (m_Pos >= m_Pattern.size())
            return m_Byte == '[' ? 1 : NoMatch;
        return m_IsMatched != isNegated ? m_Pos + 1 : NoMatch;
    }

private:
    /// Returns a byte from the position on, or 0 behind the end.
    char Get(std::size_t offset) const
    {
        return m_Pos + offset < m_Pattern.size() ? m_Pattern[m_Pos + offset] : '\0';
    }

    /// Takes a class, a range or a byte. False when nothing can match.
    bool MatchElement()
    {
        if (IsClass())
            return MatchClass();
        if (IsOneByteIn('='))
        {
            Note(Get(2) == static_cast<char>(m_Byte));
            m_Pos += 5;
            return true;
        }
        unsigned char start = 0;
        if (!TakeByte(start))
            return false;
        if (Get(0) != '-' || Get(1) == ']')
        {
            Note(start == m_Byte);
            return true;
        }
        if (start == m_Byte && Get(1) == '\0')
            Note(true); // the rest, which is not closed, is not looked at
        ++m_Pos;
        unsigned char end = 0;
        if (m_IsMatched && Get(0) == '\0')
            return true;
        if (!TakeByte(end) || end == 0)
            return false;
        Note(start <= m_Byte && m_Byte <= end);
        return true;
    }

    void Note(bool isMatched) { m_IsMatched = m_IsMatched || isMatched; }

    bool IsOneByteIn(char mark) const
    {
        return Get(0) == '[' && Get(1) == mark && Get(2) != '\0' && Get(3) == mark && Get(4) == ']';
    }

    /// Takes a byte, which may have a backslash before it or be written as [.a.].
    bool TakeByte(unsigned char& byte)
    {
        std::size_t offset = Get(0) == '\\' ? 1 : 0;
        std::size_t size = offset + 1;
        if (IsOneByteIn('.'))
        {
            offset = 2;
            size = 5;
        }
        byte = static_cast<unsigned char>(Get(offset));
        m_Pos += size;
        return m_Pos <= m_Pattern.size();
    }

    /// Returns the length of the letters behind [: from the position on.
    std::size_t GetClassNameSize() const
    {
        std::size_t size = 0;
        while (Get(2 + size) >= 'a' && Get(2 + size) < 'z')
            ++size;
        return size;
    }

    bool IsClass() const
    {
        const std::size_t size = GetClassNameSize();
        return Get(0) == '[' && Get(1) == ':' && Get(2 + size) == ':' && Get(3 + size) == ']';
    }

    bool MatchClass()
    {
        const std::string_view name = m_Pattern.substr(m_Pos + 2, GetClassNameSize());
        m_Pos += name.size() + 4;
        const auto found = std::find_if(
            Classes.begin(), Classes.end(),
            [&](const SClass& characters) { return characters.name == name; });
        if (found != Classes.end())
            Note(found->isMember(m_Byte) != 0);
        return found != Classes.end() || m_IsMatched;
    }

    std::string_view m_Pattern;
    unsigned char m_Byte;
    std::size_t m_Pos = 1; // behind the bracket
    bool m_IsMatched = false;
};

/// Matches a byte with what a pattern starts with, which is no asterisk. Returns the size of that,
/// or `NoMatch`.
std::size_t MatchByte(std::string_view pattern, char byte)
{
    switch (pattern.front())
    {
    case '?':
        return 1;
    case '[':
        return CBracket(pattern, byte).Match();
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
