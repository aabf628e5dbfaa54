#include <algorithm>

#include <windows.h>

#include "Specific/FileSystem/CWindowsHandle.h"
#include "Specific/FileSystem/SystemFiles.h"
#include "Specific/FileSystem/WindowsPath.h"

namespace filesystem
{

namespace
{

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD NoAccess = 0; // but to what is told of a file

bool IsAbsent(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_INVALID_NAME || error == ERROR_BAD_NETPATH ||
           error == ERROR_INVALID_DRIVE;
}

/// Other points of this kind stand for the file or folder itself, which may lie elsewhere.
bool IsLinkTag(DWORD tag)
{
    return tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT;
}

/// Opens what a path leads to, folders as well, without access to its bytes.
HANDLE OpenForStatus(const std::string& path)
{
    return CreateFileW(
        MakeWindowsPath(path).c_str(), NoAccess, ShareAll, nullptr, OPEN_EXISTING,
        FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

SPathStatus MakeFailedStatus()
{
    const DWORD error = GetLastError();
    const EPathKind kind = IsAbsent(error)                ? EPathKind::Absent
                           : error == ERROR_ACCESS_DENIED ? EPathKind::Denied
                                                          : EPathKind::Unknown;
    return {kind, 0, 0, 0, MakeWindowsErrorText(error)};
}

std::int64_t JoinParts(DWORD high, DWORD low)
{
    return static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
}

std::string GetErrorUnless(BOOL isDone)
{
    return isDone ? "" : MakeLastErrorText();
}

/// Closes a search that `FindFirstFileW` has begun.
struct SSearch
{
    ~SSearch() { FindClose(handle); }

    HANDLE handle;
};

SFolderEntry MakeEntry(const std::string& folder, const WIN32_FIND_DATAW& found)
{
    SFolderEntry entry;
    entry.name = MakeNarrowText(found.cFileName);
    entry.isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.isLink = (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
                   IsLinkTag(found.dwReserved0);
    if (entry.isLink && entry.isFolder)
        entry.isFolder = IsFolder(folder + SystemSeparator + entry.name);
    return entry;
}

} // namespace

SPathStatus GetPathStatus(const std::string& path)
{
    const CWindowsHandle file(OpenForStatus(path));
    if (!file.IsOpen())
        return MakeFailedStatus();
    if (GetFileType(file.Get()) != FILE_TYPE_DISK)
        return {EPathKind::Other};
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(file.Get(), &information))
        return MakeFailedStatus();
    const bool isFolder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return {
        isFolder ? EPathKind::Folder : EPathKind::File,
        JoinParts(information.nFileSizeHigh, information.nFileSizeLow),
        information.dwVolumeSerialNumber,
        static_cast<std::uint64_t>(
            JoinParts(information.nFileIndexHigh, information.nFileIndexLow))};
}

EPathKind GetLinkKind(const std::string& path)
{
    WIN32_FIND_DATAW found;
    const DWORD attributes = GetFileAttributesW(MakeWindowsPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return GetPathStatus(path).kind;
    const SSearch search = {FindFirstFileW(MakeWindowsPath(path).c_str(), &found)};
    const bool isFound = search.handle != INVALID_HANDLE_VALUE;
    return isFound && IsLinkTag(found.dwReserved0) ? EPathKind::Link : GetPathStatus(path).kind;
}

std::string ResolveLinks(std::string& path)
{
    const CWindowsHandle file(OpenForStatus(path));
    if (!file.IsOpen())
        return MakeLastErrorText();
    constexpr DWORD flags = FILE_NAME_NORMALIZED | VOLUME_NAME_DOS;
    std::wstring resolved(GetFinalPathNameByHandleW(file.Get(), nullptr, 0, flags), L'\0');
    const DWORD size = static_cast<DWORD>(resolved.size());
    resolved.resize(GetFinalPathNameByHandleW(file.Get(), resolved.data(), size, flags));
    path = MakeNarrowText(resolved);
    return path.empty() ? MakeLastErrorText() : "";
}

std::string
ReadFolder(const std::string& path, const std::function<bool(const SFolderEntry& entry)>& use)
{
    WIN32_FIND_DATAW found;
    const std::wstring pattern = MakeWindowsPath(path + "\\*");
    const SSearch search = {FindFirstFileW(pattern.c_str(), &found)};
    // The root of a drive need not have any entry.
    if (search.handle == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND ? "" : MakeLastErrorText();
    do
    {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L".." && !use(MakeEntry(path, found)))
            return "";
    } while (FindNextFileW(search.handle, &found));
    return GetErrorUnless(GetLastError() == ERROR_NO_MORE_FILES);
}

std::string CreateFolders(const std::string& path)
{
    if (path.empty() || IsFolder(path))
        return "";
    const std::string parent = GetFolder(path);
    const std::string error = parent == path ? "" : CreateFolders(parent);
    if (!error.empty())
        return error;
    // Another may have made it meanwhile.
    return GetErrorUnless(
        CreateDirectoryW(MakeWindowsPath(path).c_str(), nullptr) || IsFolder(path));
}

std::string RenameFile(const std::string& from, const std::string& to)
{
    return GetErrorUnless(MoveFileExW(
        MakeWindowsPath(from).c_str(), MakeWindowsPath(to).c_str(),
        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

bool RemoveFile(const std::string& path)
{
    return DeleteFileW(MakeWindowsPath(path).c_str()) != 0;
}

} // namespace filesystem
