#include "ZekTool/Models/ModelSearch.h"

#include <algorithm>
#include <filesystem>

#include <fnmatch.h>

#include "ZekTool/Output/Interrupt.h"

namespace zektool
{

namespace
{

namespace fs = std::filesystem;

/// A file or folder in a folder. A folder's name ends with a slash, as in the paths of what is
/// below it, so that sorting the names sorts those paths.
struct SEntry
{
    std::string name;
    bool isFolder;
};

class CSearch
{
public:
    CSearch(const std::vector<std::string>& patterns, std::vector<SModelPath>& models)
        : m_Patterns(patterns)
        , m_Models(models)
    {
    }

    /// Searches a folder, whose path ends with a slash.
    void Search(const std::string& folder, std::size_t nameStart)
    {
        std::error_code error;
        std::vector<SEntry> entries = Read(folder, error);
        if (error)
            m_Models.push_back({folder, nameStart, error.message()});
        for (const SEntry& entry : entries)
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
    /// Returns the folders and models in a folder, sorted.
    std::vector<SEntry> Read(const std::string& folder, std::error_code& error) const
    {
        std::vector<SEntry> entries;
        fs::directory_iterator i(folder, error);
        for (; !error && i != fs::directory_iterator(); i.increment(error))
        {
            // A link that leads nowhere is no folder, and fails later if its name is a model's.
            std::error_code ignored;
            const std::string name = i->path().filename().string();
            const bool isLink = i->is_symlink(ignored);
            const bool isFolder = i->is_directory(ignored);
            if (isFolder && !isLink)
                entries.push_back({name + '/', true});
            else if (!isFolder && IsModelName(name))
                entries.push_back({name, false});
        }
        std::sort(
            entries.begin(), entries.end(),
            [](const SEntry& a, const SEntry& b) { return a.name < b.name; });
        return entries;
    }

    bool IsModelName(const std::string& name) const
    {
        return std::any_of(
            m_Patterns.begin(), m_Patterns.end(),
            [&](const std::string& pattern)
            { return fnmatch(pattern.c_str(), name.c_str(), 0) == 0; });
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
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status))
    {
        const std::string folder = path.back() == '/' ? path : path + '/';
        CSearch(patterns, models).Search(folder, folder.size());
    }
    else
        models.push_back(
            {path, path.rfind('/') + 1,
             fs::status_known(status) && fs::exists(status) ? std::string() : error.message()});
    return models.size() - before;
}

} // namespace zektool
