#include "ZekTool/Report/SReportTotal.h"

namespace zektool
{

void SReportTotal::Add(const SModelReport& report)
{
    ++models;
    refused += report.IsRefused() ? 1 : 0;
    stale += report.IsStale() ? 1 : 0;
    errors += report.check.errorCount;
    warnings += report.check.warningCount;
    const VariantCounts more = report.GetCounts();
    for (std::size_t kind = 0; kind < counts.size(); ++kind)
        counts[kind].Add(more[kind]);
}

std::int64_t GetItemCount(const VariantCounts& counts)
{
    std::int64_t items = 0;
    for (const SVariantCount& count : counts)
        items += count.items;
    return items;
}

std::int64_t GetMissingCount(const VariantCounts& counts)
{
    std::int64_t missing = 0;
    for (const SVariantCount& count : counts)
        missing += count.GetMissing();
    return missing;
}

} // namespace zektool
