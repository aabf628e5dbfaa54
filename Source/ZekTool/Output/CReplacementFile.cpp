#include "ZekTool/Output/CReplacementFile.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <thread>
#include <utility>

#include "Specific/FileSystem/SystemFiles.h"

namespace zektool
{

using filesystem::EPathKind;

namespace
{

/// Returns a number that nobody else is likely to take now. That it is random is not needed, and
/// there are C libraries that end the program where the system gives no random number.
std::uint64_t MakeNumber()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    const std::size_t thread = std::hash<std::thread::id>()(std::this_thread::get_id());
    return static_cast<std::uint64_t>(now) ^ thread;
}

} // namespace

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
    for (const char* stream : {"/dev/stdout", "/dev/stderr"})
    {
        if (filesystem::IsSameFile(m_Path, stream))
            return Fail("It is where the program's own output goes");
    }
    const EPathKind kind = filesystem::GetPathStatus(m_Path).kind;
    if (kind == EPathKind::Folder || kind == EPathKind::Other)
        return Fail("Not a regular file");

    // A number that is taken, by a run that was killed or another that goes on, is rare.
    constexpr int mostAttempts = 100;
    const std::uint64_t number = MakeNumber();
    for (std::uint64_t i = 0; i < mostAttempts; ++i)
    {
        const std::string name = ".zek-" + std::to_string(number + i);
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
