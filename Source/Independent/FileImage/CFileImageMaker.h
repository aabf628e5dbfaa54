#pragma once

#include <string>
#include <vector>

namespace fileimage
{

/// Builds a byte image by appending value after value, in the encodings that
/// `CFileImageAnalyser` reads back. No call can fail except by running out of memory.
class CFileImageMaker
{
public:
    CFileImageMaker() = default;
    CFileImageMaker(const CFileImageMaker&) = default;
    CFileImageMaker(CFileImageMaker&&) = default;
    CFileImageMaker& operator=(const CFileImageMaker&) = default;
    CFileImageMaker& operator=(CFileImageMaker&&) = default;
    virtual ~CFileImageMaker() = default;

    /// Appends one byte.
    void AddByte(unsigned char value);

    /// Appends the byte 1 for true and 0 for false.
    void AddBool(bool value);

    /// Appends an unsigned 16-bit value, low byte first.
    void AddWord(unsigned short value);

    /// Appends an unsigned 32-bit value, lowest byte first.
    void AddDWord(unsigned int value);

    /// Appends a signed 32-bit value, two's complement, lowest byte first.
    void AddInt(int value);

    /// Appends the bit pattern of an IEEE 754 single, lowest byte first.
    void AddFloat(float value);

    /// Appends the text's bytes, zero bytes included, without a terminator.
    void AddString(const std::string& text);

    /// Appends the text's bytes and one zero byte.
    void AddZeroTerminatedString(const std::string& text);

    /// Appends the text's bytes, one zero byte, and as many more as bring the text, counted from
    /// its own first byte, to a multiple of 4.
    void AddStringAligned4(const std::string& text);

    /// Appends size bytes. Nothing is appended when data is null or size is zero or negative.
    void AddMemoryBlock(const unsigned char* data, int size);

    /// Returns the image as built so far. The reference lives as long as the maker, and the next
    /// call of an Add function changes what it shows.
    const std::vector<unsigned char>& GetImageData() const { return m_Image; }

private:
    std::vector<unsigned char> m_Image;
};

} // namespace fileimage
