#include "ZekTool/Models/NamePattern.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#if __has_include(<fnmatch.h>)
#include <fnmatch.h>
#endif

namespace
{

using zektool::IsMatching;

TEST(NamePattern, AsterisksAndQuestionMarks)
{
    EXPECT_TRUE(IsMatching("", ""));
    EXPECT_TRUE(IsMatching("", "**"));
    EXPECT_FALSE(IsMatching("", "?"));
    EXPECT_TRUE(IsMatching("a.zek", "*.zek"));
    EXPECT_TRUE(IsMatching(".zek", "*.zek"));
    EXPECT_FALSE(IsMatching("a.ZEK", "*.zek"));
    EXPECT_FALSE(IsMatching("a.zek.bak", "*.zek"));
    EXPECT_TRUE(IsMatching("a.zek.zek", "*.zek"));
    EXPECT_TRUE(IsMatching("abcbcd", "a*bcd"));
    EXPECT_FALSE(IsMatching("abcbc", "a*bcd"));
    EXPECT_TRUE(IsMatching("ab", "?b"));
    EXPECT_FALSE(IsMatching("b", "?b"));
    EXPECT_TRUE(IsMatching("\xC3\xA4", "??"));
}

TEST(NamePattern, Brackets)
{
    EXPECT_TRUE(IsMatching("b", "[a-c]"));
    EXPECT_FALSE(IsMatching("d", "[a-c]"));
    EXPECT_TRUE(IsMatching("d", "[!a-c]"));
    EXPECT_TRUE(IsMatching("d", "[^a-c]"));
    EXPECT_FALSE(IsMatching("a", "[^a-c]"));
    EXPECT_TRUE(IsMatching("]", "[]]"));
    EXPECT_TRUE(IsMatching("-", "[a-]"));
    EXPECT_TRUE(IsMatching("7x", "[[:digit:]][[:alpha:]]"));
    EXPECT_FALSE(IsMatching("7", "[[:alpha:]]"));
    EXPECT_FALSE(IsMatching("7", "[[:digits:]]"));
    EXPECT_TRUE(IsMatching("[a", "[a"));
    EXPECT_TRUE(IsMatching("]", "[\\]]"));
}

TEST(NamePattern, ABackslashTakesTheNextByteAsItIs)
{
    EXPECT_TRUE(IsMatching("*", "\\*"));
    EXPECT_FALSE(IsMatching("a", "\\*"));
    EXPECT_FALSE(IsMatching("\\", "\\"));
    EXPECT_TRUE(IsMatching("\\", "\\\\"));
}

TEST(NamePattern, ManyAsterisksTakeNoLongTime)
{
    std::string pattern;
    for (int i = 0; i < 1000; ++i)
        pattern += "*a";
    EXPECT_FALSE(IsMatching(std::string(5000, 'a'), pattern + "b"));
}

#if __has_include(<fnmatch.h>)

std::string MakeText(std::mt19937& random, const std::string& pieces, std::size_t most)
{
    std::string text;
    for (std::size_t left = random() % (most + 1); left > 0; --left)
        text += pieces[random() % pieces.size()];
    return text;
}

TEST(NamePattern, TheSystemSaysTheSame)
{
    std::mt19937 random(1);
    for (int i = 0; i < 3000000; ++i)
    {
        const std::string name = MakeText(random, "ab-[]:.=\\z\xC3", 5);
        const std::string pattern = MakeText(random, "ab-[[[]]]:.=\\!^*?z\xC3", 9);
        // What the GNU C library makes of these when they are not closed depends on what is before.
        if (pattern.find("[.") != std::string::npos || pattern.find("[=") != std::string::npos)
            continue;
        ASSERT_EQ(fnmatch(pattern.c_str(), name.c_str(), 0) == 0, IsMatching(name, pattern))
            << "name " << name << ", pattern " << pattern;
    }
}

TEST(NamePattern, TheSystemKnowsTheSameBytesBetweenDotsAndEqualsSigns)
{
    for (const char* pattern :
         {"[[=a=]]", "[[.a.]]", "[[.a.]-c]", "[a-[.c.]]", "[[.-.]a]", "[![=a=]]"})
    {
        for (const char* name : {"a", "b", "c", "d", "-", "=", ".", "["})
            EXPECT_EQ(fnmatch(pattern, name, 0) == 0, IsMatching(name, pattern))
                << pattern << ' ' << name;
    }
}

TEST(NamePattern, TheSystemKnowsTheSameClasses)
{
    for (const char* name :
         {"alnum", "alpha", "blank", "cntrl", "digit", "graph", "lower", "print", "punct", "space",
          "upper", "xdigit", "none", "digi", ""})
    {
        const std::string pattern = std::string("[[:") + name + ":]x]";
        for (int byte = 1; byte < 256; ++byte)
        {
            const std::string text(1, static_cast<char>(byte));
            EXPECT_EQ(fnmatch(pattern.c_str(), text.c_str(), 0) == 0, IsMatching(text, pattern))
                << pattern << ' ' << byte;
        }
    }
}

#endif

} // namespace
