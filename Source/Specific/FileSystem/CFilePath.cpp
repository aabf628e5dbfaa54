#include "Specific/FileSystem/CFilePath.h"

#include "Specific/FileSystem/PathScan.h"

namespace filesystem
{

std::string CFilePath::m_RootFolderPath;

void CFilePath::SetRootFolderPath(const std::string& path)
{
    m_RootFolderPath = path;
}

void CFilePath::SetBaseFolderPath()
{
    m_Path = m_RootFolderPath;
    DeleteSeparator();
}

void CFilePath::SetExeFilePath()
{
    DeleteSeparator();
}

void CFilePath::SetTemporaryFolderPath()
{
    DeleteSeparator();
}

void CFilePath::SetPersonalFolderPath() {}

void CFilePath::SetAppDataFolderPath() {}

void CFilePath::AddSeparator()
{
    if (!m_Path.empty() && !IsEndingInSeparator())
        m_Path += '\\';
}

void CFilePath::DeleteSeparator()
{
    if (!IsDriveRoot(m_Path) && IsEndingInSeparator())
        m_Path.pop_back();
}

void CFilePath::AddFolderName(const std::string& name)
{
    AddSeparator();
    m_Path += name;
}

void CFilePath::AddFileName(const std::string& name)
{
    AddFolderName(name);
}

std::string::size_type CFilePath::GetLastSeparatorIndex() const
{
    return FindLastCharacter(m_Path, "\\");
}

std::string CFilePath::GetParentPath() const
{
    const std::string::size_type index = GetLastSeparatorIndex();
    return index == std::string::npos ? "" : m_Path.substr(0, index);
}

std::string CFilePath::GetChildFileName() const
{
    const std::string::size_type index = GetLastSeparatorIndex();
    return index == std::string::npos ? m_Path : m_Path.substr(index + 1);
}

bool CFilePath::IsEndingInSeparator() const
{
    const std::string::size_type index = GetLastSeparatorIndex();
    return index != std::string::npos && index + 1 == m_Path.length();
}

} // namespace filesystem
