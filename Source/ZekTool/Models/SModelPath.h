#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zektool
{

/// A model in the list of those that are worked on.
struct SModelPath
{
    std::string path;
    std::size_t nameStart = 0; ///< where the part begins that is below the folder that was named
    std::string error = {};    ///< why the path could not be followed, or empty

    /// Returns the path below the folder that was named, or the bare file name.
    std::string_view GetName() const { return std::string_view(path).substr(nameStart); }
};

} // namespace zektool
