#include <cerrno>
#include <cstdio>
#include <system_error>

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
    return {
        isAbsent ? EPathKind::Absent : EPathKind::Unknown, 0,
        std::generic_category().message(error)};
}

std::string GetText(const std::error_code& error)
{
    return error ? error.message() : "";
}

} // namespace

SPathStatus GetPathStatus(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return MakeFailedStatus(errno);
    return {GetKind(status.st_mode), status.st_size};
}

EPathKind GetLinkKind(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 ? GetKind(status.st_mode)
                                             : MakeFailedStatus(errno).kind;
}

bool IsSameFile(const std::string& path, const std::string& other)
{
    std::error_code ignored;
    return fs::equivalent(path, other, ignored);
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
    std::error_code error;
    fs::directory_iterator i(path, error);
    for (; !error && i != fs::directory_iterator(); i.increment(error))
    {
        // A link that leads nowhere is no folder.
        std::error_code ignored;
        if (!use({i->path().filename().string(), i->is_directory(ignored), i->is_symlink(ignored)}))
            break;
    }
    return GetText(error);
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
