#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>

#include "ZEKFormat/SZEKFlags.h"
#include "ZekTool/Models/CNamePool.h"

namespace zektool
{

/// An item that may have compressed variants, as the model has it. A file of some megabytes may
/// have millions, so it is kept small.
struct SSurveyedItem
{
    const char* name = ""; ///< of a probe before version 26 its index
    std::array<unsigned char, zek::CompressionFamilyCount> flags = {};
    std::int64_t flagsOffset = 0;
};

/// The lowest and the highest of the indices into a list.
struct SIndexRange
{
    int lowest = -1;
    int highest = -1;

    void Add(int index)
    {
        lowest = std::min(lowest, index);
        highest = std::max(highest, index);
    }

    /// Tells whether all are below the list's count, or -1 for none.
    bool IsWithin(int count) const { return lowest >= -1 && highest < count; }
};

/// What is kept of a model to check it: the items, the lowest and highest indices, and of
/// everything else only counts.
struct SSurvey
{
    std::int64_t end = 0;                    ///< one past the last byte that belongs to the model
    std::int64_t processedMarkerOffset = -1; ///< -1 when the version has none
    unsigned char processedMarker = 0;       ///< the first of its bytes
    CNamePool names;                         ///< of the items
    std::deque<SSurveyedItem> textures;
    std::deque<SSurveyedItem> cubemaps; ///< of the probes, where their version has flags
    std::deque<SSurveyedItem> lightmaps;
    int namelessLightmapCount = 0; ///< lightmaps without records, before version 26

    bool hasUnsafeName = false; ///< one of the items

    int nodeCount = 0;
    bool hasLaterParent = false; ///< a parent that does not stand before its child
    int meshCount = 0;
    int materialCount = 0;
    int boneCount = 0;

    SIndexRange meshIndices;
    SIndexRange parentIndices;
    SIndexRange materialIndices;
    SIndexRange textureIndices;

    int GetTextureCount() const { return static_cast<int>(textures.size()); }
};

} // namespace zektool
