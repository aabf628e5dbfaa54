#pragma once

#include <map>
#include <string>

#include "Support/Bytes.h"

namespace testsupport
{

/// The bytes of each file below a folder, by its path relative to that.
using FolderContents = std::map<std::string, Bytes>;

/// To a program of 32 bits the system gives 2 GiB less a byte as the size of a folder. It cannot be
/// told from a file, and takes the memory of one, until it is read.
constexpr bool IsFolderAsLargeAsAFile = sizeof(void*) == 4;
constexpr const char* WhyFoldersTakeMemory =
    "To programs of 32 bits a folder is 2 GiB large, and takes that memory before it is refused.";

/// A folder of its own for one test; it goes, with all that is in it, when the object does.
class CTemporaryFolder
{
public:
    CTemporaryFolder();
    ~CTemporaryFolder();
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;

    /// The folder's absolute path without a slash at its end.
    const std::string& GetPath() const { return m_Path; }

    /// The absolute path of a name relative to the folder.
    std::string GetPath(const std::string& name) const { return m_Path + "/" + name; }

    /// Writes a file below the folder, making the folders on its way. The name is taken as the file
    /// system takes it: a backslash is an ordinary character.
    void Write(const std::string& name, const Bytes& bytes) const;
    void Write(const std::string& name, const std::string& text) const;

    void MakeFolder(const std::string& name) const;
    void Remove(const std::string& name) const;

    /// The bytes of a file below the folder; fails the test when it cannot be read.
    Bytes Read(const std::string& name) const;

    /// Every ordinary file below the folder with its bytes.
    FolderContents GetContents() const;

private:
    std::string m_Path;
};

} // namespace testsupport
