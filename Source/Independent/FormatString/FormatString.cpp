#include "Independent/FormatString/FormatString.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "Independent/CharacterCode/ShiftJIS.h"

namespace formatstring
{

std::string Format(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    std::string text = Format(format, args);
    va_end(args);
    return text;
}

std::string Format(const char* format, va_list& args)
{
    char buffer[FormatBufferSize];
    buffer[0] = 0;
    std::vsnprintf(buffer, sizeof(buffer), format, args);
    return buffer;
}

int FormatArgs(char* dest, unsigned long, const char* format, va_list& args)
{
    return std::vsprintf(dest, format, args);
}

int PrintInt(char* dest, unsigned int, const char* format, int value)
{
    return std::sprintf(dest, format, value);
}

int PrintFloat(char* dest, unsigned int, const char* format, float value)
{
    return std::sprintf(dest, format, static_cast<double>(value));
}

int PrintString(char* dest, unsigned int, const char* format, const char* text)
{
    return std::sprintf(dest, format, text);
}

char* CopyString(char* dest, unsigned int, const char* src)
{
    return std::strcpy(dest, src);
}

bool ScanInt(const std::string& text, int& value)
{
    return std::sscanf(text.c_str(), "%d", &value) == 1;
}

bool ScanUnsignedInt(const std::string& text, unsigned int& value)
{
    return std::sscanf(text.c_str(), "%u", &value) == 1;
}

bool ScanHexInt(const std::string& text, int& value)
{
    unsigned int bits;
    if (std::sscanf(text.c_str(), "%x", &bits) != 1)
        return false;
    value = static_cast<int>(bits);
    return true;
}

bool ScanFloat(const std::string& text, float& value)
{
    return std::sscanf(text.c_str(), "%f", &value) == 1;
}

std::string ToString(int value)
{
    return Format("%d", value);
}

std::string ToString(float value)
{
    return Format("%f", static_cast<double>(value));
}

std::string ToString(const std::string& text)
{
    return Format("%s", text.c_str());
}

std::string Replace(const std::string& text, const std::string& from, const std::string& to)
{
    if (from.empty())
        return text;

    std::string result;
    std::size_t i = 0;
    while (i + from.length() <= text.length())
    {
        if (text.compare(i, from.length(), from) == 0)
        {
            result += to;
            i += from.length();
            continue;
        }
        result += text[i];
        const bool isTwoBytes =
            charactercode::IsShiftJISLeadByte(static_cast<unsigned char>(text[i]));
        ++i;
        // A lead byte that ends the text takes the text's terminating zero with it.
        if (isTwoBytes)
            result += text[i++];
    }
    return result;
}

std::vector<std::string> Split(const std::string& text, const std::string& separator)
{
    if (separator.empty())
        return {text};

    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, begin))
    {
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + separator.length();
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

} // namespace formatstring
