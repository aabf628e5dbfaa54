#include "Independent/FileImage/CFileImageAnalyser.h"

#include <algorithm>

namespace fileimage
{

bool CFileImageAnalyser::GetChar(char& value)
{
    if (!IsCanRead(1))
        return false;
    value = static_cast<char>(GetByteNoCheck());
    return true;
}

bool CFileImageAnalyser::GetByte(unsigned char& value)
{
    if (!IsCanRead(1))
        return false;
    value = GetByteNoCheck();
    return true;
}

bool CFileImageAnalyser::GetBool(bool& value)
{
    if (!IsCanRead(1))
        return false;
    value = GetByteNoCheck() == 1;
    return true;
}

bool CFileImageAnalyser::GetShort(short& value)
{
    if (!IsCanRead(2))
        return false;
    value = GetShortNoCheck();
    return true;
}

bool CFileImageAnalyser::GetWord(unsigned short& value)
{
    if (!IsCanRead(2))
        return false;
    value = GetWordNoCheck();
    return true;
}

bool CFileImageAnalyser::GetDWord(unsigned int& value)
{
    if (!IsCanRead(4))
        return false;
    value = GetDWordNoCheck();
    return true;
}

bool CFileImageAnalyser::GetFloat(float& value)
{
    if (!IsCanRead(4))
        return false;
    value = GetFloatNoCheck();
    return true;
}

bool CFileImageAnalyser::GetMemoryBlock(unsigned char* dest, int size)
{
    if (size < 0 || !IsCanRead(size))
        return false;
    std::copy_n(Advance(size), size, dest);
    return true;
}

bool CFileImageAnalyser::GetString(std::string& out, int length)
{
    if (length < 0 || !IsCanRead(length))
        return false;
    const unsigned char* begin = Advance(length);
    out.assign(begin, std::find(begin, begin + length, 0));
    return true;
}

bool CFileImageAnalyser::GetZeroTerminatedString(std::string& out)
{
    const unsigned char* begin = m_pRead;
    // A position past the end stays there.
    m_pRead = std::find(begin, std::max(begin, m_pEnd), 0);
    if (IsEnd())
        return false;
    out.assign(begin, m_pRead);
    ++m_pRead;
    return true;
}

bool CFileImageAnalyser::GetStringAligned4(std::string& out)
{
    if (!GetZeroTerminatedString(out))
        return false;
    for (std::size_t count = out.length() + 1; count % 4 != 0; ++count)
    {
        if (!Skip(1))
            return false;
    }
    return true;
}

bool CFileImageAnalyser::GetTextLine(std::string& out)
{
    std::string line;
    while (!IsEnd())
    {
        const char character = static_cast<char>(GetByteNoCheck());
        if (character == '\n')
        {
            out = line.substr(0, line.find('\0'));
            return true;
        }
        if (character != '\r')
            line.push_back(character);
    }
    return false;
}

} // namespace fileimage
