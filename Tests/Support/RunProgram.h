#pragma once

#include <string>
#include <vector>

namespace testsupport
{

/// What a program left behind.
struct SProgramResult
{
    std::string output;     ///< all of its standard output
    std::string errors;     ///< all of its standard error
    int exitStatus = -1;    ///< 0 to 255, or -1 when a signal ended it
    int signal = 0;         ///< the signal that ended it, or 0
    long peakKilobytes = 0; ///< largest resident memory
};

/// Runs a program in a working folder, without input, and waits for its end. The first of the
/// words is the program's path or a name to look for in PATH; no shell takes part.
SProgramResult RunProgram(const std::vector<std::string>& words, const std::string& folder = ".");

} // namespace testsupport
