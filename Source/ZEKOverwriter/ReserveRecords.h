#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zek
{

/// The smallest record of a kind in any version that is accepted, in bytes.
constexpr int SmallestTextureSize = 1 + 4 + 4; ///< no name, clamp, flags
constexpr int SmallestProbeSize = 4 + 24;      ///< value, vectors
constexpr int SmallestLightmapSize = 1 + 4;    ///< no name, flags

/// Makes room in a list for as many records as a count says, but for no more than the bytes left
/// can hold: a list that grows by itself takes up to three times its size. How small a record can
/// be decides about memory alone: with any other size the same comes into the list.
template <typename Record>
void ReserveRecords(std::vector<Record>& list, int count, std::int64_t left, int smallestSize)
{
    const std::int64_t most = std::clamp<std::int64_t>(count, 0, left / smallestSize);
    list.reserve(static_cast<std::size_t>(most));
}

} // namespace zek
