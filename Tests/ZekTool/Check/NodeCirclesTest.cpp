#include "ZekTool/Check/NodeCircles.h"

#include <gtest/gtest.h>

namespace
{

using zektool::DescribeNodeCircle;
using zektool::FindNodeCircles;
using Nodes = std::vector<int>;

TEST(NodeCircles, AreFoundOnceEachByTheirLowestNode)
{
    EXPECT_EQ(Nodes(), FindNodeCircles({}));
    EXPECT_EQ(Nodes(), FindNodeCircles({-1, 0, 1, 1}));
    EXPECT_EQ((Nodes{0}), FindNodeCircles({0}));
    EXPECT_EQ((Nodes{0, 2}), FindNodeCircles({4, 3, 2, 0, 3, 2}));
}

TEST(NodeCircles, DoNotGoThroughParentsThatAreNoNodes)
{
    EXPECT_EQ(Nodes(), FindNodeCircles({3, -2, 2147483647}));
    EXPECT_EQ((Nodes{1}), FindNodeCircles({-2147483647 - 1, 1, 3}));
}

TEST(NodeCircles, AreDescribedUpToALength)
{
    EXPECT_EQ("0 -> 0", DescribeNodeCircle({0}, 0));
    EXPECT_EQ("1 -> 2 -> 1", DescribeNodeCircle({0, 2, 1}, 1));
    EXPECT_EQ(
        "0 -> 1 -> 2 -> 3 -> 4 -> 5 -> 6 -> 7 -> 0",
        DescribeNodeCircle({1, 2, 3, 4, 5, 6, 7, 0}, 0));
    EXPECT_EQ(
        "0 -> 1 -> 2 -> 3 -> 4 -> 5 -> 6 -> 7 -> ...",
        DescribeNodeCircle({1, 2, 3, 4, 5, 6, 7, 8, 0}, 0));
}

} // namespace
