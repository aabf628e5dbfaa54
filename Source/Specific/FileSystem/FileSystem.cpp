#include "Specific/FileSystem/FileSystem.h"

#include <vector>

#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/FolderPrimitives.h"
#include "Specific/FileSystem/LFileName.h"
#include "Specific/FileSystem/PathScan.h"

namespace filesystem
{

bool CreateFolder(const std::string& path)
{
    if (CFindFile::IsExistDir(path))
        return true;
    const std::string parent = LFileName::GetParent(path);
    if (!parent.empty() && !CreateFolder(parent))
        return false;
    return IsDriveRoot(path) || CreateOneFolder(path);
}

bool DeleteFolder(const std::string& path)
{
    if (!CFindFile::IsExistDir(path))
        return true;
    std::vector<std::string> names;
    CFindFile::GetFileList(path, names);
    for (const std::string& name : names)
    {
        const std::string entry = LFileName::AddPunct(path) + name;
        if (!(CFindFile::IsExistDir(entry) ? DeleteFolder(entry) : DelFile(entry)))
            return false;
    }
    return true;
}

bool CopyFolder(const std::string& dest, const std::string& src)
{
    if (!CFindFile::IsExistDir(src))
        return false;
    if (!CreateFolder(dest))
        return false;

    std::vector<std::string> subFolders;
    CFindFile::GetFolderList(src, subFolders);
    for (const std::string& subFolder : subFolders)
    {
        if (!CopyFolder(dest + "\\" + subFolder, src + "\\" + subFolder))
            return false;
    }

    std::vector<std::string> files;
    CFindFile::GetFileList(src, files);
    for (const std::string& file : files)
    {
        if (!CopyOneFile(dest + "\\" + file, src + "\\" + file))
            return false;
    }
    return true;
}

} // namespace filesystem
