#pragma once

#include <string>

namespace filesystem
{

/// Creates one folder whose parent exists. Always true on this platform, and nothing is created.
bool CreateOneFolder(const std::string& path);

} // namespace filesystem
