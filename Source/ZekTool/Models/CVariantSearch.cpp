#include "ZekTool/Models/CVariantSearch.h"

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/SystemFiles.h"

namespace zektool
{

namespace
{

void ForEachPathOf(
    zek::CZEKVariantFinder& finder,
    const zek::SZEKItem& item,
    const std::function<void(const std::string& path)>& use)
{
    for (std::size_t family = 0; family < zek::CompressionFamilies.size(); ++family)
    {
        for (int file = 0; file < zek::CZEKVariantFinder::GetFileCount(item.kind); ++file)
            use(finder.GetPath(item, family, file));
    }
}

/// Returns a bit for each file of a variant that cannot be opened.
unsigned
FindMissingOf(zek::CZEKVariantFinder& finder, const zek::SZEKItem& item, std::size_t family)
{
    unsigned missing = 0;
    for (int file = 0; file < zek::CZEKVariantFinder::GetFileCount(item.kind); ++file)
    {
        if (!filesystem::CRandomAccessFile::CanOpen(finder.GetPath(item, family, file)))
            missing |= 1U << file;
    }
    return missing;
}

} // namespace

std::string GetModelFolder(const std::string& path)
{
    return path.substr(0, filesystem::GetNameStart(path));
}

zek::SZEKItem MakeVariantItem(zek::EZEKItemKind kind, int index, std::string_view name)
{
    switch (kind)
    {
    case zek::EZEKItemKind::Texture:
        return zek::SZEKItem::MakeTexture(static_cast<std::size_t>(index));
    case zek::EZEKItemKind::Cubemap:
        return zek::SZEKItem::MakeCubemap(name);
    case zek::EZEKItemKind::Lightmap:
        break;
    }
    return zek::SZEKItem::MakeLightmap(std::string(name));
}

CVariantSearch::CVariantSearch(const std::string& folder, bool isCubemapFolders)
    : m_IsCubemapFolders(isCubemapFolders)
    , m_Finder(folder, filesystem::CRandomAccessFile::CanOpen)
    , m_FolderFinder(folder, filesystem::CRandomAccessFile::CanOpen, '/')
{
}

zek::FamilyFlags CVariantSearch::Find(zek::EZEKItemKind kind, int index, std::string_view name)
{
    const zek::SZEKItem item = MakeVariantItem(kind, index, name);
    zek::FamilyFlags isPresent = m_Finder.Find(item);
    if (IsInFolders(kind))
    {
        const zek::FamilyFlags isInFolder = m_FolderFinder.Find(item);
        for (std::size_t family = 0; family < isPresent.size(); ++family)
            isPresent[family] = isPresent[family] || isInFolder[family];
    }
    return isPresent;
}

MissingFiles CVariantSearch::FindMissing(zek::EZEKItemKind kind, int index, std::string_view name)
{
    const zek::SZEKItem item = MakeVariantItem(kind, index, name);
    MissingFiles missing = {};
    for (std::size_t family = 0; family < missing.size(); ++family)
    {
        missing[family] = FindMissingOf(m_Finder, item, family);
        if (missing[family] != 0 && IsInFolders(kind))
            missing[family] = FindMissingOf(m_FolderFinder, item, family);
    }
    return missing;
}

const std::string& CVariantSearch::GetPath(const zek::SZEKItem& item, std::size_t family, int file)
{
    return (IsInFolders(item.kind) ? m_FolderFinder : m_Finder).GetPath(item, family, file);
}

bool CVariantSearch::IsInFolders(zek::EZEKItemKind kind) const
{
    return kind == zek::EZEKItemKind::Cubemap && m_IsCubemapFolders;
}

void CVariantSearch::ForEachPath(
    zek::EZEKItemKind kind,
    int index,
    std::string_view name,
    const std::function<void(const std::string& path)>& use)
{
    const zek::SZEKItem item = MakeVariantItem(kind, index, name);
    ForEachPathOf(m_Finder, item, use);
    if (IsInFolders(kind))
        ForEachPathOf(m_FolderFinder, item, use);
}

} // namespace zektool
