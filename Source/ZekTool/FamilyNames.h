#pragma once

#include <array>
#include <string_view>

#include "ZEKOverwriter/SCompressionFamily.h"

namespace zektool
{

/// The names of the families, in the order of `zek::CompressionFamilies`.
constexpr std::array<std::string_view, zek::CompressionFamilyCount> FamilyNames = {
    "PVRTC", "ETC", "ASTC", "DXT"};

} // namespace zektool
