#include "ZekTool/Report/SModelReport.h"

#include <algorithm>

#include "ZekTool/Check/Checker.h"
#include "ZekTool/Models/SModelInfo.h"

namespace zektool
{

namespace
{

constexpr std::array<EFinding, 4> FindingsOfItems = {
    EFinding::FlagWithoutVariant, EFinding::VariantWithoutFlag, EFinding::WrongFlag,
    EFinding::PartialFamily};
constexpr std::array<EFinding, 4> StaleFindings = {
    EFinding::FlagWithoutVariant, EFinding::VariantWithoutFlag, EFinding::WrongFlag,
    EFinding::NotMarked};
constexpr std::size_t MostFindings = 20; // of the others, a model

SCheckResult CheckForReport(const std::string& path, bool isCubemapFolders)
{
    SCheckOptions options;
    options.isCubemapFolders = isCubemapFolders;
    options.maxFindings = MostFindings;
    options.countedOnly = {FindingsOfItems.begin(), FindingsOfItems.end()};
    SCheckResult result = Check(path, options);
    for (EFinding finding : FindingsOfItems)
        result.suppressedCount -= result.GetCount(finding);
    return result;
}

/// Returns those of a list's items that have flags.
std::vector<SReportItem>
MakeItems(zek::EZEKItemKind kind, const std::vector<SItemInfo>& items, CVariantSearch& search)
{
    std::vector<SReportItem> reported;
    for (std::size_t i = 0; i < items.size(); ++i)
    {
        if (!items[i].hasFlags)
            continue;
        const int index = static_cast<int>(i);
        reported.push_back(
            {MakeVariantItem(kind, index, items[i].name), items[i].name, items[i].flags,
             search.FindMissing(kind, index, items[i].name)});
    }
    return reported;
}

void ForEachMissingOf(
    const SReportItem& item,
    CVariantSearch& search,
    const std::function<void(const std::string& path)>& use)
{
    for (std::size_t family = 0; family < item.missing.size(); ++family)
    {
        for (int file = 0; item.missing[family] >> file != 0; ++file)
        {
            if ((item.missing[family] >> file & 1U) != 0)
                use(search.GetPath(item.variant, family, file));
        }
    }
}

} // namespace

bool SModelReport::IsStale() const
{
    return std::any_of(
        StaleFindings.begin(), StaleFindings.end(),
        [this](EFinding finding) { return check.GetCount(finding) > 0; });
}

VariantCounts SModelReport::GetCounts() const
{
    VariantCounts counts = {};
    for (std::size_t kind = 0; kind < items.size(); ++kind)
    {
        counts[kind].items = static_cast<std::int64_t>(items[kind].size());
        for (const SReportItem& item : items[kind])
        {
            for (std::size_t family = 0; family < item.missing.size(); ++family)
                counts[kind].variants[family] += item.missing[family] == 0 ? 1 : 0;
        }
    }
    return counts;
}

SModelReport MakeModelReport(const std::string& path, bool isCubemapFolders)
{
    SModelReport report;
    report.check = CheckForReport(path, isCubemapFolders);
    SModelInfo info;
    report.refusal = ReadModelInfo(path, info);
    if (report.IsRefused())
        return report;
    report.version = info.version;
    report.size = info.size;
    CVariantSearch search(GetModelFolder(path), isCubemapFolders);
    report.items = {
        MakeItems(zek::EZEKItemKind::Texture, info.textures, search),
        MakeItems(zek::EZEKItemKind::Cubemap, info.cubemaps, search),
        MakeItems(zek::EZEKItemKind::Lightmap, info.lightmaps, search)};
    return report;
}

void ForEachMissing(
    const std::string& path,
    const SModelReport& report,
    bool isCubemapFolders,
    const std::function<void(const std::string& path)>& use)
{
    CVariantSearch search(GetModelFolder(path), isCubemapFolders);
    for (const std::vector<SReportItem>& items : report.items)
    {
        for (const SReportItem& item : items)
            ForEachMissingOf(item, search, use);
    }
}

} // namespace zektool
