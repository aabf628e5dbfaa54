#include "ZekTool/Mark/CDepfile.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Output/CReplacementFile.h"

namespace zektool
{

namespace
{

/// Tells whether Ninja takes a character for part of a name, by itself or after a backslash. All of
/// UTF-8 is.
bool IsNameable(char c)
{
    constexpr const char* unnameable = "\"&'*;<>?^`|\x7F";
    const bool isControl = static_cast<unsigned char>(c) < ' ';
    return !isControl && std::string(unnameable).find(c) == std::string::npos;
}

/// Appends a name as Ninja reads it. False when it has no such form. Every separator is a slash,
/// which is none that needs an escape.
bool AppendName(std::string name, std::string& text)
{
    std::replace(name.begin(), name.end(), filesystem::SystemSeparator, '/');
    std::size_t backslashes = 0; // just before the character
    for (char c : name)
    {
        if (!IsNameable(c) || (c == '$' && backslashes > 0))
            return false;
        if (c == ' ')
            text.append(backslashes + 1, '\\');
        else if (c == '#' || c == ':')
            text += '\\';
        else if (c == '$')
            text += '$';
        text += c;
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return name.empty() || (name.back() != '\\' && name.back() != ':');
}

/// Leaves of a path what stands up to and with its last separator.
void CutToFolder(std::string& path)
{
    while (!path.empty() && !filesystem::IsSystemSeparator(path.back()))
        path.pop_back();
}

/// Writes a file as a whole. Returns why it cannot be written, or nothing.
std::string WriteFile(const std::string& path, const std::string& text)
{
    CReplacementFile file(path);
    if (!file.Create())
        return file.GetError();
    if (!file.GetFile().Write(0, text.data(), static_cast<std::int64_t>(text.size())))
        return file.GetFile().GetError();
    return file.Replace() ? "" : file.GetError();
}

} // namespace

CDepfile::CDepfile(const std::string& modelFolder) : m_FolderLength(modelFolder.size())
{
    m_Folders.insert(modelFolder.empty() ? "./" : modelFolder);
}

void CDepfile::AddVariant(const std::string& path)
{
    // The separator stays, as an end of the name that needs no escape.
    std::string folder = path;
    CutToFolder(folder);
    if (folder.size() <= m_FolderLength || !m_Asked.insert(folder).second)
        return;
    while (folder.size() > m_FolderLength && !filesystem::IsFolder(folder))
    {
        folder.pop_back();
        CutToFolder(folder);
    }
    if (folder.size() > m_FolderLength)
        m_Folders.insert(std::move(folder));
}

bool CDepfile::Write(const std::string& path, const std::string& target, std::string& reason) const
{
    std::string text;
    bool isNameable = AppendName(target, text);
    text += ':';
    for (const std::string& folder : m_Folders)
    {
        text += " \\\n ";
        isNameable = isNameable && AppendName(folder, text);
    }
    text += '\n';
    if (!isNameable)
    {
        reason = "the depfile cannot name \"" + target + "\" or a folder of its variants";
        return false;
    }

    const std::string error = WriteFile(path, text);
    if (!error.empty())
        reason = "the depfile \"" + path + "\" cannot be written: " + error;
    return error.empty();
}

} // namespace zektool
