#pragma once

#include <stdexcept>

namespace zektool
{

/// A wrong command line, or nothing to work on; what() says why and what to do.
class CUsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace zektool
