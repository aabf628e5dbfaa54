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

constexpr std::size_t CubeFaceCount = 6;

/// One value per compression family.
template <typename Value>
using FamilyArray = std::array<Value, CompressionFamilyCount>;

/// Returns the folders beside a model in which the variants of its textures and lightmaps lie, each
/// with a slash at its end.
FamilyArray<std::string> GetTextureFolders(const std::string& path)
{
    const std::string modelFolder = LFileName::DeleteFileName(path);
    FamilyArray<std::string> folders;
    for (std::size_t family = 0; family < folders.size(); ++family)
        folders[family] =
            modelFolder + LFileName::AddPunct(CompressionFamilies[family].textureFolder);
    return folders;
}

/// Returns the folders beside a model in which the folders of its cubemaps lie, each with a
/// backslash at its end.
FamilyArray<std::string> GetCubemapFolders(const std::string& path)
{
    const std::string modelFolder = LFileName::DeleteFileName(path);
    FamilyArray<std::string> folders;
    for (std::size_t family = 0; family < folders.size(); ++family)
        folders[family] = modelFolder + CompressionFamilies[family].cubemapFolder + "\\";
    return folders;
}

/// Returns the name of the file of each cube face and family, with a backslash at its start.
std::array<FamilyArray<std::string>, CubeFaceCount> GetCubeFaceFiles()
{
    std::array<FamilyArray<std::string>, CubeFaceCount> files;
    for (std::size_t face = 0; face < files.size(); ++face)
    {
        for (std::size_t family = 0; family < files[face].size(); ++family)
            files[face][family] = LFormat::Make(
                "\\%s_%d.%s", "reflection_cube", static_cast<int>(face),
                CompressionFamilies[family].extension);
    }
    return files;
}

/// Tells whether a file exists whose path is put together from three pieces. The path is built in
/// one string for all calls, which is faster than a string for each.
bool IsExistFile(
    std::string& candidate,
    const std::string& folder,
    const std::string& middle,
    const std::string& end)
{
    candidate.assign(folder).append(middle).append(end);
    return filesystem::CFindFile::IsExistFile(candidate);
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
    std::string candidate;
    for (std::size_t i = 0; i < m_TextureFlagQuadList.size(); ++i)
    {
        // A texture is looked for by its index, never by its own name.
        const std::string stem = LFormat::Make("%03d.", static_cast<int>(i));
        for (std::size_t family = 0; family < folders.size(); ++family)
        {
            const bool isPresent = IsExistFile(
                candidate, folders[family], stem, CompressionFamilies[family].extension);
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

    const FamilyArray<std::string> folders = GetCubemapFolders(path);
    const std::array<FamilyArray<std::string>, CubeFaceCount> faceFiles = GetCubeFaceFiles();
    const std::size_t probeCount = std::min(GetListSize(m_ProbeCount), m_ProbeFlagQuadList.size());
    FamilyArray<int> counts = {};
    std::string candidate;
    for (std::size_t probe = 0; probe < probeCount; ++probe)
    {
        FamilyArray<bool> isPresent = {true, true, true, true};
        for (const FamilyArray<std::string>& files : faceFiles)
        {
            for (std::size_t family = 0; family < folders.size(); ++family)
            {
                if (!IsExistFile(candidate, folders[family], m_ProbeNameList[probe], files[family]))
                    isPresent[family] = false;
            }
        }
        for (std::size_t family = 0; family < folders.size(); ++family)
            SetFlag(m_ProbeFlagQuadList[probe][family], isPresent[family], counts[family]);
    }
    PrintCounts("Cubemap", counts);
    return true;
}

bool CZEKOverwriter::AnalyseLightmapCompression(int, const std::string& path)
{
    const FamilyArray<std::string> folders = GetTextureFolders(path);
    FamilyArray<int> counts = {};
    std::string candidate;
    for (std::size_t i = 0; i < m_LightmapFlagQuadList.size(); ++i)
    {
        const std::string stem =
            LFormat::Make("%s.", LFileName::DeleteExtension(m_LightmapNameList[i]).c_str());
        for (std::size_t family = 0; family < folders.size(); ++family)
        {
            const bool isPresent = IsExistFile(
                candidate, folders[family], stem, CompressionFamilies[family].extension);
            SetFlag(m_LightmapFlagQuadList[i][family], isPresent, counts[family]);
        }
    }
    PrintCounts("Lightmap", counts);
    return true;
}

} // namespace zek
