#include <algorithm>
#include <array>
#include <cstdio>
#include <initializer_list>
#include <string_view>

#include "Independent/FormatString/LFormat.h"
#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/LFileName.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/SCompressionFamily.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

namespace
{

constexpr int CubeFaceCount = 6;

/// One value per compression family.
template <typename Value>
using FamilyArray = std::array<Value, CompressionFamilyCount>;

/// Tells whether a file exists whose path is put together from pieces. The path is built in one
/// string for all calls, which is faster than a string for each.
bool IsExistFile(std::string& candidate, std::initializer_list<std::string_view> pieces)
{
    candidate.clear();
    for (std::string_view piece : pieces)
        candidate.append(piece);
    return filesystem::CFindFile::IsExistFile(candidate);
}

/// The same for the variant of a texture or lightmap in one family: beside the model, under a name
/// without extension.
bool IsExistVariant(
    std::string& candidate,
    const std::string& modelFolder,
    const SCompressionFamily& family,
    const std::string& name)
{
    return IsExistFile(
        candidate, {modelFolder, family.textureFolder, "/", name, ".", family.extension});
}

/// Sets a flag and adds it to the number of items that have a variant of its family. The address
/// is null for an item whose version has no flags.
void SetFlag(const unsigned char* slot, bool isPresent, int& count)
{
    if (slot == nullptr)
        return;
    SetImageByte(slot, isPresent ? 1 : 0);
    count += isPresent ? 1 : 0;
}

/// Prints how many items have a variant of each family; the format names the kind of item.
void PrintCounts(const char* kind, const FamilyArray<int>& counts)
{
    std::printf(
        "Exist%sCompression %d %d %d %d\n", kind, counts[0], counts[1], counts[2], counts[3]);
}

} // namespace

bool CZEKOverwriter::AnalyseTextureCompression(int, const std::string& path)
{
    const std::string modelFolder = LFileName::DeleteFileName(path);
    FamilyArray<int> counts = {};
    std::string candidate;
    for (std::size_t i = 0; i < m_TextureFlagQuadList.size(); ++i)
    {
        // A texture is looked for by its index, never by its own name.
        const std::string name = LFormat::Make("%03d", static_cast<int>(i));
        for (std::size_t family = 0; family < counts.size(); ++family)
        {
            const bool isPresent =
                IsExistVariant(candidate, modelFolder, CompressionFamilies[family], name);
            SetFlag(m_TextureFlagQuadList[i][family], isPresent, counts[family]);
        }
    }
    PrintCounts("Texture", counts);
    return true;
}

bool CZEKOverwriter::AnalyseReflectionProbeCompression(int version, const std::string& path)
{
    if (version < version::ReflectionProbeFlags)
        return true;

    const std::string modelFolder = LFileName::DeleteFileName(path);
    const std::size_t probeCount = std::min(GetListSize(m_ProbeCount), m_ProbeFlagQuadList.size());
    FamilyArray<int> counts = {};
    std::string candidate;
    for (std::size_t probe = 0; probe < probeCount; ++probe)
    {
        FamilyArray<bool> isPresent = {true, true, true, true};
        for (int face = 0; face < CubeFaceCount; ++face)
        {
            const std::string faceName = LFormat::Make("%s_%d", "reflection_cube", face);
            for (std::size_t family = 0; family < counts.size(); ++family)
            {
                if (!IsExistFile(
                        candidate, {modelFolder, CompressionFamilies[family].cubemapFolder, "\\",
                                    m_ProbeNameList[probe], "\\", faceName, ".",
                                    CompressionFamilies[family].extension}))
                    isPresent[family] = false;
            }
        }
        for (std::size_t family = 0; family < counts.size(); ++family)
            SetFlag(m_ProbeFlagQuadList[probe][family], isPresent[family], counts[family]);
    }
    PrintCounts("Cubemap", counts);
    return true;
}

bool CZEKOverwriter::AnalyseLightmapCompression(int, const std::string& path)
{
    const std::string modelFolder = LFileName::DeleteFileName(path);
    FamilyArray<int> counts = {};
    std::string candidate;
    for (std::size_t i = 0; i < m_LightmapFlagQuadList.size(); ++i)
    {
        const std::string name =
            LFormat::Make("%s", LFileName::DeleteExtension(m_LightmapNameList[i]).c_str());
        for (std::size_t family = 0; family < counts.size(); ++family)
        {
            const bool isPresent =
                IsExistVariant(candidate, modelFolder, CompressionFamilies[family], name);
            SetFlag(m_LightmapFlagQuadList[i][family], isPresent, counts[family]);
        }
    }
    PrintCounts("Lightmap", counts);
    return true;
}

} // namespace zek
