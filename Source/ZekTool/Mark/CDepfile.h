#pragma once

#include <set>
#include <string>

namespace zektool
{

/// What a build tool has to look at to know when a model has to be marked again: the folders in
/// which variants come and go. It is a file for Ninja and Make with one rule.
class CDepfile
{
public:
    /// For a model's folder, as `GetModelFolder` gives it, which is always named.
    explicit CDepfile(const std::string& modelFolder);

    /// Adds those folders below the model's on the way to a variant that exist.
    void AddVariant(const std::string& path);

    /// Writes the file, complete or not at all. The target is what the folders are named for. On
    /// false the reason is set; a name that cannot be written so that Ninja reads it is one.
    bool Write(const std::string& path, const std::string& target, std::string& reason) const;

private:
    std::size_t m_FolderLength;
    std::set<std::string> m_Folders;
    std::set<std::string> m_Absent; // looked for once
};

} // namespace zektool
