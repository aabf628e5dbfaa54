// What the platform itself would answer about files and folders. It gives no access to folders, so
// all but the test for a file have fixed results. Everything else in this library that concerns
// folders is built on these functions alone.

#include "Specific/FileSystem/FolderPrimitives.h"

#include <fcntl.h>
#include <unistd.h>

#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/FileSystem.h"

namespace filesystem
{

bool CFindFile::IsExistFile(const std::string& path)
{
    // How std::ifstream opens a file, without what comes with a stream object: the list of open
    // streams alone costs a seventh of the run over a model's textures, and the locales would be
    // half of the program, relocated at each start.
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0)
        return false;
    close(file);
    return true;
}

bool CFindFile::IsExistDir(const std::string&)
{
    return false;
}

bool CFindFile::IsHidden(const std::string&)
{
    return false;
}

bool CFindFile::IsSystem(const std::string&)
{
    return false;
}

bool CFindFile::GetFirst(const std::string&, std::string&)
{
    return false;
}

bool CFindFile::GetNext(std::string&)
{
    return false;
}

bool CFindFile::Close()
{
    return true;
}

bool DelFile(const std::string&)
{
    return false;
}

bool CopyOneFile(const std::string&, const std::string&)
{
    return true;
}

std::string GetCurrentFolderName()
{
    return "";
}

bool CreateOneFolder(const std::string&)
{
    return true;
}

} // namespace filesystem
