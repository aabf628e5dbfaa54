#pragma once

#include <atomic>
#include <cstddef>

#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Command/SCommandLine.h"

namespace zektool
{

/// Says what is wrong with each model.
class CCheckCommand : public CModelCommand
{
public:
    /// Throws `CUsageError` when the line names a code that there is not.
    explicit CCheckCommand(const SCommandLine& line);

    SResult Run(const SModelPath& model) override;
    SResult
    MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason) override;
    std::string MakeSummary(const STally& tally) const override;

private:
    SResult Tell(const SModelPath& model, const SCheckResult& result);

    SCheckOptions m_Options;
    std::atomic<std::size_t> m_ErrorCount{0};
    std::atomic<std::size_t> m_WarningCount{0};
};

/// Returns what a code means and what to do, in lines. Throws `CUsageError` for one that there is
/// not.
std::string ExplainCode(const std::string& code);

} // namespace zektool
