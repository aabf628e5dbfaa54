// What the platform itself would answer about files and folders. It gives no access to folders, so
// all but the test for a file have fixed results. Everything else in this library that concerns
// folders is built on these functions alone.

#include "Specific/FileSystem/FolderPrimitives.h"

#include <cstdio>

#include "Specific/FileSystem/CFindFile.h"
#include "Specific/FileSystem/FileSystem.h"

namespace filesystem
{

bool CFindFile::IsExistFile(const std::string& path)
{
    // How std::ifstream opens a file, but without the locales that it brings along, which would
    // be half of the program and be relocated at each start.
    std::FILE* file = std::fopen(path.c_str(), "r");
    if (file == nullptr)
        return false;
    std::fclose(file);
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
