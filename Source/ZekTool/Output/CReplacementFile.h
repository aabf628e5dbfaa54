#pragma once

#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zektool
{

/// A file that is written complete or not at all. It is written under another name in the same
/// folder, `.zek-` and a number, and takes its own name, and the place of what had that, at last.
///
/// A symbolic link stays, and what it leads to is replaced. What exists and is no regular file is
/// not replaced.
class CReplacementFile
{
public:
    /// For a path of the system's own.
    explicit CReplacementFile(std::string path);

    /// Removes what was written, unless it has taken its place.
    ~CReplacementFile();

    CReplacementFile(const CReplacementFile&) = delete;
    CReplacementFile& operator=(const CReplacementFile&) = delete;

    /// Makes the file to write to.
    bool Create();

    /// The file to write to, once it has been made.
    filesystem::CRandomAccessFile& GetFile() { return m_File; }

    /// Has the file take its place. Its time of modification is not before that of the folder that
    /// it stands in.
    bool Replace();

    /// Returns why `Create` or `Replace` failed.
    const std::string& GetError() const { return m_Error; }

private:
    bool Fail(const std::string& error);

    std::string m_Path;
    std::string m_TemporaryPath; // empty while there is none
    filesystem::CRandomAccessFile m_File;
    std::string m_Error;
};

} // namespace zektool
