#pragma once

#include "ZEKFormat/SZEKPlace.h"

namespace zek
{

/// The compression flags of an item: PVRTC, ETC, ASTC and DXT.
constexpr int CompressionFamilyCount = 4;

/// Walks the compression flags of an item, a byte a family. What it is given is a `CZEKWalk`.
template <typename Walk>
bool WalkFlags(Walk& walk, SZEKPlace& flags)
{
    return walk.Block(
        "flags", [&](auto& fields) { flags = fields.Bytes("flags", CompressionFamilyCount); });
}

} // namespace zek
