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

    /// Adds the folder of a variant, or, while that is absent, the last folder on the way to it
    /// that exists: the one that changes when the next comes.
    void AddVariant(const std::string& path);

    /// Writes the file, complete or not at all. The target is what the folders are named for. On
    /// false the reason is set; a name that cannot be written so that Ninja reads it is one.
    bool Write(const std::string& path, const std::string& target, std::string& reason) const;

private:
    std::size_t m_FolderLength;
    std::set<std::string> m_Folders;
    std::set<std::string> m_Asked; // folders of variants
};

} // namespace zektool
