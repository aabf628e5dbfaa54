#pragma once

#include <string>

namespace filesystem
{

/// Holds one path, to which folder and file names are added. The path is Shift_JIS text, and the
/// backslash is its only separator; a trail byte of 0x5C is not one.
class CFilePath
{
public:
    /// Starts with an empty path.
    CFilePath() = default;
    CFilePath(const CFilePath&) = default;
    CFilePath(CFilePath&&) = default;
    CFilePath& operator=(const CFilePath&) = default;
    CFilePath& operator=(CFilePath&&) = default;
    virtual ~CFilePath() = default;

    /// Sets the root folder for all objects. It is empty until then, and not guarded against use
    /// by several threads.
    static void SetRootFolderPath(const std::string& path);

    /// Makes the path the root folder, without a separator at its end.
    void SetBaseFolderPath();

    /// Only removes a separator at the path's end: this platform does not tell the program's path.
    void SetExeFilePath();

    /// Only removes a separator at the path's end: this platform has no temporary folder.
    void SetTemporaryFolderPath();

    /// Does nothing: this platform has no personal folder.
    void SetPersonalFolderPath();

    /// Does nothing: this platform has no folder for application data.
    void SetAppDataFolderPath();

    /// Appends a separator unless the path is empty or ends in one.
    void AddSeparator();

    /// Removes one separator from the path's end. The root of a drive, such as C:\, keeps its own.
    void DeleteSeparator();

    /// Appends a separator, as by `AddSeparator`, and the name.
    void AddFolderName(const std::string& name);

    /// Does the same as `AddFolderName`.
    void AddFileName(const std::string& name);

    /// Returns the path. The reference lives as long as the object.
    const std::string& GetString() const { return m_Path; }

    /// Returns the path's characters, valid until the path changes.
    const char* c_str() const { return m_Path.c_str(); }

    /// Returns the index of the last separator, or `std::string::npos` when there is none.
    std::string::size_type GetLastSeparatorIndex() const;

    /// Returns the path before the last separator; empty when there is none.
    std::string GetParentPath() const;

    /// Returns what stands after the last separator; the whole path when there is none.
    std::string GetChildFileName() const;

private:
    bool IsEndingInSeparator() const;

    std::string m_Path;

    static std::string m_RootFolderPath;
};

} // namespace filesystem
