#pragma once

#include <cstddef>

namespace testsupport
{

/// The bytes that the program has asked operator new for since it started; what was given back
/// does not lower it. A size counts even when there is not that much memory.
std::size_t GetAllocatedBytes();

} // namespace testsupport
