#include "Specific/FileSystem/SystemFiles.h"

namespace filesystem
{

std::size_t GetNameStart(const std::string& path)
{
    const bool hasDrive = SystemSeparator == '\\' && path.size() >= 2 && path[1] == ':';
    std::size_t start = path.size();
    while (start > (hasDrive ? 2 : 0) && !IsSystemSeparator(path[start - 1]))
        --start;
    return start;
}

std::string GetFolder(const std::string& path)
{
    std::string folder = path.substr(0, GetNameStart(path));
    while (folder.size() > 1 && IsSystemSeparator(folder.back()))
        folder.pop_back();
    return folder;
}

std::string GetExtension(const std::string& name)
{
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 || name == ".." ? "" : name.substr(dot);
}

bool IsSameFile(const std::string& path, const std::string& other)
{
    const SPathStatus a = GetPathStatus(path);
    const SPathStatus b = GetPathStatus(other);
    return (a.kind == EPathKind::File || a.kind == EPathKind::Folder) && a.kind == b.kind &&
           a.device == b.device && a.inode == b.inode;
}

SPlace GetPlace(const std::string& path)
{
    const std::string folder = GetFolder(path);
    const SPathStatus status = GetPathStatus(folder.empty() ? "." : folder);
    if (status.kind != EPathKind::Folder)
        return {0, 0, path};
    return {status.device, status.inode, path.substr(GetNameStart(path))};
}

bool IsInFolder(const std::string& path, const std::string& folder)
{
    std::string place = path;
    while (!place.empty() && !IsFolder(place))
        place = GetFolder(place);
    if (place.empty())
        place = ".";
    while (IsFolder(place) && !IsSameFile(place, folder))
    {
        const std::string above = place + "/..";
        if (IsSameFile(place, above))
            return false;
        place = above;
    }
    return IsFolder(place);
}

} // namespace filesystem
