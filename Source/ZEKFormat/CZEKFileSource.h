#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace zek
{

/// The bytes of a walk from a file of any size, of which a small window is in memory: what the walk
/// steps over is not read. A text is whole in memory besides, however long it is. Addresses are
/// valid until the next fetch or text, texts until the next text.
///
/// A file that becomes shorter while it is walked ends the walk with a refusal.
class CZEKFileSource
{
public:
    /// Borrows an open file and starts at its first byte. The window begins with a read of so many
    /// bytes, and grows to 64 times that.
    explicit CZEKFileSource(
        filesystem::CRandomAccessFile& file, std::int64_t smallestReadSize = 4096);

    std::int64_t GetPos() const { return m_Pos; }
    std::int64_t GetLeft() const { return m_File.GetSize() - m_Pos; }

    /// The address of the next byte, which has been fetched.
    const unsigned char* GetNext() const { return m_Window.data() + (m_Pos - m_WindowPos); }

    /// Has the next size bytes in the window. False when the file does not give them.
    bool Fetch(std::int64_t size)
    {
        return m_Pos >= m_WindowPos && m_Pos + size <= m_WindowEnd ? true : Refill(size);
    }

    /// Steps over bytes that have been fetched, and returns their address.
    const unsigned char* Take(std::int64_t size)
    {
        const unsigned char* bytes = GetNext();
        m_Pos += size;
        return bytes;
    }

    /// Steps over bytes that are there.
    void Skip(std::int64_t size) { m_Pos += size; }

    /// Takes the bytes up to a zero byte and steps over that. Without one the result is false, and
    /// the position at the end.
    bool TakeText(std::string_view& text);

    /// Tells whether the file did not give bytes that it should have.
    bool IsUnreadable() const { return m_IsUnreadable; }

private:
    bool Refill(std::int64_t size);

    filesystem::CRandomAccessFile& m_File;
    std::int64_t m_Pos = 0;
    std::int64_t m_WindowPos = 0; // of the window's first byte
    std::int64_t m_WindowEnd = 0; // one past its last
    std::int64_t m_SmallestReadSize;
    std::int64_t m_ReadSize;
    bool m_IsUnreadable = false;
    std::vector<unsigned char> m_Window;
    std::string m_Text;
};

} // namespace zek
