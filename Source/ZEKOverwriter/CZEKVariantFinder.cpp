#include "ZEKOverwriter/CZEKVariantFinder.h"

#include <utility>

#include "Independent/FormatString/LFormat.h"
#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/LFileName.h"

namespace zek
{

namespace
{

constexpr int CubeFaceCount = 6;

} // namespace

SZEKItem SZEKItem::MakeTexture(std::size_t index)
{
    return {EZEKItemKind::Texture, LFormat::Make("%03d", static_cast<int>(index))};
}

SZEKItem SZEKItem::MakeCubemap(std::string_view probeName)
{
    return {EZEKItemKind::Cubemap, std::string(probeName)};
}

SZEKItem SZEKItem::MakeLightmap(const std::string& name)
{
    return {EZEKItemKind::Lightmap, LFileName::DeleteExtension(name)};
}

CZEKVariantFinder::CZEKVariantFinder(
    std::string folder, ExistenceTest isExist, char cubemapSeparator)
    : m_Folder(std::move(folder))
    , m_IsExist(std::move(isExist))
    , m_CubemapSeparator(cubemapSeparator)
{
}

bool CZEKVariantFinder::IsExistFile(const std::string& path)
{
    return filesystem::CFindFile::IsExistFile(path);
}

int CZEKVariantFinder::GetFileCount(EZEKItemKind kind)
{
    return kind == EZEKItemKind::Cubemap ? CubeFaceCount : 1;
}

FamilyFlags CZEKVariantFinder::Find(const SZEKItem& item)
{
    FamilyFlags isPresent;
    isPresent.fill(true);
    for (int file = 0; file < GetFileCount(item.kind); ++file)
    {
        for (std::size_t family = 0; family < isPresent.size(); ++family)
        {
            if (!m_IsExist(GetPath(item, family, file)))
                isPresent[family] = false;
        }
    }
    return isPresent;
}

const std::string& CZEKVariantFinder::GetPath(const SZEKItem& item, std::size_t family, int file)
{
    m_Path = m_Folder;
    if (item.kind == EZEKItemKind::Cubemap)
    {
        m_Path += CompressionFamilies[family].cubemapFolder;
        m_Path += m_CubemapSeparator;
        m_Path += item.name;
        m_Path += m_CubemapSeparator;
        m_Path += "reflection_cube_";
        m_Path += static_cast<char>('0' + file);
    }
    else
    {
        m_Path += CompressionFamilies[family].textureFolder;
        m_Path += '/';
        m_Path += item.name;
    }
    m_Path += '.';
    m_Path += CompressionFamilies[family].extension;
    return m_Path;
}

} // namespace zek
