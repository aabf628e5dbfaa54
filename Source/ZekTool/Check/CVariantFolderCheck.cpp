#include "ZekTool/Check/CVariantFolderCheck.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <utility>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZEKOverwriter/SCompressionFamily.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Output/Text.h"

using filesystem::SFolderEntry;

namespace zektool
{

namespace
{

constexpr std::string_view NamelessLightmapStem = "LightMap";

struct SName
{
    std::string_view stem;
    std::string_view extension; ///< without its dot
};

SName SplitName(std::string_view name)
{
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    return {name.substr(0, dot), dot < name.size() ? name.substr(dot + 1) : ""};
}

bool IsVariantExtension(const std::string& extension)
{
    return std::any_of(
        zek::CompressionFamilies.begin(), zek::CompressionFamilies.end(),
        [&](const zek::SCompressionFamily& family) { return family.extension == extension; });
}

SFinding MakeFinding(const std::string& path, const std::string& message)
{
    SFinding finding;
    finding.location.section = "model";
    finding.path = path;
    finding.message = message;
    return finding;
}

} // namespace

CVariantFolderCheck::CVariantFolderCheck(
    std::string modelPath,
    std::string folder,
    const SSurvey& survey,
    const CLightmapStems& stems,
    CFindingList& findings)
    : m_ModelPath(std::move(modelPath))
    , m_Folder(std::move(folder))
    , m_Survey(survey)
    , m_Stems(stems)
    , m_Findings(findings)
{
}

void CVariantFolderCheck::Check()
{
    for (std::size_t family = 0; family < zek::CompressionFamilies.size(); ++family)
    {
        if (!CheckFolder(family))
            return;
    }
    for (const std::string& name : m_Unused)
        AddUnused(name, m_Folder + name);
}

bool CVariantFolderCheck::CheckFolder(std::size_t family)
{
    const std::string folder = std::string(zek::CompressionFamilies[family].textureFolder) + "/";
    // More are gone through only where no other model lies. To look for one takes about as long as
    // this many.
    constexpr int mostOfNoItem = 1000;
    std::vector<std::string> names;
    int countOfNoItem = 0;
    filesystem::ReadFolder(
        m_Folder + folder,
        [&](const SFolderEntry& entry)
        {
            if (IsOfItem(entry.name, family))
                return true;
            ++countOfNoItem;
            if (IsVariantExtension(MakeSmall(SplitName(entry.name).extension)))
                names.push_back(entry.name);
            return (names.empty() && countOfNoItem <= mostOfNoItem) || !HasOtherModel();
        });
    if (m_HasOtherModel.value_or(false))
        return false;

    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
    {
        if (DiffersInCase(name, family))
            AddCase(folder + name, m_Folder + folder + name);
        else
            m_Unused.push_back(folder + name);
    }
    return true;
}

bool CVariantFolderCheck::IsOfItem(std::string_view name, std::size_t family) const
{
    const auto [stem, extension] = SplitName(name);
    return extension == zek::CompressionFamilies[family].extension &&
           (m_Stems.Has(stem) || IsNumbered(stem, NamelessLightmapStem));
}

bool CVariantFolderCheck::DiffersInCase(std::string_view name, std::size_t family) const
{
    const auto [stem, extension] = SplitName(name);
    return MakeSmall(extension) == zek::CompressionFamilies[family].extension &&
           (m_Stems.HasInAnyCase(stem) ||
            IsNumbered(MakeSmall(stem), MakeSmall(NamelessLightmapStem)));
}

bool CVariantFolderCheck::IsNumbered(std::string_view stem, std::string_view namelessStem) const
{
    const bool isNameless = stem.compare(0, namelessStem.size(), namelessStem) == 0;
    const std::string_view digits = isNameless ? stem.substr(namelessStem.size()) : stem;
    const int count = isNameless ? m_Survey.namelessLightmapCount : m_Survey.GetTextureCount();
    // As `%03d` writes a number: putting that together for each file costs more than anything else
    // here.
    constexpr std::size_t leastDigits = 3;
    if (digits.size() < leastDigits || (digits.size() > leastDigits && digits[0] == '0'))
        return false;
    int index = 0;
    const char* end = digits.data() + digits.size();
    const std::from_chars_result read = std::from_chars(digits.data(), end, index);
    return read.ec == std::errc() && read.ptr == end && index >= 0 && index < count;
}

void CVariantFolderCheck::AddCase(const std::string& name, const std::string& path)
{
    m_Findings.Add(
        EFinding::VariantNameCase,
        [&] {
            return MakeFinding(path, name + " differs from what is looked for in capital letters");
        });
}

void CVariantFolderCheck::AddUnused(const std::string& name, const std::string& path)
{
    m_Findings.Add(
        EFinding::UnusedVariant,
        [&]
        {
            return MakeFinding(
                path, name + " belongs to none of " +
                          MakeCount(m_Survey.textures.size(), "texture", "textures") + " and " +
                          MakeCount(m_Survey.lightmaps.size(), "lightmap", "lightmaps"));
        });
}

bool CVariantFolderCheck::HasOtherModel()
{
    if (m_HasOtherModel)
        return *m_HasOtherModel;
    const std::string model = m_ModelPath.substr(filesystem::GetNameStart(m_ModelPath));
    const std::string extension = filesystem::GetExtension(model);
    // More are not opened, and one of them may be a model.
    constexpr std::size_t mostOpened = 1000;
    std::vector<std::string> names;
    bool hasOther = false;
    filesystem::ReadFolder(
        m_Folder.empty() ? "." : m_Folder,
        [&](const SFolderEntry& entry)
        {
            if (entry.isFolder || entry.name == model)
                return true;
            names.push_back(entry.name);
            hasOther =
                filesystem::GetExtension(entry.name) == extension || names.size() > mostOpened;
            return !hasOther;
        });
    m_HasOtherModel =
        hasOther || std::any_of(
                        names.begin(), names.end(),
                        [&](const std::string& name) { return IsModel(m_Folder + name); });
    return *m_HasOtherModel;
}

void CheckSharedLightmaps(
    const std::deque<SSurveyedItem>& lightmaps, const CLightmapStems& stems, CFindingList& findings)
{
    for (std::size_t i = 0; i < lightmaps.size(); ++i)
    {
        const SSurveyedItem& lightmap = lightmaps[i];
        const std::size_t first = stems.FindFirst(i);
        if (std::strcmp(lightmaps[first].name, lightmap.name) == 0)
            continue;
        findings.Add(
            EFinding::SharedLightmapVariant,
            [&]
            {
                SFinding finding;
                finding.location.section = "lightmaps";
                finding.location.index = static_cast<int>(i);
                finding.location.name = lightmap.name;
                finding.location.field = "flags";
                finding.location.offset = lightmap.flagsOffset;
                finding.message = "it has the same variants as lightmap " + std::to_string(first) +
                                  " \"" + zek::MakeExcerpt(lightmaps[first].name) + "\"";
                return finding;
            });
    }
}

} // namespace zektool
