#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>

#include <dirent.h>
#include <sys/stat.h>

#include "Specific/FileSystem/SystemFiles.h"

namespace filesystem
{

namespace fs = std::filesystem;

namespace
{

EPathKind GetKind(mode_t mode)
{
    if (S_ISREG(mode))
        return EPathKind::File;
    if (S_ISDIR(mode))
        return EPathKind::Folder;
    return S_ISLNK(mode) ? EPathKind::Link : EPathKind::Other;
}

SPathStatus MakeFailedStatus(int error)
{
    const bool isAbsent = error == ENOENT || error == ENOTDIR;
    const EPathKind kind = isAbsent          ? EPathKind::Absent
                           : error == EACCES ? EPathKind::Denied
                                             : EPathKind::Unknown;
    return {kind, 0, 0, 0, std::generic_category().message(error)};
}

std::string GetText(const std::error_code& error)
{
    return error ? error.message() : "";
}

struct SFolderCloser
{
    void operator()(DIR* folder) const { closedir(folder); }
};

SFolderEntry MakeEntry(const std::string& folder, const dirent& found)
{
    SFolderEntry entry;
    entry.name = found.d_name;
    entry.isFolder = found.d_type == DT_DIR;
    // A link may lead to a folder, and some file systems do not tell what an entry is.
    if (!entry.isFolder && found.d_type != DT_REG)
    {
        const std::string path = folder + SystemSeparator + entry.name;
        entry.isLink = GetLinkKind(path) == EPathKind::Link;
        entry.isFolder = IsFolder(path);
    }
    return entry;
}

} // namespace

SPathStatus GetPathStatus(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return MakeFailedStatus(errno);
    return {
        GetKind(status.st_mode), status.st_size, static_cast<std::uint64_t>(status.st_dev),
        static_cast<std::uint64_t>(status.st_ino)};
}

EPathKind GetLinkKind(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 ? GetKind(status.st_mode)
                                             : MakeFailedStatus(errno).kind;
}

std::string ResolveLinks(std::string& path)
{
    std::error_code error;
    path = fs::canonical(path, error).string();
    return GetText(error);
}

std::string
ReadFolder(const std::string& path, const std::function<bool(const SFolderEntry& entry)>& use)
{
    const std::unique_ptr<DIR, SFolderCloser> folder(opendir(path.c_str()));
    while (folder)
    {
        errno = 0;
        const dirent* found = readdir(folder.get());
        if (found == nullptr)
            break;
        const std::string_view name = found->d_name;
        if (name != "." && name != ".." && !use(MakeEntry(path, *found)))
            return "";
    }
    return errno == 0 ? "" : std::generic_category().message(errno);
}

std::string CreateFolders(const std::string& path)
{
    std::error_code error;
    fs::create_directories(path, error);
    return GetText(error);
}

std::string RenameFile(const std::string& from, const std::string& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    return GetText(error);
}

bool RemoveFile(const std::string& path)
{
    return std::remove(path.c_str()) == 0;
}

} // namespace filesystem
