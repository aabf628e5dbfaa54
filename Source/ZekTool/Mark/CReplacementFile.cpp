#include "ZekTool/Mark/CReplacementFile.h"

#include <random>
#include <utility>

#include "Specific/FileSystem/SystemFiles.h"

namespace zektool
{

using filesystem::EPathKind;

CReplacementFile::CReplacementFile(std::string path) : m_Path(std::move(path)) {}

CReplacementFile::~CReplacementFile()
{
    if (!m_TemporaryPath.empty())
        filesystem::RemoveFile(m_TemporaryPath);
}

bool CReplacementFile::Create()
{
    if (filesystem::GetLinkKind(m_Path) == EPathKind::Link)
    {
        const std::string error = filesystem::ResolveLinks(m_Path);
        if (!error.empty())
            return Fail(error);
    }
    const EPathKind kind = filesystem::GetPathStatus(m_Path).kind;
    if (kind == EPathKind::Folder || kind == EPathKind::Other)
        return Fail("Not a regular file");

    // A number that is taken, by a run that was killed or another that goes on, is rare.
    constexpr int mostAttempts = 100;
    std::random_device random;
    for (int i = 0; i < mostAttempts; ++i)
    {
        const std::string name = ".zek-" + std::to_string(random());
        const std::string path = m_Path.substr(0, filesystem::GetNameStart(m_Path)) + name;
        if (m_File.Create(path))
        {
            m_TemporaryPath = path;
            return true;
        }
    }
    return Fail(m_File.GetError());
}

bool CReplacementFile::Replace()
{
    // Before the name, so that a power cut does not leave the name without the bytes.
    if (!m_File.Flush())
        return Fail(m_File.GetError());
    const std::string error = filesystem::RenameFile(m_TemporaryPath, m_Path);
    if (!error.empty())
        return Fail(error);
    m_TemporaryPath.clear();
    // Taking the name has changed the folder. Build tools compare the two times.
    return m_File.Touch() || Fail(m_File.GetError());
}

bool CReplacementFile::Fail(const std::string& error)
{
    m_Error = error;
    return false;
}

} // namespace zektool
