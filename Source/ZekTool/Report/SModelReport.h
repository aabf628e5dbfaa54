#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Models/CVariantSearch.h"
#include "ZekTool/Models/SVariantCount.h"

namespace zektool
{

/// An item of a model that has flags, with what there is of its variants.
struct SReportItem
{
    zek::SZEKItem variant; ///< what its variants are looked for by
    std::string name;      ///< in the model
    std::array<unsigned char, zek::CompressionFamilyCount> flags = {};
    MissingFiles missing = {};
};

/// What a report tells of a model.
struct SModelReport
{
    std::string refusal; ///< why it could not be read, or empty
    int version = 0;
    std::int64_t size = 0;                                     ///< in bytes
    std::array<std::vector<SReportItem>, ItemKindCount> items; ///< by `zek::EZEKItemKind`
    SCheckResult check;

    bool IsRefused() const { return !refusal.empty(); }

    /// Tells whether a flag is not what it has to be, or the processed marker is not set.
    bool IsStale() const;

    VariantCounts GetCounts() const;
};

/// Reads and checks a model and looks for its variants. Nothing is changed, printed or waited for.
/// Several threads may call it at once.
///
/// Findings that the items show by themselves (a flag that is not true, a family that only some
/// have) are counted and not kept, nor are more than 20 of the others.
SModelReport MakeModelReport(const std::string& path, bool isCubemapFolders);

/// Calls a function with the path of each file that the variants of a model lack.
void ForEachMissing(
    const std::string& path,
    const SModelReport& report,
    bool isCubemapFolders,
    const std::function<void(const std::string& path)>& use);

} // namespace zektool
