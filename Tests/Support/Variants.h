#pragma once

#include <string>

#include "Support/CTemporaryFolder.h"
#include "Support/SModel.h"

namespace testsupport
{

constexpr Flags None = {0, 0, 0, 0};
constexpr Flags All = {1, 1, 1, 1};

/// Flag bytes before a run, none of which may stay.
constexpr Flags Old = {1, 2, 255, 1};

const std::string NoTextures = "ExistTextureCompression 0 0 0 0\n";
const std::string NoCubemaps = "ExistCubemapCompression 0 0 0 0\n";
const std::string NoLightmaps = "ExistLightmapCompression 0 0 0 0\n";

/// Writes the faces of a cubemap, or the first of them; the start of their names is like
/// "tex_reflection_cube_etc\Probe".
inline void WriteFaces(
    const CTemporaryFolder& folder,
    const std::string& start,
    const std::string& extension,
    const std::string& separator = "\\",
    int count = 6)
{
    for (int face = 0; face < count; ++face)
        folder.Write(
            start + separator + "reflection_cube_" + std::to_string(face) + "." + extension,
            "face");
}

} // namespace testsupport
