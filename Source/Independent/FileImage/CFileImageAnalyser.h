#pragma once

#include <cstdint>
#include <string>

#include "Independent/FileImage/FileImage.h"

namespace fileimage
{

/// Reads a range of bytes that it does not own, usually a whole file image, from front to back.
///
/// It reads in place and never copies the range, which must outlive it and keep its size. There
/// are two forms of read:
/// - checked (`GetInt`): returns false where the range is too short. Neither the value nor the
///   position has changed then, unless the function says otherwise.
/// - unchecked (`GetIntNoCheck`): for a run of fields whose bytes one `IsCanRead` has found to be
///   there. Reading past the end with these is undefined.
///
/// No failure is remembered: every call stands alone. From a position past the end, whatever fails
/// leaves it there.
///
///     if (!reader.IsCanRead(8))
///         return false;
///     const int count = reader.GetIntNoCheck();
///     const float cutoff = reader.GetFloatNoCheck();
class CFileImageAnalyser
{
public:
    /// Starts at begin; end is one past the last byte. Nothing is checked, and begin may equal end.
    CFileImageAnalyser(const unsigned char* begin, const unsigned char* end)
        : m_pRead(begin)
        , m_pBegin(begin)
        , m_pEnd(end)
    {
    }

    virtual ~CFileImageAnalyser() = default;

    /// Tells whether no byte is left.
    bool IsEnd() const { return m_pRead >= m_pEnd; }

    /// Tells whether a move by size bytes ends within the range or before it: at the very end that
    /// of 0 does, and within the range every negative one.
    bool IsCanRead(int size) const { return size <= GetCanReadSize(); }

    /// Returns where the byte stands that is read next, or null at the end.
    const unsigned char* GetReadPointer() const { return IsEnd() ? nullptr : m_pRead; }

    /// Returns the number of bytes left.
    std::int64_t GetCanReadSize() const { return m_pEnd - m_pRead; }

    /// Returns the number of bytes consumed. It is negative after skipping back over the start.
    std::int64_t GetPos() const { return m_pRead - m_pBegin; }

    /// Steps over size bytes, or stays and returns false when they are not there. A negative size
    /// steps back, and staying within the range is then the caller's responsibility.
    bool Skip(int size)
    {
        if (!IsCanRead(size))
            return false;
        m_pRead += size;
        return true;
    }

    /// Reads one byte as a char.
    bool GetChar(char& value);

    /// Reads one byte.
    bool GetByte(unsigned char& value);

    /// Reads one byte; the value becomes true exactly when the byte is 1.
    bool GetBool(bool& value);

    /// Reads a signed 16-bit value.
    bool GetShort(short& value);

    /// Reads an unsigned 16-bit value.
    bool GetWord(unsigned short& value);

    /// Reads a signed 32-bit value.
    bool GetInt(int& value)
    {
        if (!IsCanRead(4))
            return false;
        value = GetIntNoCheck();
        return true;
    }

    /// Reads an unsigned 32-bit value.
    bool GetDWord(unsigned int& value);

    /// Reads an IEEE 754 single.
    bool GetFloat(float& value);

    /// Copies size bytes to dest, which has room for them. A negative size is refused with false.
    bool GetMemoryBlock(unsigned char* dest, int size);

    /// Reads a text field of a fixed length in bytes: out becomes the bytes before the field's
    /// first zero byte, or all of them, and the position moves by the whole field. A negative
    /// length is refused with false.
    bool GetString(std::string& out, int length);

    /// Reads the bytes up to a zero byte and steps over that. Where no zero byte is left the
    /// result is false, out is untouched, and the position is at the end of the range.
    bool GetZeroTerminatedString(std::string& out);

    /// Reads a zero-terminated text and the filler that brings it, counted from its own first
    /// byte, to a multiple of 4 bytes. On failure the position is at the end of the range; out
    /// already holds the text when only the filler is short.
    bool GetStringAligned4(std::string& out);

    /// Reads a line up to a line feed and steps over that. Every carriage return is dropped, and
    /// out ends at the first zero byte in the line. A last line without a line feed cannot be
    /// read: the result is false, out is untouched, and the position is at the end of the range.
    bool GetTextLine(std::string& out);

    /// Returns the next byte.
    unsigned char GetByteNoCheck() { return *Advance(1); }

    /// Returns the next signed 16-bit value.
    short GetShortNoCheck() { return static_cast<short>(ReadWord(Advance(2))); }

    /// Returns the next unsigned 16-bit value.
    unsigned short GetWordNoCheck() { return ReadWord(Advance(2)); }

    /// Returns the next signed 32-bit value.
    int GetIntNoCheck() { return ReadInt(Advance(4)); }

    /// Returns the next unsigned 32-bit value.
    unsigned int GetDWordNoCheck() { return ReadDWord(Advance(4)); }

    /// Returns the next IEEE 754 single.
    float GetFloatNoCheck() { return ReadFloat(Advance(4)); }

private:
    /// Moves past the next size bytes and returns where they start.
    const unsigned char* Advance(int size)
    {
        const unsigned char* start = m_pRead;
        m_pRead += size;
        return start;
    }

    const unsigned char* m_pRead;
    const unsigned char* m_pBegin;
    const unsigned char* m_pEnd;
};

} // namespace fileimage
