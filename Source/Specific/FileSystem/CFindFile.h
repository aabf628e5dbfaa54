#pragma once

#include <string>
#include <vector>

namespace filesystem
{

/// Tells whether files exist, and lists the files and sub-folders of folders.
///
/// The platform gives no access to folders: no folder exists, every listing is empty, and the one
/// real test is `IsExistFile`. The listings are written out all the same, on top of the primitives
/// in FolderPrimitives.cpp, so that putting real primitives there makes them work.
class CFindFile
{
public:
    CFindFile() = default;
    virtual ~CFindFile();

    /// Tells whether the path can be opened for reading, as an input file stream would. The path
    /// is taken as it is: no prefix is translated and no separator converted.
    static bool IsExistFile(const std::string& path);

    /// Tells whether the path is a folder. Always false on this platform.
    static bool IsExistDir(const std::string& path);

    /// Tells whether the path is hidden. Always false on this platform.
    static bool IsHidden(const std::string& path);

    /// Tells whether the path belongs to the operating system. Always false on this platform.
    static bool IsSystem(const std::string& path);

    /// Starts a listing of the entries that match a pattern such as "folder\*" and gives the name
    /// of the first. Returns false, name untouched, when there is none: always on this platform.
    bool GetFirst(const std::string& pattern, std::string& name);

    /// Gives the name of the next entry. Returns false, name untouched, when there is none: always
    /// on this platform.
    bool GetNext(std::string& name);

    /// Ends the listing. Always true on this platform.
    bool Close();

    /// Appends the names, without their folder, of the files in a folder that are neither hidden
    /// nor system files, and sorts the whole vector by bytes. Where the folder has no entries at
    /// all, names is neither changed nor sorted.
    static void GetFileList(const std::string& folder, std::vector<std::string>& names);

    /// Appends and sorts as `GetFileList` does, for the names of the sub-folders, hidden and system
    /// ones included.
    static void GetFolderList(const std::string& folder, std::vector<std::string>& names);

    /// Appends the paths, starting with folder, of the files in a folder and in all folders below
    /// it: a folder's own files first, then those of its sub-folders in turn.
    static void
    GetFileListWithinSubFolder(const std::string& folder, std::vector<std::string>& paths);
};

} // namespace filesystem
