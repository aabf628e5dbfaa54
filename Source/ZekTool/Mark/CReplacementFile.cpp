#include "ZekTool/Mark/CReplacementFile.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

namespace zektool
{

namespace files = std::filesystem;

CReplacementFile::CReplacementFile(std::string path) : m_Path(std::move(path)) {}

CReplacementFile::~CReplacementFile()
{
    if (!m_TemporaryPath.empty())
        std::remove(m_TemporaryPath.c_str());
}

bool CReplacementFile::Create()
{
    std::error_code error;
    if (files::is_symlink(files::symlink_status(m_Path, error)))
    {
        m_Path = files::canonical(m_Path, error).string();
        if (error)
            return Fail(error.message());
    }
    const files::file_status status = files::status(m_Path, error);
    if (files::exists(status) && !files::is_regular_file(status))
        return Fail("Not a regular file");

    // A number that is taken, by a run that was killed or another that goes on, is rare.
    constexpr int mostAttempts = 100;
    std::random_device random;
    for (int i = 0; i < mostAttempts; ++i)
    {
        const std::string name = ".zek-" + std::to_string(random());
        const std::string path = files::path(m_Path).replace_filename(name).string();
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
    std::error_code error;
    files::rename(m_TemporaryPath, m_Path, error);
    if (error)
        return Fail(error.message());
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
