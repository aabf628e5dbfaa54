#include "Specific/FileSystem/LFileName.h"

#include "Specific/FileSystem/PathScan.h"

namespace
{

constexpr char Separators[] = "\\/";

std::string::size_type FindFirstSeparator(const std::string& path)
{
    for (std::string::size_type i = 0; i < path.length();
         i = filesystem::NextCharacterIndex(path, i))
    {
        if (path[i] == '\\' || path[i] == '/')
            return i;
    }
    return std::string::npos;
}

std::string::size_type FindLastSeparator(const std::string& path)
{
    return filesystem::FindLastCharacter(path, Separators);
}

std::string::size_type FindLastDot(const std::string& path)
{
    return filesystem::FindLastCharacter(path, ".");
}

bool IsEndingInSeparator(const std::string& path)
{
    const std::string::size_type separator = FindLastSeparator(path);
    return separator != std::string::npos && separator + 1 == path.length();
}

} // namespace

std::string LFileName::GetExtension(const std::string& path)
{
    const std::string::size_type dot = FindLastDot(path);
    return dot == std::string::npos ? "" : ToLower(path.substr(dot + 1));
}

std::string LFileName::DeleteExtension(const std::string& path)
{
    return path.substr(0, FindLastDot(path));
}

std::string LFileName::ChangeExtension(const std::string& path, const std::string& ext)
{
    return DeleteExtension(path) + "." + ext;
}

std::string LFileName::DeleteFileName(const std::string& path)
{
    const std::string::size_type separator = FindLastSeparator(path);
    return separator == std::string::npos ? "" : path.substr(0, separator + 1);
}

std::string LFileName::DeleteExceptFileName(const std::string& path)
{
    const std::string::size_type separator = FindLastSeparator(path);
    return separator == std::string::npos ? "" : path.substr(0, separator);
}

std::string LFileName::DeleteDir(const std::string& path)
{
    const std::string::size_type separator = FindLastSeparator(path);
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string LFileName::GetFirstDir(const std::string& path)
{
    const std::string::size_type separator = FindFirstSeparator(path);
    return separator == std::string::npos ? "" : path.substr(0, separator);
}

std::string LFileName::DeleteFirstDir(const std::string& path)
{
    const std::string::size_type separator = FindFirstSeparator(path);
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string LFileName::DeletePunct(const std::string& path)
{
    return IsEndingInSeparator(path) ? path.substr(0, path.length() - 1) : path;
}

std::string LFileName::AddPunct(const std::string& path)
{
    return IsEndingInSeparator(path) ? path : path + "/";
}

std::string LFileName::GetParent(const std::string& path)
{
    return DeletePunct(DeleteFileName(path));
}

std::string LFileName::ToLower(const std::string& path)
{
    std::string result;
    for (std::string::size_type i = 0; i < path.length(); ++i)
    {
        const char character = path[i];
        if (charactercode::IsShiftJISLeadByte(static_cast<unsigned char>(character)))
        {
            result += character;
            ++i;
            result += path[i];
        }
        else if (character >= 'A' && character <= 'Z')
            result += static_cast<char>(character + ('a' - 'A'));
        else
            result += character;
    }
    return result;
}
