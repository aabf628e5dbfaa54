#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zektool
{

/// What came of a model.
enum class EOutcome
{
    Well,    ///< shown, found well, or as it was
    Changed, ///< written to, or to be written to
    Failed,
    NotDone, ///< Ctrl-C or an error of the output came first
};

/// How many models there were so far.
struct STally
{
    static constexpr std::size_t MostPaths = 10000;

    std::size_t well = 0;
    std::size_t changed = 0;
    std::size_t failed = 0;
    std::size_t notDone = 0;
    std::vector<std::string> failedPaths = {}; ///< in the order of the list, at most `MostPaths`

    std::size_t GetDone() const { return well + changed + failed; }
    std::size_t GetTotal() const { return GetDone() + notDone; }

    /// Counts a model. The path is kept when it failed.
    void Add(EOutcome outcome, const std::string& path);
};

} // namespace zektool
