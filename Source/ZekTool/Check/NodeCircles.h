#pragma once

#include <string>
#include <vector>

namespace zektool
{

/// Returns for each circle of parents its lowest node, in rising order. The parents are indices of
/// nodes; one out of range ends a node's line of ancestors. The time is linear.
std::vector<int> FindNodeCircles(const std::vector<int>& parents);

/// Returns the circle of a node in words, "3 -> 5 -> 3", cut when it is long.
std::string DescribeNodeCircle(const std::vector<int>& parents, int node);

} // namespace zektool
