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
    EXPECT_TRUE(IsMatching("\xC3", "[\x80-\xFF]"));
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
    for (int i = 0; i < 1000000; ++i)
    {
        const std::string name = MakeText(random, "ab-[]\\z\xC3", 5);
        std::string pattern = MakeText(random, "ab-[[]]\\!^*?z\xC3", 9);
        // What the system makes of brackets that are not closed depends on what is in them.
        if (pattern.find('[') != std::string::npos)
            pattern += "]]";
        ASSERT_EQ(fnmatch(pattern.c_str(), name.c_str(), 0) == 0, IsMatching(name, pattern))
            << "name " << name << ", pattern " << pattern;
    }
}

#endif

} // namespace
