#pragma once

#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zektool
{

/// Opens a model. Returns why it cannot be opened, in a few words, or nothing.
std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file);

/// Tells whether there is a model at a path, whatever is wrong with it.
bool IsModel(const std::string& path);

} // namespace zektool
