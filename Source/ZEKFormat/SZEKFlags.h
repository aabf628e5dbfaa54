#pragma once

#include <array>

#include "ZEKFormat/SZEKPlace.h"

namespace zek
{

/// The number of compression families, which is that of an item's flags: PVRTC, ETC, ASTC, DXT.
constexpr int CompressionFamilyCount = 4;

/// The compression flags of an item, a byte a family.
struct SZEKFlags
{
    SZEKPlace place; ///< nowhere where the file's version has none
    std::array<unsigned char, CompressionFamilyCount> values = {};
};

} // namespace zek
