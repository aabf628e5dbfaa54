#include <algorithm>
#include <cstdio>

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

/// Returns the folders beside a model in which the variants of its textures and lightmaps lie, each
/// with a slash at its end.
FamilyArray<std::string> GetTextureFolders(const std::string& path)
{
    FamilyArray<std::string> folders;
    for (std::size_t family = 0; family < folders.size(); ++family)
    {
        folders[family] = LFileName::DeleteFileName(path) +
                          LFileName::AddPunct(CompressionFamilies[family].textureFolder);
    }
    return folders;
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
    const FamilyArray<std::string> folders = GetTextureFolders(path);
    FamilyArray<int> counts = {};
    for (std::size_t i = 0; i < m_TextureFlagQuadList.size(); ++i)
    {
        for (std::size_t family = 0; family < folders.size(); ++family)
        {
            const std::string candidate =
                folders[family] +
                LFormat::Make(
                    "%03d.%s", static_cast<int>(i), CompressionFamilies[family].extension);
            const bool isPresent = filesystem::CFindFile::IsExistFile(candidate);
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
    FamilyArray<int> counts = {};
    const std::size_t probeCount = std::min(GetListSize(m_ProbeCount), m_ProbeFlagQuadList.size());
    for (std::size_t probe = 0; probe < probeCount; ++probe)
    {
        FamilyArray<bool> isPresent = {true, true, true, true};
        for (int face = 0; face < CubeFaceCount; ++face)
        {
            for (std::size_t family = 0; family < isPresent.size(); ++family)
            {
                const std::string candidate = modelFolder +
                                              CompressionFamilies[family].cubemapFolder + "\\" +
                                              m_ProbeNameList[probe] +
                                              LFormat::Make(
                                                  "\\%s_%d.%s", "reflection_cube", face,
                                                  CompressionFamilies[family].extension);
                if (!filesystem::CFindFile::IsExistFile(candidate))
                    isPresent[family] = false;
            }
        }
        for (std::size_t family = 0; family < isPresent.size(); ++family)
            SetFlag(m_ProbeFlagQuadList[probe][family], isPresent[family], counts[family]);
    }
    PrintCounts("Cubemap", counts);
    return true;
}

bool CZEKOverwriter::AnalyseLightmapCompression(int, const std::string& path)
{
    const FamilyArray<std::string> folders = GetTextureFolders(path);
    FamilyArray<int> counts = {};
    for (std::size_t i = 0; i < m_LightmapFlagQuadList.size(); ++i)
    {
        const std::string name = LFileName::DeleteExtension(m_LightmapNameList[i]);
        for (std::size_t family = 0; family < folders.size(); ++family)
        {
            const std::string candidate =
                folders[family] +
                LFormat::Make("%s.%s", name.c_str(), CompressionFamilies[family].extension);
            const bool isPresent = filesystem::CFindFile::IsExistFile(candidate);
            SetFlag(m_LightmapFlagQuadList[i][family], isPresent, counts[family]);
        }
    }
    PrintCounts("Lightmap", counts);
    return true;
}

} // namespace zek
