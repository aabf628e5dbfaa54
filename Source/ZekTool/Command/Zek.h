#pragma once

#include <string>
#include <vector>

#include "ZekTool/Output/EExitStatus.h"

namespace zektool
{

/// Runs the program with the words after its name.
EExitStatus RunZek(const std::vector<std::string>& words);

} // namespace zektool
