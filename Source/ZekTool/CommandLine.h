#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "ZekTool/SCommandLine.h"

namespace zektool
{

/// A command line that is wrong; what() says why and what to do.
class CUsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Understands the words behind the program's name. Throws `CUsageError`.
SCommandLine ParseCommandLine(const std::vector<std::string>& words);

} // namespace zektool
