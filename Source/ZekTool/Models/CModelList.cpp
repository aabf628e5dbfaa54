#include "ZekTool/Models/CModelList.h"

#include <cstring>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Models/ModelSearch.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Interrupt.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

/// Tells whether a path is another, but for a separator at its end.
bool IsSamePath(std::string_view path, std::string_view other)
{
    for (std::string_view* each : {&path, &other})
    {
        if (!each->empty() && filesystem::IsSystemSeparator(each->back()))
            each->remove_suffix(1);
    }
    return path == other;
}

std::string MakeNoModelError(const std::string& folder, const std::vector<std::string>& patterns)
{
    return fmt::format(
        "{}: no file below it is named {}; --name PATTERN takes others", MakeShowable(folder),
        MakeShowable(fmt::to_string(fmt::join(patterns, " or "))));
}

} // namespace

std::string MakeNoPathError(const std::string& path, const std::string& error)
{
    return fmt::format(
        "{}: {}; name a model, or a folder with models below it", MakeShowable(path), error);
}

CModelList::CModelList(const std::vector<std::string>& paths, std::vector<std::string> patterns)
    : m_Patterns(std::move(patterns))
{
    std::vector<std::string> errors;
    for (const std::string& path : paths)
    {
        const std::size_t count = FindModels(path, m_Patterns, m_Models);
        if (count == 0 && !IsInterrupted())
            errors.push_back(MakeNoModelError(path, m_Patterns));
        else if (
            count == 1 && IsSamePath(m_Models.back().path, path) && !m_Models.back().error.empty())
            errors.push_back(MakeNoPathError(path, m_Models.back().error));
    }
    if (!errors.empty())
        throw CUsageError(fmt::to_string(fmt::join(errors, "\nzek: ")));
    m_IsSeveral = paths.size() > 1 || m_Models.size() != 1 || m_Models.front().path != paths[0];
}

CModelList::CModelList(std::unique_ptr<CPathReader> reader, std::vector<std::string> patterns)
    : m_Patterns(std::move(patterns))
    , m_Reader(std::move(reader))
{
}

bool CModelList::Next(SModelPath& model)
{
    if (NextKnown(model))
        return true;
    std::string path;
    if (!m_Reader || !m_Reader->Next(path))
        return false;
    m_Models.clear();
    m_Next = 0;
    if (path.empty())
        m_Models.push_back(
            {path, 0, "an empty path; two zero bytes follow each other in the list"});
    else if (FindModels(path, m_Patterns, m_Models) == 0)
        m_Models.push_back({path, 0, "no model below it"});
    if (!IsInterrupted())
        return NextKnown(model);
    // The search may have been cut short: as it stands, the path is what is not done.
    m_Models.assign(1, {path, filesystem::GetNameStart(path)});
    return false;
}

bool CModelList::NextKnown(SModelPath& model)
{
    if (m_Next == m_Models.size())
        return false;
    model = std::move(m_Models[m_Next++]);
    return true;
}

bool CModelList::NextUndone(SModelPath& model)
{
    if (NextKnown(model))
        return true;
    std::string path;
    if (!m_Reader || !m_Reader->Next(path))
        return false;
    model = {path, filesystem::GetNameStart(path)};
    return true;
}

std::string CModelList::GetError() const
{
    return m_Reader && m_Reader->GetError() != 0 ? std::strerror(m_Reader->GetError()) : "";
}

} // namespace zektool
