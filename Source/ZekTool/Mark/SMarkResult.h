#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>

#include "ZEKFormat/SZEKFlags.h"
#include "ZEKOverwriter/CZEKVariantFinder.h"
#include "ZekTool/Models/CNamePool.h"
#include "ZekTool/Models/SVariantCount.h"

namespace zektool
{

/// The flag bytes of an item, in the order of `zek::CompressionFamilies`.
using FlagBytes = std::array<unsigned char, zek::CompressionFamilyCount>;

/// A texture, cubemap or lightmap of a model, and its flags. A file of some megabytes may have
/// millions, so it is kept small.
struct SMarkItem
{
    zek::EZEKItemKind kind;
    int index;           ///< among the items of its kind, from 0
    const char* name;    ///< in the model: of the texture, the probe or the lightmap
    std::int64_t offset; ///< of its first flag in the file
    FlagBytes from;      ///< its flags in the file
    FlagBytes to = {};   ///< what they have to be

    bool IsDifferent() const { return to != from; }
};

/// What came of marking a model.
struct SMarkResult
{
    enum EOutcome
    {
        Changed,   ///< something differs, and has been written unless nothing was to be
        Unchanged, ///< everything is as it has to be
        Failed,    ///< see reason
    };

    EOutcome outcome = Failed;
    std::string reason; ///< of a failure, in one line without the model's path
    int version = 0;
    bool isMarkerSet = false;     ///< the processed marker differed, ...
    unsigned char markerFrom = 0; ///< ... was this, and is to be 1
    std::deque<SMarkItem> items;  ///< in file order, also those of which no flag differs; none of a
                                  ///< model that is refused
    CNamePool names;              ///< of the items
    VariantCounts counts = {};
};

} // namespace zektool
