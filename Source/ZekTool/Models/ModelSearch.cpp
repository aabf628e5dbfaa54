#include "ZekTool/Models/ModelSearch.h"

#include <algorithm>
#include <utility>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Models/NamePattern.h"
#include "ZekTool/Output/Interrupt.h"

namespace zektool
{

namespace
{

using filesystem::SFolderEntry;
using filesystem::SystemSeparator;

class CSearch
{
public:
    CSearch(const std::vector<std::string>& patterns, std::vector<SModelPath>& models)
        : m_Patterns(patterns)
        , m_Models(models)
    {
    }

    /// Searches a folder, whose path ends with a separator.
    void Search(const std::string& folder, std::size_t nameStart)
    {
        std::string error;
        const std::vector<SFolderEntry> entries = Read(folder, error);
        if (!error.empty())
            m_Models.push_back({folder, nameStart, error});
        for (const SFolderEntry& entry : entries)
        {
            if (IsInterrupted())
                return;
            if (entry.isFolder)
                Search(folder + entry.name, nameStart);
            else
                m_Models.push_back({folder + entry.name, nameStart});
        }
    }

private:
    /// Returns the folders and models in a folder, sorted. A folder's name ends with a separator,
    /// as in the paths of what is below it, so that sorting the names sorts those paths.
    std::vector<SFolderEntry> Read(const std::string& folder, std::string& error) const
    {
        std::vector<SFolderEntry> entries;
        error = filesystem::ReadFolder(
            folder,
            [&](SFolderEntry entry)
            {
                if (entry.isFolder && !entry.isLink)
                    entry.name += SystemSeparator;
                else if (entry.isFolder || !IsModelName(entry.name))
                    return true;
                entries.push_back(std::move(entry));
                return true;
            });
        std::sort(
            entries.begin(), entries.end(),
            [](const SFolderEntry& a, const SFolderEntry& b) { return a.name < b.name; });
        return entries;
    }

    bool IsModelName(const std::string& name) const
    {
        return std::any_of(
            m_Patterns.begin(), m_Patterns.end(),
            [&](const std::string& pattern) { return IsMatching(name, pattern); });
    }

    const std::vector<std::string>& m_Patterns;
    std::vector<SModelPath>& m_Models;
};

} // namespace

std::size_t FindModels(
    const std::string& path,
    const std::vector<std::string>& patterns,
    std::vector<SModelPath>& models)
{
    const std::size_t before = models.size();
    const filesystem::SPathStatus status = filesystem::GetPathStatus(path);
    if (status.kind == filesystem::EPathKind::Folder)
    {
        const bool isEnded = filesystem::IsSystemSeparator(path.back());
        const std::string folder = isEnded ? path : path + SystemSeparator;
        CSearch(patterns, models).Search(folder, folder.size());
    }
    else
        models.push_back({path, filesystem::GetNameStart(path), status.error});
    return models.size() - before;
}

} // namespace zektool
