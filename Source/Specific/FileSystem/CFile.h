#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Specific/FileSystem/CFileBuffer.h"

namespace filesystem
{

/// One file, open for reading from an existing file or for writing to a new one, or closed.
///
/// Positions and sizes are unsigned 32-bit counts of bytes. A file that is larger than that can be
/// opened, its size being cut to 32 bits, but `ReadImage` refuses it. Where a size or a position
/// is passed as an int, its 32 bits are taken as unsigned, so that one call can move up to 4 GiB.
///
/// Every failure is a false result; nothing is printed or thrown, except that memory may run out.
class CFile
{
public:
    /// Starts closed, with position and size 0.
    CFile() = default;

    /// Closes the file. What that answers is lost: call `Close` where it matters.
    virtual ~CFile();

    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Opens an existing file for reading, after closing what was open. Every backslash of the
    /// name is read as a slash; the logical prefixes of `TransRealFileName` are not translated.
    /// When only the size cannot be found out, the result is false and the stream stays open.
    bool Open(const std::string& name);

    /// Creates a file, or empties an existing one, for writing, after closing what was open. The
    /// logical prefixes of `TransRealFileName` are translated; backslashes stay as they are. The
    /// size is 4294967295 from then on, meaning no limit.
    bool Create(const std::string& name);

    /// Closes the file. Returns true when that worked or nothing was open. The stream is gone
    /// either way. Position and size keep their values.
    bool Close();

    /// Reads size bytes to dest. Fails without moving when they go past the size of the file; a
    /// read that the system cuts short fails and leaves the position, though not the stream,
    /// where it was.
    bool Read(void* dest, int size);

    /// Writes size bytes. On failure the position stays, though some bytes may be written.
    bool Write(const void* src, int size);

    /// Moves to a position below the size; the position just after the last byte of a file that
    /// is open for reading is refused.
    bool SetPos(unsigned int pos);

    /// Returns the position in bytes from the start.
    unsigned int GetPos() const { return m_Pos; }

    /// Returns the size in bytes of a file open for reading, and 4294967295 for one being written.
    unsigned int GetSize() const { return m_Size; }

    /// Writes count zero bytes. A negative count is refused.
    bool StepWritePos(int count);

    /// Writes a value in the byte order of the host at position pos and comes back to the present
    /// position. A failure may leave the position at pos or just after the value.
    bool WritePosDWORD(int pos, unsigned int value);

    /// Writes a zero-terminated text, with its terminator if asked for.
    bool WriteString(const char* text, bool withTerminator);

    /// Writes one byte.
    bool WriteByte(unsigned char value);

    /// Reads a text up to a zero byte and stops after that; at the end of the file the rest of
    /// the file is the text. Returns false with an empty out at the end of the file, on a read
    /// error, and when the zero byte is the last byte of the file, since that position cannot be
    /// set.
    bool ReadString(std::string& out);

    /// Fills image with all bytes of a file that `Open` finds. A zero byte ends the name. Fails
    /// - with image unchanged when the file cannot be opened or its size does not fit 32 bits;
    /// - with image at the file's size, its bytes unspecified, when the file cannot be read;
    /// - with image filled when the file cannot be closed.
    static bool ReadImage(std::vector<unsigned char>& image, const std::string& name);

    /// Does as `ReadImage` into a buffer, which is faster with a large file.
    static bool ReadBuffer(CFileBuffer& buffer, const std::string& name);

    /// Writes image to a file that `Create` makes. On failure the file may be left truncated or
    /// partly written, except that an image over 32 bits of size is refused before the file is
    /// touched. A zero byte ends the name.
    static bool WriteImage(const std::vector<unsigned char>& image, const std::string& name);

    /// Does as `WriteImage` from a buffer.
    static bool WriteBuffer(const CFileBuffer& buffer, const std::string& name);

    /// Reads a file as text up to its first zero byte. An empty file succeeds and leaves text
    /// unchanged; a failure leaves it unchanged, too.
    static bool ReadTextImage(std::string& text, const std::string& name);

    /// Writes the bytes of text, zero bytes included, without a terminator.
    static bool WriteTextImage(const std::string& text, const std::string& name);

    /// Returns the real name of a file: a name that starts with "UserData\" or "Setting\" stands
    /// below the application's user folder, prefix included; any other name stays as it is.
    static std::string TransRealFileName(const std::string& name);

    /// Returns the application's user folder. The platform has no personal folder for it to stand
    /// in, so it is relative to the working folder.
    static std::string GetAppUserFolderPath();

private:
    enum class EBuffering
    {
        On,
        Off
    };

    /// Opens a file for reading, as `Open` says, and finds out its size, all 64 bits of it.
    bool OpenAndMeasure(const std::string& name, EBuffering buffering, std::int64_t& fileSize);

    /// Opens a file that is to be read whole; fails when its size does not fit 32 bits.
    bool OpenImage(const std::string& name);

    /// Reads the whole of a file that has just been opened.
    bool ReadWhole(unsigned char* dest);

    /// Writes size bytes to a file that `Create` makes.
    static bool WriteWhole(const unsigned char* src, std::size_t size, const std::string& name);

    /// Has a file that is moved whole go straight between disk and image, in one system call where
    /// a buffer would take several.
    void StopBuffering();

    std::FILE* m_pFile = nullptr;
    unsigned int m_Pos = 0;
    unsigned int m_Size = 0;
};

} // namespace filesystem
