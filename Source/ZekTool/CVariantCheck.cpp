#include "ZekTool/CVariantCheck.h"

#include <filesystem>
#include <utility>

#include "ZekTool/VariantExistence.h"

namespace fs = std::filesystem;

namespace zektool
{

namespace
{

const char* GetSection(zek::EZEKItemKind kind)
{
    switch (kind)
    {
    case zek::EZEKItemKind::Texture:
        return "textures";
    case zek::EZEKItemKind::Cubemap:
        return "probes";
    case zek::EZEKItemKind::Lightmap:
        break;
    }
    return "lightmaps";
}

zek::SZEKItem MakeVariantItem(zek::EZEKItemKind kind, const std::string& name, std::size_t index)
{
    switch (kind)
    {
    case zek::EZEKItemKind::Texture:
        return zek::SZEKItem::MakeTexture(index);
    case zek::EZEKItemKind::Cubemap:
        return zek::SZEKItem::MakeCubemap(name);
    case zek::EZEKItemKind::Lightmap:
        break;
    }
    return zek::SZEKItem::MakeLightmap(name);
}

std::string GetFamilyName(std::size_t family)
{
    return std::string(zek::CompressionFamilies[family].name);
}

/// False only when there is nothing at the path.
bool MayExist(const std::string& path)
{
    std::error_code error;
    return fs::status(path, error).type() != fs::file_type::not_found;
}

} // namespace

CVariantCheck::CVariantCheck(
    const std::string& folder, const SCheckOptions& options, CFindingList& findings)
    : m_Options(options)
    , m_Findings(findings)
    , m_FolderLength(folder.size())
    , m_Finder(folder, IsExistVariant)
    , m_FolderFinder(folder, IsExistVariant, '/')
{
    for (std::size_t family = 0; family < m_HasTextureFolder.size(); ++family)
    {
        const zek::SCompressionFamily& names = zek::CompressionFamilies[family];
        m_HasTextureFolder[family] = MayExist(folder + std::string(names.textureFolder));
        m_HasCubemapFolder[family] = MayExist(folder + std::string(names.cubemapFolder));
    }
}

void CVariantCheck::CheckItems(zek::EZEKItemKind kind, const std::vector<SSurveyedItem>& items)
{
    m_Families = {};
    for (std::size_t i = 0; i < items.size(); ++i)
        CheckItem({items[i], MakeVariantItem(kind, items[i].name, i), static_cast<int>(i)});

    for (std::size_t family = 0; family < m_Families.size(); ++family)
    {
        const SFamily& seen = m_Families[family];
        if (seen.thereCount == 0 || seen.firstMissing < 0)
            continue;
        const SItem item = {
            items[static_cast<std::size_t>(seen.firstMissing)], {kind, {}}, seen.firstMissing};
        Add(EFinding::PartialFamily, item, family, seen.missingPath,
            std::to_string(seen.thereCount) + " of " + std::to_string(items.size()) + " " +
                GetSection(kind) + " have a " + GetFamilyName(family) +
                " variant, and this is the first that has none");
    }
}

void CVariantCheck::CheckItem(const SItem& item)
{
    for (std::size_t family = 0; family < m_Families.size(); ++family)
    {
        const SVariant variant = LookAt(item, family);
        CheckFlag(item, family, variant);
        if (item.variant.kind == zek::EZEKItemKind::Cubemap)
            CheckFaces(item, family, variant);

        SFamily& seen = m_Families[family];
        if (variant.isThere)
            ++seen.thereCount;
        else if (seen.firstMissing < 0)
        {
            seen.firstMissing = item.index;
            seen.missingPath = variant.example;
        }
    }
}

CVariantCheck::SVariant CVariantCheck::LookAt(const SItem& item, std::size_t family)
{
    SVariant variant;
    variant.isThere = true;
    const int fileCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    for (int file = 0; file < fileCount; ++file)
    {
        std::string path;
        const EVariantState state = LookAtFile(item, family, file, path);
        if (file == 0 || (variant.isThere && !IsThere(state)))
            variant.example = path;
        variant.isThere = variant.isThere && IsThere(state);
        variant.fileCount += IsThere(state) ? 1 : 0;
        CheckState(item, family, state, std::move(path));
    }
    return variant;
}

EVariantState
CVariantCheck::LookAtFile(const SItem& item, std::size_t family, int file, std::string& path)
{
    path = m_Finder.GetPath(item.variant, family, file);
    if (item.variant.kind != zek::EZEKItemKind::Cubemap)
        return m_HasTextureFolder[family] ? GetVariantState(path) : EVariantState::Absent;

    const EVariantState state = GetVariantState(path);
    if (IsThere(state) || !m_Options.isCubemapFolders)
        return state;
    path = m_FolderFinder.GetPath(item.variant, family, file);
    return m_HasCubemapFolder[family] ? GetVariantState(path) : EVariantState::Absent;
}

void CVariantCheck::CheckState(
    const SItem& item, std::size_t family, EVariantState state, std::string path)
{
    switch (state)
    {
    case EVariantState::Absent:
    case EVariantState::File:
        break;
    case EVariantState::Unreadable:
        Add(EFinding::UnreadableVariant, item, family, path,
            Shorten(path) + " cannot be opened and does not count as there");
        break;
    case EVariantState::NotAFile:
        Add(EFinding::VariantNotAFile, item, family, path,
            Shorten(path) + " is no file and counts as there all the same");
        break;
    case EVariantState::Empty:
        Add(EFinding::EmptyVariant, item, family, path,
            Shorten(path) + " is empty and counts as there all the same");
        break;
    }
}

void CVariantCheck::CheckFlag(const SItem& item, std::size_t family, const SVariant& variant)
{
    const int flag = item.surveyed.flags[family];
    if (flag == (variant.isThere ? 1 : 0))
        return;
    const EFinding finding = flag > 1          ? EFinding::WrongFlag
                             : variant.isThere ? EFinding::VariantWithoutFlag
                                               : EFinding::FlagWithoutVariant;
    Add(finding, item, family, variant.example,
        GetFamilyName(family) + " is " + std::to_string(flag) + ", and " +
            Shorten(variant.example) + (variant.isThere ? " is there" : " is not there"));
}

void CVariantCheck::CheckFaces(const SItem& item, std::size_t family, const SVariant& variant)
{
    const int faceCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    if (variant.fileCount > 0 && !variant.isThere)
        Add(EFinding::IncompleteCubemap, item, family, variant.example,
            GetFamilyName(family) + " has " + std::to_string(variant.fileCount) + " of " +
                std::to_string(faceCount) + " faces; " + Shorten(variant.example) +
                " is not there");
    else if (variant.fileCount == 0 && IsInFolders(item, family))
        Add(EFinding::CubemapInFolders, item, family, variant.example,
            GetFamilyName(family) + " has faces in folders, and is looked for as " +
                Shorten(variant.example));
}

bool CVariantCheck::IsInFolders(const SItem& item, std::size_t family)
{
    if (m_Options.isCubemapFolders || !m_HasCubemapFolder[family])
        return false;
    const int faceCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    for (int face = 0; face < faceCount; ++face)
    {
        if (IsThere(GetVariantState(m_FolderFinder.GetPath(item.variant, family, face))))
            return true;
    }
    return false;
}

void CVariantCheck::Add(
    EFinding finding,
    const SItem& item,
    std::size_t family,
    const std::string& path,
    const std::string& message)
{
    m_Findings.Add(
        finding,
        [&]
        {
            SFinding made;
            made.location.section = GetSection(item.variant.kind);
            made.location.index = item.index;
            made.location.name = item.surveyed.name;
            made.location.field = "flags[" + std::to_string(family) + "]";
            made.location.offset = item.surveyed.flagsOffset + static_cast<std::int64_t>(family);
            made.path = path;
            made.message = message;
            return made;
        });
}

} // namespace zektool
