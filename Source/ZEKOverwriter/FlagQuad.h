#pragma once

#include <array>

#include "ZEKOverwriter/SCompressionFamily.h"

namespace zek
{

/// Addresses of the compression flags of one item, in the order of `CompressionFamilies`; null
/// where the file has none. They point into a file image and are valid as long as it is neither
/// freed nor resized.
using FlagQuad = std::array<const unsigned char*, CompressionFamilyCount>;

} // namespace zek
