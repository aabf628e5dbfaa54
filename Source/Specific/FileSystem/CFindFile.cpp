#include "Specific/FileSystem/CFindFile.h"

#include <algorithm>

#include "Specific/FileSystem/CFile.h"

namespace filesystem
{

namespace
{

/// Appends the entries of a folder whose path passes the test, and sorts.
template <typename Test>
void AppendEntries(const std::string& folder, std::vector<std::string>& names, Test test)
{
    const std::string realFolder = CFile::TransRealFileName(folder);
    CFindFile finder;
    std::string name;
    if (!finder.GetFirst(realFolder + "\\*", name))
        return;
    do
    {
        if (name != "." && name != ".." && test(realFolder + "\\" + name))
            names.push_back(name);
    } while (finder.GetNext(name));
    std::sort(names.begin(), names.end());
}

bool IsVisibleFile(const std::string& path)
{
    return CFindFile::IsExistFile(path) && !CFindFile::IsHidden(path) && !CFindFile::IsSystem(path);
}

} // namespace

CFindFile::~CFindFile()
{
    Close();
}

void CFindFile::GetFileList(const std::string& folder, std::vector<std::string>& names)
{
    AppendEntries(folder, names, IsVisibleFile);
}

void CFindFile::GetFolderList(const std::string& folder, std::vector<std::string>& names)
{
    AppendEntries(folder, names, IsExistDir);
}

void CFindFile::GetFileListWithinSubFolder(
    const std::string& folder, std::vector<std::string>& paths)
{
    std::vector<std::string> files;
    GetFileList(folder, files);
    for (const std::string& file : files)
        paths.push_back(folder + "\\" + file);

    std::vector<std::string> subFolders;
    GetFolderList(folder, subFolders);
    for (const std::string& subFolder : subFolders)
        GetFileListWithinSubFolder(folder + "\\" + subFolder, paths);
}

} // namespace filesystem
