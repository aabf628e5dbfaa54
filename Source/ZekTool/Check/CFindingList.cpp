#include "ZekTool/Check/CFindingList.h"

#include <algorithm>
#include <iterator>

namespace zektool
{

SCheckResult CFindingList::TakeResult()
{
    SCheckResult result;
    result.errorCount = m_ErrorCount;
    result.warningCount = m_WarningCount;
    result.counts = m_Counts;
    result.findings = std::move(m_Errors);
    const std::size_t room = m_Options.maxFindings - result.findings.size();
    const auto end =
        m_Warnings.begin() + static_cast<std::ptrdiff_t>(std::min(m_Warnings.size(), room));
    std::move(m_Warnings.begin(), end, std::back_inserter(result.findings));
    result.suppressedCount = m_ErrorCount + m_WarningCount - result.findings.size();
    return result;
}

} // namespace zektool
