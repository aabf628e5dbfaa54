#include "Independent/FileImage/CFileImageMaker.h"

#include <cstring>

#include "Independent/FileImage/FileImage.h"

namespace fileimage
{

void CFileImageMaker::AddByte(unsigned char value)
{
    m_Image.push_back(value);
}

void CFileImageMaker::AddBool(bool value)
{
    AddByte(value ? 1 : 0);
}

void CFileImageMaker::AddWord(unsigned short value)
{
    unsigned char bytes[2];
    WriteWord(bytes, value);
    AddMemoryBlock(bytes, sizeof(bytes));
}

void CFileImageMaker::AddDWord(unsigned int value)
{
    unsigned char bytes[4];
    WriteDWord(bytes, value);
    AddMemoryBlock(bytes, sizeof(bytes));
}

void CFileImageMaker::AddInt(int value)
{
    AddDWord(static_cast<unsigned int>(value));
}

void CFileImageMaker::AddFloat(float value)
{
    unsigned int bits;
    std::memcpy(&bits, &value, sizeof(bits));
    AddDWord(bits);
}

void CFileImageMaker::AddString(const std::string& text)
{
    m_Image.insert(m_Image.end(), text.begin(), text.end());
}

void CFileImageMaker::AddZeroTerminatedString(const std::string& text)
{
    AddString(text);
    AddByte(0);
}

void CFileImageMaker::AddStringAligned4(const std::string& text)
{
    AddZeroTerminatedString(text);
    for (std::size_t count = text.length() + 1; count % 4 != 0; ++count)
        AddByte(0);
}

void CFileImageMaker::AddMemoryBlock(const unsigned char* data, int size)
{
    if (data != nullptr && size > 0)
        m_Image.insert(m_Image.end(), data, data + size);
}

} // namespace fileimage
