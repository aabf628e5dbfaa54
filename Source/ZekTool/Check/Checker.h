#pragma once

#include <string>

#include "ZekTool/Check/CFindingList.h"

namespace zektool
{

/// Says what is wrong with a model and with the variants beside it. Nothing is changed, printed or
/// waited for; the path is the system's own. Several threads may call it at once.
///
/// The time is linear in the size of the model and of the folders of its variants, but for the
/// names of lightmaps, which are sorted. Kept in memory are the model's items, no more findings
/// than the options allow, and the parents of all nodes where one does not stand before its child.
SCheckResult Check(const std::string& path, const SCheckOptions& options);

/// Returns what is said of a model that cannot be checked, for a reason.
SCheckResult MakeFailedCheck(const std::string& reason, const SCheckOptions& options);

} // namespace zektool
