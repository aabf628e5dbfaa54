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

} // namespace

std::string GetModelFolder(const std::string& path)
{
    return path.substr(0, filesystem::GetNameStart(path));
}

zek::SZEKItem MakeVariantItem(zek::EZEKItemKind kind, int index, const std::string& name)
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
    return zek::SZEKItem::MakeLightmap(name);
}

CVariantSearch::CVariantSearch(const std::string& folder, bool isCubemapFolders)
    : m_IsCubemapFolders(isCubemapFolders)
    , m_Finder(folder, filesystem::CRandomAccessFile::CanOpen)
    , m_FolderFinder(folder, filesystem::CRandomAccessFile::CanOpen, '/')
{
}

zek::FamilyFlags CVariantSearch::Find(zek::EZEKItemKind kind, int index, const std::string& name)
{
    const zek::SZEKItem item = MakeVariantItem(kind, index, name);
    zek::FamilyFlags isPresent = m_Finder.Find(item);
    if (kind == zek::EZEKItemKind::Cubemap && m_IsCubemapFolders)
    {
        const zek::FamilyFlags isInFolder = m_FolderFinder.Find(item);
        for (std::size_t family = 0; family < isPresent.size(); ++family)
            isPresent[family] = isPresent[family] || isInFolder[family];
    }
    return isPresent;
}

void CVariantSearch::ForEachPath(
    zek::EZEKItemKind kind,
    int index,
    const std::string& name,
    const std::function<void(const std::string& path)>& use)
{
    const zek::SZEKItem item = MakeVariantItem(kind, index, name);
    ForEachPathOf(m_Finder, item, use);
    if (kind == zek::EZEKItemKind::Cubemap && m_IsCubemapFolders)
        ForEachPathOf(m_FolderFinder, item, use);
}

} // namespace zektool
