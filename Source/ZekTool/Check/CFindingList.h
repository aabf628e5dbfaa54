#pragma once

#include <array>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

#include "ZekTool/Check/SFinding.h"

namespace zektool
{

struct SCheckOptions
{
    bool isDeep = false;           ///< looks at every vertex and index too
    bool isCubemapFolders = false; ///< takes faces of cubemaps in real folders as well
    std::size_t maxFindings = 100;
    std::set<EFinding> ignored;
    std::set<EFinding> raised;      ///< to errors; what is ignored stays so
    std::set<EFinding> countedOnly; ///< counted as suppressed, whatever the limit
};

/// What a check found.
struct SCheckResult
{
    std::vector<SFinding> findings;  ///< errors first, each kind of severity in the order found
    std::size_t errorCount = 0;      ///< of all, also those above the limit
    std::size_t warningCount = 0;    ///< the same
    std::size_t suppressedCount = 0; ///< findings that are counted and not held
    std::array<std::size_t, FindingKindCount> counts = {}; ///< of all, by `EFinding`

    bool HasError() const { return errorCount > 0; }
    std::size_t GetCount(EFinding finding) const
    {
        return counts[static_cast<std::size_t>(finding)];
    }
};

/// Takes findings as the options want them, and holds no more than they allow.
class CFindingList
{
public:
    /// Borrows the options.
    explicit CFindingList(const SCheckOptions& options) : m_Options(options) {}

    /// Adds a finding that make() returns, which sets its location, message and path. It is counted
    /// but not made when it would not be shown.
    template <typename Make>
    void Add(EFinding finding, Make make)
    {
        if (m_Options.ignored.count(finding) != 0)
            return;
        const ESeverity severity = GetSeverity(finding);
        const bool isError = severity == ESeverity::Error;
        ++(isError ? m_ErrorCount : m_WarningCount);
        ++m_Counts[static_cast<std::size_t>(finding)];
        std::vector<SFinding>& list = isError ? m_Errors : m_Warnings;
        if (list.size() >= m_Options.maxFindings || m_Options.countedOnly.count(finding) != 0)
            return;
        SFinding made = make();
        made.location.name = MakeTold(made.location.name);
        made.finding = finding;
        made.severity = severity;
        list.push_back(std::move(made));
    }

    /// Returns all of it, once.
    SCheckResult TakeResult();

private:
    ESeverity GetSeverity(EFinding finding) const
    {
        return m_Options.raised.count(finding) != 0 ? ESeverity::Error
                                                    : GetFindingKind(finding).severity;
    }

    const SCheckOptions& m_Options;
    std::vector<SFinding> m_Errors;
    std::vector<SFinding> m_Warnings;
    std::size_t m_ErrorCount = 0;
    std::size_t m_WarningCount = 0;
    std::array<std::size_t, FindingKindCount> m_Counts = {};
};

} // namespace zektool
