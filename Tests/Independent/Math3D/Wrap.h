#pragma once

#include <cstdint>

namespace mathtest
{

/// The low 32 bits of a number.
inline int Wrap(std::int64_t value)
{
    return static_cast<int>(static_cast<std::uint32_t>(value));
}

} // namespace mathtest
