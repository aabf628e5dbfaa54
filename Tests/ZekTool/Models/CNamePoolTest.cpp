#include "ZekTool/Models/CNamePool.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using zektool::CNamePool;

TEST(CNamePool, KeepsNamesOfAllLengthsWhereTheyAre)
{
    CNamePool pool;
    std::vector<const char*> kept;
    // Past the smallest block several times, then one that needs a block of its own.
    std::vector<std::string> names(1, "");
    for (std::size_t length = 0; length < 400; ++length)
        names.emplace_back(length, static_cast<char>('a' + length % 26));
    names.emplace_back(100000, 'z');
    names.emplace_back("last");
    for (const std::string& name : names)
        kept.push_back(pool.Add(std::string(name))); // of which a copy is kept
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(names[i], kept[i]) << i;
}

TEST(CNamePool, TakesOneByteForTheEndOfANameAndNothingForAnEmptyOne)
{
    CNamePool pool;
    const char* first = pool.Add("abc");
    pool.Add("");
    EXPECT_EQ(first + 4, pool.Add("d"));
}

TEST(CNamePool, LeavesNamesWhereTheyAreWhenItIsMoved)
{
    CNamePool pool;
    const char* name = pool.Add("abc");
    const CNamePool other = std::move(pool);
    EXPECT_STREQ("abc", name);
}

} // namespace
