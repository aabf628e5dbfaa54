#pragma once

#include <mutex>

#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Command/SCommandLine.h"
#include "ZekTool/Output/COutput.h"
#include "ZekTool/Report/CReportPage.h"
#include "ZekTool/Report/SReportTotal.h"

namespace zektool
{

/// Reports on each model. A model that is refused is reported as such and counts as failed.
class CReportCommand : public CModelCommand
{
public:
    explicit CReportCommand(const SCommandLine& line);

    SResult Run(const SModelPath& model) override;
    SResult
    MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason) override;
    std::string MakeSummary(const STally& tally) const override;

    /// Writes what comes before the results.
    void Begin(COutput& output) const;

    /// Writes what comes after them: the whole page, or the total.
    void End(COutput& output);

private:
    bool IsPage() const { return !m_Line.isCsv && !IsJson(); }
    SResult Take(const SModelPath& model, const SModelReport& report, EOutcome outcome) const;

    SCommandLine m_Line;
    // Models are also refused where nothing else of a command changes.
    mutable std::mutex m_Mutex;
    mutable CReportPage m_Page;
    mutable SReportTotal m_Total;
};

} // namespace zektool
