#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "Specific/FileSystem/LFileName.h"
#include "ZEKFormat/ZEKVersion.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/CZEKVariantFinder.h"
#include "ZEKOverwriter/ImageByte.h"

namespace zek
{

namespace
{

/// The number of items that have a variant of each family.
using FamilyCounts = std::array<int, CompressionFamilyCount>;

/// Prints a line of some words and the counts.
void PrintCounts(std::string line, const FamilyCounts& counts)
{
    for (int count : counts)
        line += ' ' + std::to_string(count);
    line += '\n';
    std::fputs(line.c_str(), stdout);
}

/// Writes the flags of an item. It has none when its version has none.
void SetFlags(const FlagQuad& quad, const FamilyFlags& isPresent)
{
    for (std::size_t family = 0; family < quad.size(); ++family)
    {
        if (quad[family] != nullptr)
            SetImageByte(quad[family], isPresent[family] ? 1 : 0);
    }
}

/// Looks for the variants of items, sets the flags of each, and counts. An item without flags does
/// not count.
template <typename MakeItem>
FamilyCounts
SetFlagsOfItems(const std::string& path, const std::vector<FlagQuad>& quads, MakeItem makeItem)
{
    CZEKVariantFinder finder(LFileName::DeleteFileName(path));
    FamilyCounts counts = {};
    for (std::size_t i = 0; i < quads.size(); ++i)
    {
        const FamilyFlags isPresent = finder.Find(makeItem(i));
        SetFlags(quads[i], isPresent);
        for (std::size_t family = 0; family < counts.size(); ++family)
            counts[family] += isPresent[family] && quads[i][family] != nullptr ? 1 : 0;
    }
    return counts;
}

} // namespace

bool CZEKOverwriter::AnalyseTextureCompression(int, const std::string& path)
{
    const FamilyCounts counts =
        SetFlagsOfItems(path, m_Flags.GetTextureFlagQuadList(), SZEKItem::MakeTexture);
    PrintCounts("ExistTextureCompression", counts);
    return true;
}

bool CZEKOverwriter::AnalyseReflectionProbeCompression(int version, const std::string& path)
{
    if (version < version::ReflectionProbeFlags)
        return true;

    // After a section that was not walked to its end there may be flags without a name.
    const std::vector<std::string>& names = m_Flags.GetProbeNameList();
    std::vector<FlagQuad> quads = m_Flags.GetProbeFlagQuadList();
    quads.resize(std::min(
        {quads.size(), names.size(), static_cast<std::size_t>(std::max(GetProbeCount(), 0))}));
    const FamilyCounts counts = SetFlagsOfItems(
        path, quads, [&](std::size_t i) { return SZEKItem::MakeCubemap(names[i]); });
    PrintCounts("ExistCubemapCompression", counts);
    return true;
}

bool CZEKOverwriter::AnalyseLightmapCompression(int, const std::string& path)
{
    const std::vector<std::string>& names = m_Flags.GetLightmapNameList();
    const FamilyCounts counts = SetFlagsOfItems(
        path, m_Flags.GetLightmapFlagQuadList(),
        [&](std::size_t i) { return SZEKItem::MakeLightmap(names[i]); });
    PrintCounts("ExistLightmapCompression", counts);
    return true;
}

} // namespace zek
