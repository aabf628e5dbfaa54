#pragma once

#include "ZEKOverwriter/SCompressionFamily.h"
#include "ZEKOverwriter/SZEKPlace.h"

namespace zek
{

/// Walks the compression flags of an item, a byte a family. What it is given is a `CZEKWalk`.
template <typename Walk>
bool WalkFlags(Walk& walk, SZEKPlace& flags)
{
    return walk.Block(
        "flags", [&](auto& fields) { flags = fields.Bytes("flags", CompressionFamilyCount); });
}

} // namespace zek
