#pragma once

#include <algorithm>

#include "ZEKFormat/SZEKFlags.h"

namespace zek
{

/// Walks the compression flags of an item. What it is given is a `CZEKWalk`.
///
/// The values are copied: by the time that the item is told of, the source may have let go of the
/// bytes.
template <typename Walk>
bool WalkFlags(Walk& walk, SZEKFlags& flags)
{
    if (!walk.Block(
            "flags",
            [&](auto& fields) { flags.place = fields.Bytes("flags", CompressionFamilyCount); }))
        return false;
    std::copy_n(flags.place.address, flags.values.size(), flags.values.begin());
    return true;
}

} // namespace zek
