#pragma once

#include <string>
#include <vector>

#include "ZekTool/Command/SCommandLine.h"
#include "ZekTool/Output/CUsageError.h"

namespace zektool
{

/// Understands the words after the program's name. Throws `CUsageError`.
SCommandLine ParseCommandLine(const std::vector<std::string>& words);

} // namespace zektool
