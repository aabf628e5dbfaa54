#include "Specific/FileSystem/WindowsPath.h"

#include <algorithm>

#include <windows.h>

#include "Independent/CharacterCode/Unicode.h"

namespace filesystem
{

namespace
{

// A folder has to leave room for a name of the form 8.3, so that it may have no more than 247
// characters, where a file may have 259.
constexpr std::size_t LongestPlainPath = 247;

bool IsStartingWith(const std::wstring& text, const wchar_t* start)
{
    return text.rfind(start, 0) == 0;
}

/// Returns the path from the drive on, without dots and doubled separators.
std::wstring MakeFullPath(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD size = static_cast<DWORD>(full.size());
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full;
}

} // namespace

std::wstring MakeWideText(const std::string& text)
{
    std::u16string units;
    charactercode::UTF8ToUTF16(units, text);
    return std::wstring(units.begin(), units.end());
}

std::string MakeNarrowText(const std::wstring& text)
{
    return charactercode::UTF16ToUTF8(std::u16string(text.begin(), text.end()));
}

std::wstring MakeWindowsPath(const std::string& path)
{
    std::wstring wide = MakeWideText(path);
    // A path that starts so is taken as it is, where a slash is no separator.
    std::replace(wide.begin(), wide.end(), L'/', L'\\');
    if (IsStartingWith(wide, L"\\\\?\\"))
        return wide;
    // A relative path is as long as what it leads to from the current folder.
    const std::wstring full = MakeFullPath(wide);
    if (std::max(wide.size(), full.size()) <= LongestPlainPath)
        return wide;
    if (IsStartingWith(full, L"\\\\?\\"))
        return full;
    return IsStartingWith(full, L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::string MakeWindowsErrorText(unsigned long error)
{
    wchar_t* words = nullptr;
    const DWORD size = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<wchar_t*>(&words), 0, nullptr);
    std::string text = MakeNarrowText(std::wstring(words, size));
    LocalFree(words);
    text.erase(text.find_last_not_of(". \r\n") + 1);
    return text.empty() ? "error " + std::to_string(error) + " of Windows" : text;
}

std::string MakeLastErrorText()
{
    return MakeWindowsErrorText(GetLastError());
}

} // namespace filesystem
