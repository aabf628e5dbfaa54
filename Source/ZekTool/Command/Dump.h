#pragma once

#include "ZekTool/Command/SCommandLine.h"
#include "ZekTool/Output/COutput.h"
#include "ZekTool/Output/EExitStatus.h"

namespace zektool
{

/// Prints every field of the model that the command line names, in file order.
EExitStatus Dump(const SCommandLine& line, COutput& output);

} // namespace zektool
