#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Check/CLightmapStems.h"
#include "ZekTool/Check/SSurvey.h"

namespace zektool
{

/// Looks through the folders of texture and lightmap variants for files that are not taken for any
/// item of a model. It does not where another model lies beside it: they may be that one's, and to
/// list all of them for each of its models would take the square of their number.
class CVariantFolderCheck
{
public:
    /// Takes the model's path and its folder, up to and with the last slash; borrows the others.
    CVariantFolderCheck(
        std::string modelPath,
        std::string folder,
        const SSurvey& survey,
        const CLightmapStems& stems,
        CFindingList& findings);

    void Check();

private:
    /// Returns false where what lies there may be another model's.
    bool CheckFolder(std::size_t family);

    /// Tells whether a file is a variant that is looked for.
    bool IsOfItem(std::string_view name, std::size_t family) const;

    /// Tells whether another file would be looked for if its letters were small, or capital.
    bool DiffersInCase(std::string_view name, std::size_t family) const;

    /// Tells whether the name of a variant without its extension is that of a texture, or of a
    /// lightmap without a record, which starts with a stem of its own.
    bool IsNumbered(std::string_view stem, std::string_view namelessStem) const;

    void AddCase(const std::string& name, const std::string& path);
    void AddUnused(const std::string& name, const std::string& path);

    /// Tells whether variants beside the model may be those of another: one of the same extension,
    /// one that is a model by its first bytes, or one of more files than are opened for that.
    bool HasOtherModel();

    std::string m_ModelPath;
    std::string m_Folder;
    const SSurvey& m_Survey;
    const CLightmapStems& m_Stems;
    CFindingList& m_Findings;
    std::vector<std::string> m_Unused;   // paths from the model's folder on
    std::optional<bool> m_HasOtherModel; // once it has been asked
};

/// Finds lightmaps whose variants have the same names.
void CheckSharedLightmaps(
    const std::deque<SSurveyedItem>& lightmaps,
    const CLightmapStems& stems,
    CFindingList& findings);

} // namespace zektool
