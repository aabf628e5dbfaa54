#pragma once

#include <string>
#include <string_view>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zektool
{

/// What every model starts with.
constexpr std::string_view ModelMagic("ZEK\0", 4);

/// Reads as much of an open file's start as tells what it is.
std::string ReadStart(filesystem::CRandomAccessFile& file);

/// Tells whether a file may be a model that was cut before the end of what all models start with.
inline bool IsCutMagic(std::string_view bytes)
{
    return bytes.size() < ModelMagic.size() && ModelMagic.substr(0, bytes.size()) == bytes;
}

/// Returns what a file that is no model looks like by its first bytes, in words that follow "it
/// looks like".
std::string DescribeFileKind(std::string_view start);

} // namespace zektool
