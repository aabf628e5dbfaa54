#include "ZekTool/Report/ReportText.h"

#include <string_view>

#include <fmt/format.h>

#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

/// Calls a function with the code and the number of each kind of finding that a model has.
template <typename Use>
void ForEachCode(const SCheckResult& check, Use use)
{
    for (const SFindingKind& kind : GetFindingKinds())
    {
        if (check.GetCount(kind.finding) > 0)
            use(kind.code, check.GetCount(kind.finding));
    }
}

/// Returns a text as a field of a line, in quotation marks where it needs them.
std::string MakeCsvText(std::string_view bytes)
{
    std::string text = MakeShowable(bytes);
    if (text.find_first_of(",\"") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (char c : text)
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + '"';
}

/// Returns the fields of the counts, each after a comma.
std::string MakeCsvCounts(const VariantCounts& counts)
{
    std::string text;
    for (const SVariantCount& count : counts)
    {
        text += fmt::format(",{}", count.items);
        for (std::int64_t variants : count.variants)
            text += fmt::format(",{}", variants);
    }
    return text;
}

std::string_view GetOutcomeName(const SModelReport& report)
{
    return report.IsRefused() ? "refused" : "read";
}

} // namespace

std::string
MakeReportJson(const std::string& path, const SModelReport& report, bool isCubemapFolders)
{
    Json codes = Json::object();
    ForEachCode(
        report.check,
        [&](std::string_view code, std::size_t count) { codes[std::string(code)] = count; });
    Json json = {
        {"model", MakeJsonText(path)},
        {"outcome", GetOutcomeName(report)},
        {"errors", report.check.errorCount},
        {"warnings", report.check.warningCount},
        {"codes", std::move(codes)}};
    if (report.IsRefused())
    {
        json["error"] = MakeJsonText(report.refusal);
        return MakeJsonLine(json);
    }
    Json missing = Json::array();
    ForEachMissing(
        path, report, isCubemapFolders,
        [&](const std::string& file) { missing.push_back(MakeJsonText(file)); });
    json["version"] = report.version;
    json["size"] = report.size;
    json["stale"] = report.IsStale();
    json["counts"] = MakeCountsJson(report.GetCounts());
    json["missing"] = std::move(missing);
    return MakeJsonLine(json);
}

std::string MakeTotalJson(const SReportTotal& total)
{
    return MakeJsonLine(
        {{"total",
          {{"models", total.models},
           {"refused", total.refused},
           {"stale", total.stale},
           {"errors", total.errors},
           {"warnings", total.warnings},
           {"counts", MakeCountsJson(total.counts)}}}});
}

std::string MakeCsvHeader()
{
    std::string text = "model,outcome,version,size,stale,errors,warnings,missing";
    for (std::size_t kind = 0; kind < ItemKindCount; ++kind)
    {
        const std::string_view name = GetKindName(static_cast<zek::EZEKItemKind>(kind));
        text += fmt::format(",{}s", name);
        for (const zek::SCompressionFamily& family : zek::CompressionFamilies)
            text += fmt::format(",{}s {}", name, family.name);
    }
    return text + ",codes,error\n";
}

std::string MakeCsvLine(const std::string& path, const SModelReport& report)
{
    std::string codes;
    ForEachCode(
        report.check, [&](std::string_view code, std::size_t)
        { codes += (codes.empty() ? "" : " ") + std::string(code); });
    const VariantCounts counts = report.GetCounts();
    return fmt::format(
        "{},{},{},{},{},{},{},{}{},{},{}\n", MakeCsvText(path), GetOutcomeName(report),
        report.version, report.size, report.IsStale() ? "yes" : "no", report.check.errorCount,
        report.check.warningCount, GetMissingCount(counts), MakeCsvCounts(counts), codes,
        MakeCsvText(report.refusal));
}

} // namespace zektool
