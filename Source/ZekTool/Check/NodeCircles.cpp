#include "ZekTool/Check/NodeCircles.h"

#include <algorithm>

namespace zektool
{

namespace
{

constexpr int NotVisited = -1;
constexpr int LongestDescribedCircle = 8;

int GetParent(const std::vector<int>& parents, int node)
{
    return parents[static_cast<std::size_t>(node)];
}

int GetLowestOfCircle(const std::vector<int>& parents, int start)
{
    int lowest = start;
    for (int node = GetParent(parents, start); node != start; node = GetParent(parents, node))
        lowest = std::min(lowest, node);
    return lowest;
}

} // namespace

std::vector<int> FindNodeCircles(const std::vector<int>& parents)
{
    const int count = static_cast<int>(parents.size());
    std::vector<int> circles;
    std::vector<int> visitor(
        parents.size(), NotVisited); // the node from which it was reached first
    for (int start = 0; start < count; ++start)
    {
        int node = start;
        while (node >= 0 && node < count && visitor[static_cast<std::size_t>(node)] == NotVisited)
        {
            visitor[static_cast<std::size_t>(node)] = start;
            node = GetParent(parents, node);
        }
        if (node >= 0 && node < count && visitor[static_cast<std::size_t>(node)] == start)
            circles.push_back(GetLowestOfCircle(parents, node));
    }
    std::sort(circles.begin(), circles.end());
    return circles;
}

std::string DescribeNodeCircle(const std::vector<int>& parents, int node)
{
    std::string text = std::to_string(node);
    int next = GetParent(parents, node);
    for (int i = 1; i < LongestDescribedCircle && next != node; ++i)
    {
        text += " -> " + std::to_string(next);
        next = GetParent(parents, next);
    }
    return text + (next == node ? " -> " + std::to_string(node) : " -> ...");
}

} // namespace zektool
