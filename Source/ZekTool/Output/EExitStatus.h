#pragma once

namespace zektool
{

/// The exit statuses of `zek`. The manual says the same in its section on them.
enum class EExitStatus
{
    Success = 0, ///< Everything was done and all is well.
    Failure = 1, ///< A model failed, a check found an error, or the output could not be written.
    Usage = 2,   ///< The command line is wrong, or there is nothing to work on. Nothing was done.
    Interrupted = 130, ///< Ctrl-C ended it before every model was done.
};

} // namespace zektool
