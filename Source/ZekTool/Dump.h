#pragma once

#include "ZekTool/COutput.h"
#include "ZekTool/EExitStatus.h"
#include "ZekTool/SCommandLine.h"

namespace zektool
{

/// Prints every field of the model that the command line names, in file order.
EExitStatus Dump(const SCommandLine& line, COutput& output);

} // namespace zektool
