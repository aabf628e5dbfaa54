#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ZEKOverwriter/CZEKVariantFinder.h"
#include "ZekTool/Output/Json.h"

namespace zektool
{

constexpr std::size_t ItemKindCount = 3; ///< of `zek::EZEKItemKind`

/// How many items of one kind there are, and how many of them have a variant.
struct SVariantCount
{
    std::int64_t items = 0; ///< that have flags
    std::array<std::int64_t, zek::CompressionFamilyCount> variants = {};

    /// Adds those of another list of items.
    void Add(const SVariantCount& other);

    /// Returns how many variants are not there, of all items and families.
    std::int64_t GetMissing() const;
};

/// By `zek::EZEKItemKind`.
using VariantCounts = std::array<SVariantCount, ItemKindCount>;

/// Returns "texture", "cubemap" or "lightmap".
std::string_view GetKindName(zek::EZEKItemKind kind);

/// Returns the counts of each kind and family by their names.
Json MakeCountsJson(const VariantCounts& counts);

} // namespace zektool
