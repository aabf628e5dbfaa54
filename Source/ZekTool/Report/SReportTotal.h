#pragma once

#include <cstddef>

#include "ZekTool/Models/SVariantCount.h"
#include "ZekTool/Report/SModelReport.h"

namespace zektool
{

/// What the models of a report come to.
struct SReportTotal
{
    std::size_t models = 0;
    std::size_t refused = 0;
    std::size_t stale = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    VariantCounts counts = {};

    void Add(const SModelReport& report);
};

/// Returns how many items the counts have, of all kinds.
std::int64_t GetItemCount(const VariantCounts& counts);

/// Returns how many variants are not there, of all kinds and families.
std::int64_t GetMissingCount(const VariantCounts& counts);

} // namespace zektool
