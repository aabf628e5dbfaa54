#pragma once

#include <string>

namespace zektool
{

/// Tells whether the path of a variant can be opened for reading, which is what makes it count as
/// there: a folder can be, and so can a FIFO or a device, which is not waited for.
bool IsExistVariant(const std::string& path);

} // namespace zektool
