#pragma once

#include <string_view>

namespace zektool
{

/// Tells whether a name matches a pattern as a whole: as POSIX' `fnmatch` without flags and in the
/// locale "C" says, on every system. So * stands for any bytes, ? for one, [a-c] and [[:digit:]]
/// for one of some, [!a-c] for one of the others, and a backslash takes the next byte as it is.
/// Capital and small letters differ.
bool IsMatching(std::string_view name, std::string_view pattern);

} // namespace zektool
