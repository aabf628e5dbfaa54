#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "ZekTool/Check/CFindingList.h"
#include "ZekTool/Check/CLightmapStems.h"
#include "ZekTool/Check/SSurvey.h"

namespace zektool
{

/// Looks through the folders of texture and lightmap variants for files that are not taken for any
/// item of a model.
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
    void CheckFolder(std::size_t family);

    /// Tells whether the name of a variant without its extension is that of a texture, or of a
    /// lightmap without a record.
    bool IsNumbered(std::string_view stem) const;

    void AddCase(const std::string& name, const std::string& path);
    void AddUnused(const std::string& name, const std::string& path);

    /// Tells whether variants beside the model may be those of another.
    bool HasOtherModel() const;

    std::string m_ModelPath;
    std::string m_Folder;
    const SSurvey& m_Survey;
    const CLightmapStems& m_Stems;
    CFindingList& m_Findings;
    std::vector<std::string> m_Unused; // paths from the model's folder on
};

/// Finds lightmaps whose variants have the same names.
void CheckSharedLightmaps(
    const std::deque<SSurveyedItem>& lightmaps,
    const CLightmapStems& stems,
    CFindingList& findings);

} // namespace zektool
