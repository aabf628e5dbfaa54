#include "ZekTool/Models/FileKind.h"

#include <gtest/gtest.h>

namespace
{

using zektool::DescribeFileKind;

TEST(FileKind, IsTakenFromTheFirstBytes)
{
    EXPECT_EQ("a PNG picture", DescribeFileKind("\x89PNG\r\n"));
    EXPECT_EQ(
        "a program", DescribeFileKind("\x7F"
                                      "ELF\x02"));
    EXPECT_EQ("a gzip archive", DescribeFileKind("\x1F\x8B"));
    EXPECT_EQ("text", DescribeFileKind("<html>\n\t\xC3\xA9"));
    EXPECT_EQ(
        "data that starts with \"\\x01abc\"", DescribeFileKind("\x01"
                                                               "abcdef"));
    EXPECT_EQ("data that starts with \"\\x02\"", DescribeFileKind("\x02"));
}

TEST(FileKind, TheStartOfAModelIsToldFromAnotherStart)
{
    using namespace std::string_literals;
    for (const std::string& start : {""s, "Z"s, "ZE"s, "ZEK"s})
        EXPECT_TRUE(zektool::IsCutMagic(start)) << start;
    for (const std::string& start : {"z"s, "ZK"s, "ZEN"s, "ZEK\0"s, "ZEK\0a"s, "ZEK "s})
        EXPECT_FALSE(zektool::IsCutMagic(start)) << start;
}

} // namespace
