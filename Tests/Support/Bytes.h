#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace testsupport
{

using Bytes = std::vector<unsigned char>;

/// The number of bytes in the type of positions in a file.
inline std::int64_t SizeOf(const Bytes& bytes)
{
    return static_cast<std::int64_t>(bytes.size());
}

/// The first size bytes, or all bytes but the last -size when size is negative.
inline Bytes Cut(const Bytes& bytes, std::int64_t size)
{
    const auto end = size < 0 ? bytes.end() : bytes.begin();
    return Bytes(bytes.begin(), end + static_cast<std::ptrdiff_t>(size));
}

inline std::string ToText(const Bytes& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

} // namespace testsupport
