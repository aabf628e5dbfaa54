#pragma once

#include <chrono>
#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zektool
{

/// The last of the pauses after which a model that another program has to itself, or changes, is
/// tried again. Each is twice as long as the one before, from a millisecond on: two seconds in all.
constexpr std::chrono::milliseconds LongestPause(1024);

/// Opens a model, and waits two seconds at most for another program that has it to itself, as one
/// has that marks it. Returns why it cannot be opened, in a few words, or nothing.
std::string OpenModel(const std::string& path, filesystem::CRandomAccessFile& file);

/// Tells whether there is a model at a path, whatever is wrong with it, or a file that cannot be
/// opened and so may be one.
bool IsModel(const std::string& path);

} // namespace zektool
