#pragma once

#include <cstdint>
#include <string>

#include "Specific/FileSystem/SFileState.h"

namespace filesystem
{

/// A regular file, open for reading, or for reading and writing, at any position. Positions and
/// sizes have 64 bits. The path is the system's own, as SystemFiles.h says.
///
/// A failure is a false result, or fewer bytes read; nothing is printed or thrown, except by
/// `CanOpen`, and that memory may run out. What the system is asked for stands in
/// CRandomAccessFilePosix.cpp and its Windows counterpart.
class CRandomAccessFile
{
public:
    CRandomAccessFile() = default;
    ~CRandomAccessFile();

    CRandomAccessFile(const CRandomAccessFile&) = delete;
    CRandomAccessFile& operator=(const CRandomAccessFile&) = delete;

    /// Tells whether the path can be opened for reading, whatever it is: what
    /// `CFindFile::IsExistFile` says, but without waiting for a FIFO's writer or a device. Throws
    /// `std::system_error` when that cannot be told: no descriptor or memory is left, or the disk
    /// or the network does not answer. Nobody may take that for a file that is not there.
    static bool CanOpen(const std::string& path);

    /// Opens an existing file for reading, after closing what was open. Anything but a regular file
    /// (a folder, a device, a FIFO) is refused without waiting for it.
    bool Open(const std::string& path);

    /// The same for reading and writing. Nothing in the file changes by it. Where the system grants
    /// that (Linux, to a file's owner, if nobody else has the file open), whoever opens or cuts the
    /// file from then on waits until it is closed here. On Windows this fails as long as somebody
    /// else has the file open for writing, and until it is closed here nobody else can open it so.
    bool OpenToWrite(const std::string& path);

    /// Tells whether somebody stood in the way of the last opening: they have the file to
    /// themselves, so that it failed; or they have it open, so that they can change it while it is
    /// written.
    bool IsBusy() const { return m_IsBusy; }

    /// Makes a file that did not exist, open for reading and writing. Its state is not asked for.
    /// It can be renamed and deleted while it is open.
    bool Create(const std::string& path);

    /// Closes the file, if one is open.
    void Close();

    /// Returns what the file was when it was opened.
    const SFileState& GetState() const { return m_State; }

    /// Returns the size in bytes that the file had when it was opened.
    std::int64_t GetSize() const { return m_State.size; }

    /// Tells whether the open file still is in the state that it was opened in. That another file
    /// may have taken its name since cannot be seen here.
    bool IsUnchanged() const;

    /// Reads up to size bytes from pos on to dest and returns how many came: fewer where the file
    /// has become shorter or cannot be read.
    std::int64_t Read(std::int64_t pos, void* dest, std::int64_t size);

    /// Writes all of size bytes from pos on. A failure may leave some of them written.
    bool Write(std::int64_t pos, const void* source, std::int64_t size);

    /// Sets the time of modification to now.
    bool Touch();

    /// Waits until what was written would survive a power cut.
    bool Flush();

    /// Returns why `Open`, `OpenToWrite`, `Create`, `Write`, `Touch` or `Flush` failed last, such
    /// as "Permission denied". It means nothing after one of them has succeeded.
    std::string GetError() const;

    /// Tells whether that was because what was to be opened is no regular file.
    bool IsNotRegular() const { return m_Error == NotRegular; }

private:
    static constexpr int NotRegular = -1; // among the system's error numbers, which are positive

    bool OpenWith(const std::string& path, int flags);
    void KeepOthersOut();
    bool Fail(int error);

    int m_File = -1;
    SFileState m_State;
    bool m_IsBusy = false;
    int m_Error = 0;
};

} // namespace filesystem
