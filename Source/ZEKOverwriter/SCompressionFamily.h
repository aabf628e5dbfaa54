#pragma once

#include <array>
#include <string_view>

#include "ZEKFormat/SZEKFlags.h"

namespace zek
{

/// One family of GPU texture compression and where its variants lie beside a model.
struct SCompressionFamily
{
    std::string_view name;          ///< for people
    std::string_view textureFolder; ///< folder of compressed textures and lightmaps
    std::string_view cubemapFolder; ///< folder of compressed reflection cubemaps
    std::string_view extension;     ///< extension of all of these, without the dot
};

/// The families in the order of every group of flags and of every count: PVRTC, ETC, ASTC, DXT.
constexpr std::array<SCompressionFamily, CompressionFamilyCount> CompressionFamilies = {{
    {"PVRTC", "tex_pvrtc", "tex_reflection_cube_pvrtc", "pvr"},
    {"ETC", "tex_etc", "tex_reflection_cube_etc", "pvr"},
    {"ASTC", "tex_astc", "tex_reflection_cube_astc", "pvr"},
    {"DXT", "tex_dxt", "tex_reflection_cube_dxt", "dds"},
}};
static_assert(!CompressionFamilies.back().name.empty(), "each family has a line");

} // namespace zek
