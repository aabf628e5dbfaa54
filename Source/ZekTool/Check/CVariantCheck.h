#pragma once

#include <array>
#include <deque>
#include <string>
#include <string_view>

#include "ZEKOverwriter/CZEKVariantFinder.h"
#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Check/SSurvey.h"
#include "ZekTool/Check/VariantState.h"

namespace zektool
{

/// Compares the flags of a model's items with the variants that lie beside it, and looks at these.
class CVariantCheck
{
public:
    /// Takes the model's folder, up to and with its last slash, or empty; borrows the others.
    CVariantCheck(const std::string& folder, const SCheckOptions& options, CFindingList& findings);

    void CheckItems(zek::EZEKItemKind kind, const std::deque<SSurveyedItem>& items);

private:
    /// An item with what is looked for.
    struct SItem
    {
        const SSurveyedItem& surveyed;
        zek::SZEKItem variant;
        int index;
    };

    /// A file of a variant, by what its path is made with: names may be long, and few paths are
    /// told of.
    struct SFile
    {
        zek::CZEKVariantFinder* finder = nullptr;
        int number = 0;
    };

    /// What there is of an item's variant of one family.
    struct SVariant
    {
        int fileCount = 0; ///< of files that are there
        SFile example;     ///< the first file that is not there, or else the first
        EVariantState state = EVariantState::Absent; ///< of the example
        bool isThere = false;
    };

    /// What there is of one family in a list of items.
    struct SFamily
    {
        std::size_t thereCount = 0;
        int firstMissing = -1;
        SFile missing;
    };

    /// A folder of variants, which is asked for when the first file that should lie in it does not.
    struct SFolder
    {
        std::string_view name;
        bool isAsked = false;
        bool mayExist = true;
    };

    void CheckItem(const SItem& item);
    SVariant LookAt(const SItem& item, std::size_t family);
    SVariant LookAtFiles(
        const SItem& item, std::size_t family, zek::CZEKVariantFinder& finder, SFolder& folder);
    bool IsInFolders(const SItem& item, std::size_t family);
    EVariantState GetState(const std::string& path, SFolder& folder);
    void CheckState(const SItem& item, std::size_t family, EVariantState state, const SFile& file);
    void CheckFlag(const SItem& item, std::size_t family, const SVariant& variant);
    void CheckFaces(const SItem& item, std::size_t family, const SVariant& variant);
    /// Adds a finding about the flag of an item and a file of its variant, whose message
    /// makeMessage(path) returns.
    template <typename MakeMessage>
    void
    Add(EFinding finding,
        const SItem& item,
        std::size_t family,
        const SFile& file,
        MakeMessage makeMessage);

    /// Returns a path from the model's folder on, as it can be shown.
    std::string Shorten(const std::string& path) const;

    const SCheckOptions& m_Options;
    CFindingList& m_Findings;
    std::string m_Folder; // of the model
    zek::CZEKVariantFinder m_Finder;
    zek::CZEKVariantFinder m_FolderFinder; // of faces in real folders
    std::array<SFamily, zek::CompressionFamilyCount> m_Families;
    std::array<SFolder, zek::CompressionFamilyCount> m_TextureFolders;
    std::array<SFolder, zek::CompressionFamilyCount> m_CubemapFolders;
    SFolder m_ModelFolder; // where a face lies whose name has backslashes
};

} // namespace zektool
