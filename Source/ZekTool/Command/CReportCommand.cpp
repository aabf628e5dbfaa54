#include "ZekTool/Command/CReportCommand.h"

#include <ctime>
#include <utility>

#include <fmt/format.h>

#include "ZekTool/Check/Checker.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"
#include "ZekTool/Report/ReportText.h"

namespace zektool
{

CReportCommand::CReportCommand(const SCommandLine& line)
    : CModelCommand(line.isJson)
    , m_Line(line)
    , m_Page(line.isCubemapFolders, std::time(nullptr))
{
}

SResult CReportCommand::Run(const SModelPath& model)
{
    const SModelReport report = MakeModelReport(model.path, m_Line.isCubemapFolders);
    return Take(model, report, report.IsRefused() ? EOutcome::Failed : EOutcome::Well);
}

SResult
CReportCommand::MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason)
{
    if (outcome == EOutcome::NotDone)
        return {outcome, IsJson() ? MakeFailureJson(model.path, outcome, reason) : ""};
    SModelReport report;
    report.refusal = reason;
    report.check = MakeFailedCheck(reason, {});
    return Take(model, report, outcome);
}

SResult
CReportCommand::Take(const SModelPath& model, const SModelReport& report, EOutcome outcome) const
{
    std::string output;
    if (m_Line.isCsv)
        output = MakeCsvLine(model.path, report);
    else if (IsJson())
        output = MakeReportJson(model.path, report, m_Line.isCubemapFolders);
    else
        output = CReportPage::MakeRow(model.path, report);

    const std::lock_guard lock(m_Mutex);
    m_Total.Add(report);
    if (!IsPage())
        return {outcome, std::move(output)};
    m_Page.Add(model.path, std::move(output));
    return {outcome, ""};
}

std::string CReportCommand::MakeSummary(const STally& tally) const
{
    const std::int64_t items = GetItemCount(m_Total.counts);
    return fmt::format(
        "{} read, {} refused, {} stale; {} of {} are missing", tally.well, tally.failed,
        m_Total.stale, GetMissingCount(m_Total.counts),
        MakeCount(
            static_cast<std::uint64_t>(items * zek::CompressionFamilyCount), "variant",
            "variants"));
}

void CReportCommand::Begin(COutput& output) const
{
    if (m_Line.isCsv)
        output.Write(MakeCsvHeader());
}

void CReportCommand::End(COutput& output)
{
    if (IsPage())
        m_Page.Write(output);
    else if (IsJson())
        output.Write(MakeTotalJson(m_Total));
}

} // namespace zektool
