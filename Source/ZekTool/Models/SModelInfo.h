#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ZEKOverwriter/SCompressionFamily.h"

namespace zektool
{

/// An item of a model that has, or may have, compression flags.
struct SItemInfo
{
    std::string name;
    bool hasFlags = false;
    std::array<unsigned char, zek::CompressionFamilyCount> flags = {};
};

/// What is in a model.
struct SModelInfo
{
    int version = 0;
    std::int64_t size = 0; ///< in bytes
    bool hasMarker = false;
    bool isProcessed = false; ///< the marker is set

    bool hasGeometry = false; ///< the version has what the next four count
    std::size_t nodeCount = 0;
    std::size_t meshCount = 0;
    std::size_t materialCount = 0;
    std::size_t boneCount = 0;

    std::vector<SItemInfo> textures;
    int cubemapCount = 0;            ///< also of cubemaps without records of their own
    std::vector<SItemInfo> cubemaps; ///< of the reflection probes
    int lightmapCount = 0;           ///< also of lightmaps without records of their own
    std::vector<SItemInfo> lightmaps;
};

/// Reads a model. Returns why it could not be read, in a few words, or nothing.
std::string ReadModelInfo(const std::string& path, SModelInfo& info);

} // namespace zektool
