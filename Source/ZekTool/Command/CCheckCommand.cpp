#include "ZekTool/Command/CCheckCommand.h"

#include <fmt/format.h>

#include "ZekTool/Check/Checker.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

CUsageError MakeCodeError(const std::string& code)
{
    std::string text = "no finding has the code " + MakeShowable(code) + "; the codes are";
    for (const SFindingKind& kind : GetFindingKinds())
        text += fmt::format("\n  {}", kind.code);
    return CUsageError(text);
}

std::set<EFinding> FindFindings(const std::vector<std::string>& codes)
{
    std::set<EFinding> findings;
    for (const std::string& code : codes)
    {
        const std::optional<EFinding> finding = FindFinding(code);
        if (!finding)
            throw MakeCodeError(code);
        findings.insert(*finding);
    }
    return findings;
}

std::string MakeText(const SModelPath& model, const SCheckResult& result)
{
    const std::string path = MakeShowable(model.path);
    if (result.findings.empty() && result.suppressedCount == 0)
        return path + ": well\n";
    std::string text;
    for (const SFinding& finding : result.findings)
        text += fmt::format(
            "{}: {}: {}\n", path, GetSeverityName(finding.severity),
            MakeShowable(finding.GetText()));
    if (result.suppressedCount > 0)
        text += fmt::format(
            "{}: {}; --max-findings shows more\n", path,
            MakeCount(result.suppressedCount, "finding is left out", "findings are left out"));
    return text;
}

Json MakeFindingJson(const SFinding& finding)
{
    const SFindingKind& kind = GetFindingKind(finding.finding);
    const zek::SZEKLocation& location = finding.location;
    Json json = {
        {"code", kind.code},
        {"severity", GetSeverityName(finding.severity)},
        {"message", MakeJsonText(finding.message)},
        {"remedy", kind.remedy},
        {"section", location.section},
        {"index", location.index >= 0 ? Json(location.index) : Json(nullptr)},
        {"name", MakeJsonText(location.name)},
        {"field", location.field},
        {"offset", location.offset}};
    if (!finding.path.empty())
        json["path"] = MakeJsonText(finding.path);
    return json;
}

std::string MakeJson(const SModelPath& model, const SCheckResult& result)
{
    Json findings = Json::array();
    for (const SFinding& finding : result.findings)
        findings.push_back(MakeFindingJson(finding));
    return MakeJsonLine(
        {{"model", MakeJsonText(model.path)},
         {"outcome", result.HasError() ? "failed" : "well"},
         {"errors", result.errorCount},
         {"warnings", result.warningCount},
         {"leftOut", result.suppressedCount},
         {"findings", std::move(findings)}});
}

} // namespace

CCheckCommand::CCheckCommand(const SCommandLine& line) : CModelCommand(line.isJson)
{
    m_Options.isDeep = line.isDeep;
    m_Options.isCubemapFolders = line.isCubemapFolders;
    m_Options.maxFindings = line.maxFindings;
    m_Options.ignored = FindFindings(line.ignored);
    m_Options.raised = FindFindings(line.errorCodes);
}

SResult CCheckCommand::Run(const SModelPath& model)
{
    return Tell(model, Check(model.path, m_Options));
}

SResult CCheckCommand::Tell(const SModelPath& model, const SCheckResult& result)
{
    m_ErrorCount += result.errorCount;
    m_WarningCount += result.warningCount;
    return {
        result.HasError() ? EOutcome::Failed : EOutcome::Well,
        IsJson() ? MakeJson(model, result) : MakeText(model, result)};
}

SResult
CCheckCommand::MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason)
{
    if (outcome == EOutcome::Failed)
        return Tell(model, MakeFailedCheck(reason, m_Options));
    return CModelCommand::MakeFailure(model, outcome, reason);
}

std::string CCheckCommand::MakeSummary(const STally& tally) const
{
    return fmt::format(
        "{} well, {} failed; {}, {}", tally.well, tally.failed,
        MakeCount(m_ErrorCount, "error", "errors"),
        MakeCount(m_WarningCount, "warning", "warnings"));
}

std::string ExplainCode(const std::string& code)
{
    const std::optional<std::string> text = Explain(code);
    if (!text)
        throw MakeCodeError(code);
    return *text;
}

} // namespace zektool
