#pragma once

#include <limits>

namespace testsupport
{

constexpr int LowestInt = std::numeric_limits<int>::min();
constexpr int HighestInt = std::numeric_limits<int>::max();

} // namespace testsupport
