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

/// Writes the six faces of a cubemap; the start of their names is like
/// "tex_reflection_cube_etc\Probe".
inline void
WriteFaces(const CTemporaryFolder& folder, const std::string& start, const std::string& extension)
{
    for (char face = '0'; face <= '5'; ++face)
        folder.Write(start + "\\reflection_cube_" + face + "." + extension, "");
}

} // namespace testsupport
