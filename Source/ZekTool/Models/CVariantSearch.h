#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "ZEKOverwriter/CZEKVariantFinder.h"

namespace zektool
{

/// Returns the folder in which the variants of a model are looked for: its path up to and with the
/// last separator of the system, or empty for the working folder.
std::string GetModelFolder(const std::string& path);

/// Returns what the variants of an item are looked for by, from its name in the model.
zek::SZEKItem MakeVariantItem(zek::EZEKItemKind kind, int index, std::string_view name);

/// The files that a variant lacks, a bit for each, the lowest for the first; 0 when it is there. By
/// family.
using MissingFiles = std::array<unsigned, zek::CompressionFamilyCount>;

/// Looks for the variants of a model's items as `zek::CZEKVariantFinder` does, without waiting for
/// what is no file. If asked to, it takes cubemaps whose faces lie in folders of the probes' names
/// as well: `tex_reflection_cube_dxt/Hall/reflection_cube_0.dds`.
class CVariantSearch
{
public:
    CVariantSearch(const std::string& folder, bool isCubemapFolders);

    /// Tells which variants an item has, by the name that it has in the model.
    zek::FamilyFlags Find(zek::EZEKItemKind kind, int index, std::string_view name);

    /// Tells which files the variants of an item lack, so that `Find` would not find them. Where
    /// cubemaps are taken from folders, too, these are those that the folder lacks.
    MissingFiles FindMissing(zek::EZEKItemKind kind, int index, std::string_view name);

    /// Returns the path of a file that `FindMissing` tells of, from 0 on. It is valid until the
    /// next call.
    const std::string& GetPath(const zek::SZEKItem& item, std::size_t family, int file);

    /// Calls a function with every path that `Find` may look at.
    void ForEachPath(
        zek::EZEKItemKind kind,
        int index,
        std::string_view name,
        const std::function<void(const std::string& path)>& use);

private:
    bool IsInFolders(zek::EZEKItemKind kind) const;

    bool m_IsCubemapFolders;
    zek::CZEKVariantFinder m_Finder;
    zek::CZEKVariantFinder m_FolderFinder; // of faces in real folders
};

} // namespace zektool
