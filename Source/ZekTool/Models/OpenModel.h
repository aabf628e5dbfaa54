#pragma once

#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zektool
{

/// Opens a model. Returns why it cannot be opened, in a few words, or nothing.
std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file);

} // namespace zektool
