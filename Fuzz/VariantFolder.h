#pragma once

#include <array>

#include "Support/CTemporaryFolder.h"

namespace fuzz
{

constexpr std::array<const char*, 4> Families = {"pvrtc", "etc", "astc", "dxt"};
constexpr std::array<const char*, 4> Extensions = {".pvr", ".pvr", ".pvr", ".dds"};

/// Returns a folder with every third of the variants that the seeds' models could have.
const testsupport::CTemporaryFolder& GetVariantFolder();

} // namespace fuzz
