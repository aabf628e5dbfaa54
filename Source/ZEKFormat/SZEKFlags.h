#pragma once

#include <array>

#include "ZEKFormat/SZEKPlace.h"

namespace zek
{

/// The compression flags of an item: PVRTC, ETC, ASTC and DXT.
constexpr int CompressionFamilyCount = 4;

/// The compression flags of an item, a byte a family.
struct SZEKFlags
{
    SZEKPlace place; ///< nowhere where the file's version has none
    std::array<unsigned char, CompressionFamilyCount> values = {};
};

} // namespace zek
