#pragma once

#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/SZEKRefusal.h"

namespace zektool
{

/// Returns why a walk of the file was refused, in a few words without the place: of a file that is
/// no model, what it is instead, which takes its first bytes.
std::string MakeCauseText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file);

/// Returns the place and the cause in one line.
std::string MakeRefusalText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file);

} // namespace zektool
