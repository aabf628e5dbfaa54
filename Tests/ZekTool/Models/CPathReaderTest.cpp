#include "ZekTool/Models/CPathReader.h"

#include <cerrno>
#include <ctime>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "ZekTool/Output/CUsageError.h"

namespace
{

using testsupport::CTemporaryFolder;
using zektool::CPathReader;
using Paths = std::vector<std::string>;

Paths ReadAll(const std::string& bytes)
{
    CTemporaryFolder folder;
    folder.Write("list", bytes);
    CPathReader reader(folder.GetPath("list"));
    EXPECT_EQ(0, reader.GetError());
    Paths paths;
    for (std::string path; reader.Next(path);)
        paths.push_back(path);
    EXPECT_EQ(0, reader.GetError());
    return paths;
}

TEST(CPathReader, AZeroByteEndsAPath)
{
    using namespace std::string_literals;
    EXPECT_EQ(Paths{}, ReadAll(""));
    EXPECT_EQ(Paths{"a"}, ReadAll("a"));
    EXPECT_EQ((Paths{"a", "b c\n", "\xFF"}), ReadAll("a\0b c\n\0\xFF\0"s));
    EXPECT_EQ((Paths{"a", "b"}), ReadAll("a\0b"s));
    EXPECT_EQ((Paths{"", "a", ""}), ReadAll("\0a\0\0"s));
}

TEST(CPathReader, PathsGoAcrossTheEndsOfReads)
{
    Paths paths;
    std::string bytes;
    for (std::size_t i = 0; i < 200; ++i)
    {
        paths.emplace_back(1000 + i, static_cast<char>('a' + i % 26));
        bytes += paths.back() + '\0';
    }
    EXPECT_EQ(paths, ReadAll(bytes));
    EXPECT_EQ(Paths{std::string(300000, 'x')}, ReadAll(std::string(300000, 'x')));
}

/// Returns the processor time that a function takes.
std::clock_t Measure(const std::function<void()>& run)
{
    const std::clock_t start = std::clock();
    run();
    return std::clock() - start;
}

TEST(CPathReader, TakesNotTheSquareOfALength)
{
    constexpr std::size_t size = 48'000'000;
    CTemporaryFolder folder;
    folder.Write("list", std::string(size, 'x'));
    std::string path;
    const std::clock_t taken = Measure([&] { CPathReader(folder.GetPath("list")).Next(path); });
    EXPECT_EQ(size, path.size());

    // What memory costs in a text that grows so.
    std::string text;
    const std::clock_t least = Measure(
        [&]
        {
            while (text.size() < size)
                text.append(65536, 'x');
            path = std::string(text);
        });
    constexpr int factor = 3;
    EXPECT_LT(taken, factor * least);
}

TEST(CPathReader, AListThatCannotBeReadIsAnError)
{
    CTemporaryFolder folder;
    EXPECT_THROW(CPathReader(folder.GetPath("none")), zektool::CUsageError);
    CPathReader reader(folder.GetPath());
    std::string path;
    EXPECT_FALSE(reader.Next(path));
    EXPECT_EQ(EISDIR, reader.GetError());
}

} // namespace
