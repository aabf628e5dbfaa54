#pragma once

#include <cstdint>
#include <string>

namespace filesystem
{

/// A regular file, open for reading at any position. Positions and sizes have 64 bits. The path is
/// the system's own: nothing in it is replaced or translated.
///
/// Every failure is a false result; nothing is printed or thrown.
class CRandomAccessFile
{
public:
    CRandomAccessFile() = default;
    ~CRandomAccessFile();

    CRandomAccessFile(const CRandomAccessFile&) = delete;
    CRandomAccessFile& operator=(const CRandomAccessFile&) = delete;

    /// Opens an existing file, after closing what was open. Anything but a regular file (a folder,
    /// a device, a FIFO) is refused without waiting for it.
    bool Open(const std::string& path);

    /// Closes the file, if one is open.
    void Close();

    /// Returns the size in bytes that the file had when it was opened.
    std::int64_t GetSize() const { return m_Size; }

    /// Reads up to size bytes from pos on to dest and returns how many came: fewer where the file
    /// has become shorter or cannot be read.
    std::int64_t Read(std::int64_t pos, void* dest, std::int64_t size);

private:
    int m_File = -1;
    std::int64_t m_Size = 0;
};

} // namespace filesystem
