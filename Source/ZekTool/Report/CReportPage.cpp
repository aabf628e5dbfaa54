#include "ZekTool/Report/CReportPage.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <fmt/chrono.h>

#include "ZekTool/Models/CVariantSearch.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"
#include "ZekTool/Report/ReportTemplate.h"

namespace zektool
{

namespace
{

/// Returns JSON as it can stand in a script element, whose end a browser looks for first.
std::string MakeScriptText(const Json& json)
{
    std::string text;
    for (char c : json.dump())
        text += c == '<' ? "\\u003c" : std::string(1, c);
    return text;
}

/// Returns names, flags with missing files, and of lightmaps what their files are named.
Json MakeItemsJson(const std::vector<SReportItem>& items)
{
    constexpr unsigned flagFactor = 64; // above the bits of the missing files
    Json names = Json::array();
    Json marks = Json::array();
    Json stems = Json::array();
    for (const SReportItem& item : items)
    {
        names.push_back(MakeShowable(item.name));
        if (item.variant.kind == zek::EZEKItemKind::Lightmap)
            stems.push_back(MakeShowable(item.variant.name));
        for (std::size_t family = 0; family < item.flags.size(); ++family)
        {
            // Every other value of a flag is as wrong as the next.
            const unsigned flag = std::min<unsigned>(item.flags[family], 2);
            marks.push_back(flag * flagFactor + item.missing[family]);
        }
    }
    return Json::array({std::move(names), std::move(marks), std::move(stems)});
}

/// Returns the numbers of the kinds of finding that a model has, each followed by how many it has.
Json MakeCodesJson(const SCheckResult& check)
{
    Json codes = Json::array();
    for (std::size_t kind = 0; kind < check.counts.size(); ++kind)
    {
        if (check.counts[kind] == 0)
            continue;
        codes.push_back(kind);
        codes.push_back(check.counts[kind]);
    }
    return codes;
}

Json MakeFindingsJson(const SCheckResult& check)
{
    Json findings = Json::array();
    for (const SFinding& finding : check.findings)
        findings.push_back(
            {static_cast<std::size_t>(finding.finding),
             MakeShowable(finding.location.GetLocationText()), MakeShowable(finding.message)});
    return findings;
}

Json MakeKindsOfFindingJson()
{
    Json kinds = Json::array();
    for (const SFindingKind& kind : GetFindingKinds())
        kinds.push_back(
            {kind.code, GetSeverityName(kind.severity), kind.text, kind.explanation, kind.remedy});
    return kinds;
}

/// Returns what stands in the path of each file of a variant before and after the item's name.
Json MakePathsOfVariantJson(CVariantSearch& search, zek::EZEKItemKind kind, std::size_t family)
{
    const std::string name(1, '*'); // in no path of a variant by itself
    Json paths = Json::array();
    for (int file = 0; file < zek::CZEKVariantFinder::GetFileCount(kind); ++file)
    {
        const std::string& path = search.GetPath({kind, name}, family, file);
        const std::size_t start = path.find(name);
        paths.push_back({path.substr(0, start), path.substr(start + name.size())});
    }
    return paths;
}

Json MakePathsJson(bool isCubemapFolders)
{
    CVariantSearch search("", isCubemapFolders);
    Json json = Json::array();
    for (std::size_t kind = 0; kind < ItemKindCount; ++kind)
    {
        Json families = Json::array();
        for (std::size_t family = 0; family < zek::CompressionFamilies.size(); ++family)
            families.push_back(
                MakePathsOfVariantJson(search, static_cast<zek::EZEKItemKind>(kind), family));
        json.push_back(std::move(families));
    }
    return json;
}

} // namespace

std::string CReportPage::MakeRow(const std::string& path, const SModelReport& report)
{
    const std::string name = path.substr(GetModelFolder(path).size());
    Json row = {
        MakeShowable(name),
        MakeShowable(report.refusal),
        report.version,
        report.size,
        report.IsStale() ? 1 : 0,
        report.check.errorCount,
        report.check.warningCount,
        MakeCodesJson(report.check),
        MakeFindingsJson(report.check),
        report.check.suppressedCount};
    for (const std::vector<SReportItem>& items : report.items)
        row.push_back(MakeItemsJson(items));
    return MakeScriptText(row);
}

void CReportPage::Add(const std::string& path, std::string row)
{
    std::string folder = GetModelFolder(path);
    m_Rows.push_back({std::move(folder), path, std::move(row)});
}

void CReportPage::Write(COutput& output)
{
    std::sort(
        m_Rows.begin(), m_Rows.end(),
        [](const SRow& a, const SRow& b)
        { return std::tie(a.folder, a.path) < std::tie(b.folder, b.path); });
    output.Write(ReportTemplateStart);
    output.Write(MakeStart());
    WriteRows(output);
    output.Write("]}");
    output.Write(ReportTemplateEnd);
}

/// Returns the data up to the rows.
std::string CReportPage::MakeStart() const
{
    Json families = Json::array();
    for (const zek::SCompressionFamily& family : zek::CompressionFamilies)
        families.push_back(family.name);
    const Json json = {
        {"time", fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(m_Time))},
        {"families", families},
        {"kinds", MakeKindsOfFindingJson()},
        {"paths", MakePathsJson(m_IsCubemapFolders)}};
    std::string text = MakeScriptText(json);
    text.back() = ',';
    return text + "\"folders\":[";
}

/// Writes each folder with its models.
void CReportPage::WriteRows(COutput& output)
{
    for (std::size_t i = 0; i < m_Rows.size();)
    {
        const std::string& folder = m_Rows[i].folder;
        output.Write(i == 0 ? "\n[" : ",\n[");
        output.Write(MakeScriptText(MakeShowable(folder)));
        for (; i < m_Rows.size() && m_Rows[i].folder == folder; ++i)
            output.Write(',' + m_Rows[i].json);
        output.Write("]");
    }
}

} // namespace zektool
