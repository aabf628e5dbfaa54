#pragma once

#include <string>
#include <string_view>

namespace zektool
{

/// Returns what a file that is no model looks like by its first bytes, in words that follow "it
/// looks like".
std::string DescribeFileKind(std::string_view start);

} // namespace zektool
