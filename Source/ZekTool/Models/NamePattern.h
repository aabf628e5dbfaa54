#pragma once

#include <string_view>

namespace zektool
{

/// Tells whether a name matches a pattern as a whole, on every system alike: * stands for any
/// bytes, ? for one, [a-c] for one of some, [!a-c] for one of the others, and a backslash takes the
/// next byte as it is. Capital and small letters differ.
bool IsMatching(std::string_view name, std::string_view pattern);

} // namespace zektool
