#pragma once

#include <string>
#include <vector>

#include "ZekTool/Models/SModelPath.h"

namespace zektool
{

/// Appends the models that a path stands for: itself, or, when it is a folder, all files below it
/// whose names match one of the patterns, in the byte order of their paths. Symbolic links to
/// folders are followed only when the path is one.
///
/// What cannot be read is appended with its error, so that it fails in its place. Ctrl-C ends the
/// search early. Returns how many models were appended.
std::size_t FindModels(
    const std::string& path,
    const std::vector<std::string>& patterns,
    std::vector<SModelPath>& models);

} // namespace zektool
