#include "ZekTool/Check/CVariantCheck.h"

#include <string_view>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Models/CVariantSearch.h"
#include "ZekTool/Output/Text.h"

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

std::string GetFamilyName(std::size_t family)
{
    return std::string(zek::CompressionFamilies[family].name);
}

const char* GetStateText(EVariantState state)
{
    if (state == EVariantState::Unreadable)
        return " cannot be opened";
    return IsThere(state) ? " is there" : " is not there";
}

} // namespace

CVariantCheck::CVariantCheck(
    const std::string& folder, const SCheckOptions& options, CFindingList& findings)
    : m_Options(options)
    , m_Findings(findings)
    , m_Folder(folder)
    , m_Finder(folder)
    , m_FolderFinder(folder, zek::CZEKVariantFinder::IsExistFile, '/')
{
    for (std::size_t family = 0; family < zek::CompressionFamilies.size(); ++family)
    {
        m_TextureFolders[family].name = zek::CompressionFamilies[family].textureFolder;
        m_CubemapFolders[family].name = zek::CompressionFamilies[family].cubemapFolder;
    }
    m_ModelFolder.isAsked = true;
}

template <typename MakeMessage>
void CVariantCheck::Add(
    EFinding finding,
    const SItem& item,
    std::size_t family,
    const SFile& file,
    MakeMessage makeMessage)
{
    m_Findings.Add(
        finding,
        [&]
        {
            SFinding made;
            made.location.section = GetSection(item.variant.kind);
            made.location.index = item.index;
            made.location.name = MakeTold(item.surveyed.name);
            made.location.field = "flags[" + std::to_string(family) + "]";
            made.location.offset = item.surveyed.flagsOffset + static_cast<std::int64_t>(family);
            made.path = MakeTold(file.finder->GetPath(item.variant, family, file.number));
            made.message = makeMessage(made.path);
            return made;
        });
}

std::string CVariantCheck::Shorten(const std::string& path) const
{
    return MakeShowable(std::string_view(path).substr(m_Folder.size()));
}

void CVariantCheck::CheckItems(zek::EZEKItemKind kind, const std::deque<SSurveyedItem>& items)
{
    m_Families = {};
    for (std::size_t i = 0; i < items.size(); ++i)
    {
        const int index = static_cast<int>(i);
        CheckItem({items[i], MakeVariantItem(kind, index, items[i].name), index});
    }

    for (std::size_t family = 0; family < m_Families.size(); ++family)
    {
        const SFamily& seen = m_Families[family];
        if (seen.thereCount == 0 || seen.firstMissing < 0)
            continue;
        const SSurveyedItem& missing = items[static_cast<std::size_t>(seen.firstMissing)];
        const SItem item = {
            missing, MakeVariantItem(kind, seen.firstMissing, missing.name), seen.firstMissing};
        Add(EFinding::PartialFamily, item, family, seen.missing,
            [&](const std::string&)
            {
                return std::to_string(seen.thereCount) + " of " + std::to_string(items.size()) +
                       " " + GetSection(kind) + " have a variant in " + GetFamilyName(family) +
                       ", and this is the first that has none";
            });
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
            seen.missing = variant.example;
        }
    }
}

CVariantCheck::SVariant CVariantCheck::LookAt(const SItem& item, std::size_t family)
{
    if (item.variant.kind != zek::EZEKItemKind::Cubemap)
        return LookAtFiles(item, family, m_Finder, m_TextureFolders[family]);
    SVariant variant = LookAtFiles(item, family, m_Finder, m_ModelFolder);
    // Where a backslash is a separator, the two finders look in the same folders.
    if (variant.isThere || !m_Options.isCubemapFolders || filesystem::IsSystemSeparator('\\'))
        return variant;
    const SVariant inFolder = LookAtFiles(item, family, m_FolderFinder, m_CubemapFolders[family]);
    return inFolder.fileCount > variant.fileCount ? inFolder : variant;
}

CVariantCheck::SVariant CVariantCheck::LookAtFiles(
    const SItem& item, std::size_t family, zek::CZEKVariantFinder& finder, SFolder& folder)
{
    SVariant variant;
    variant.isThere = true;
    const int fileCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    for (int file = 0; file < fileCount; ++file)
    {
        const std::string& path = finder.GetPath(item.variant, family, file);
        const EVariantState state = GetState(path, folder);
        if (file == 0 || (variant.isThere && !IsThere(state)))
        {
            variant.example = {&finder, file};
            variant.state = state;
        }
        variant.isThere = variant.isThere && IsThere(state);
        variant.fileCount += IsThere(state) ? 1 : 0;
        CheckState(item, family, state, {&finder, file});
    }
    return variant;
}

void CVariantCheck::CheckState(
    const SItem& item, std::size_t family, EVariantState state, const SFile& file)
{
    switch (state)
    {
    case EVariantState::Absent:
    case EVariantState::File:
        break;
    case EVariantState::Unreadable:
        Add(EFinding::UnreadableVariant, item, family, file,
            [&](const std::string& path)
            { return Shorten(path) + " cannot be opened and does not count as there"; });
        break;
    case EVariantState::NotAFile:
        Add(EFinding::VariantNotAFile, item, family, file,
            [&](const std::string& path)
            { return Shorten(path) + " is no file and counts as there all the same"; });
        break;
    case EVariantState::Empty:
        Add(EFinding::EmptyVariant, item, family, file,
            [&](const std::string& path)
            { return Shorten(path) + " is empty and counts as there all the same"; });
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
        [&](const std::string& path)
        {
            return GetFamilyName(family) + " is " + std::to_string(flag) + ", and " +
                   Shorten(path) + GetStateText(variant.state);
        });
}

void CVariantCheck::CheckFaces(const SItem& item, std::size_t family, const SVariant& variant)
{
    if (variant.isThere)
        return;
    const int faceCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    if (variant.fileCount > 0)
        Add(EFinding::IncompleteCubemap, item, family, variant.example,
            [&](const std::string& path)
            {
                return GetFamilyName(family) + " has " + std::to_string(variant.fileCount) +
                       " of " + std::to_string(faceCount) + " faces; " + Shorten(path) +
                       GetStateText(variant.state);
            });
    if (IsInFolders(item, family))
        Add(EFinding::CubemapInFolders, item, family, variant.example,
            [&](const std::string& path) {
                return GetFamilyName(family) + " has faces in folders, and is looked for as " +
                       Shorten(path);
            });
}

bool CVariantCheck::IsInFolders(const SItem& item, std::size_t family)
{
    if (m_Options.isCubemapFolders)
        return false;
    const int faceCount = zek::CZEKVariantFinder::GetFileCount(item.variant.kind);
    int face = 0;
    while (face < faceCount &&
           !IsThere(GetState(
               m_FolderFinder.GetPath(item.variant, family, face), m_CubemapFolders[family])))
        ++face;
    return face < faceCount;
}

EVariantState CVariantCheck::GetState(const std::string& path, SFolder& folder)
{
    if (!folder.mayExist)
        return EVariantState::Absent;
    const EVariantState state = GetVariantState(path);
    if (state == EVariantState::Absent && !folder.isAsked)
    {
        folder.isAsked = true;
        const std::string asked = m_Folder + std::string(folder.name);
        folder.mayExist = filesystem::GetPathStatus(asked).kind != filesystem::EPathKind::Absent;
    }
    return state;
}

} // namespace zektool
