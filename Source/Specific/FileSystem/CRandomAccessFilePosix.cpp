#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace filesystem
{

namespace
{

// Not blocking: a FIFO would wait for a writer.
constexpr int CommonFlags = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// Tells whether an error of opening says nothing about the file.
bool IsAnswerMissing(int error)
{
    constexpr std::array errors = {EMFILE, ENFILE, ENOMEM, EIO, ETIMEDOUT, ESTALE};
    return std::find(errors.begin(), errors.end(), error) != errors.end();
}

SFileState MakeState(const struct stat& status)
{
#ifdef __APPLE__
    const timespec& changed = status.st_ctimespec;
#else
    const timespec& changed = status.st_ctim;
#endif
    return {
        static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino),
        status.st_size, changed.tv_sec, changed.tv_nsec};
}

} // namespace

CRandomAccessFile::~CRandomAccessFile()
{
    Close();
}

bool CRandomAccessFile::CanOpen(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | CommonFlags);
    if (file >= 0)
        close(file);
    else if (IsAnswerMissing(errno))
        throw std::system_error(errno, std::generic_category());
    // What somebody else has a lease on, for whom the system would wait, can be opened.
    return file >= 0 || errno == EWOULDBLOCK;
}

bool CRandomAccessFile::Open(const std::string& path)
{
    return OpenWith(path, O_RDONLY);
}

bool CRandomAccessFile::OpenToWrite(const std::string& path)
{
    return OpenWith(path, O_RDWR);
}

bool CRandomAccessFile::Create(const std::string& path)
{
    constexpr mode_t permissions = 0666; // less those that the user's mask takes away
    Close();
    m_State = {};
    m_File = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | CommonFlags, permissions);
    return m_File >= 0 || Fail(errno);
}

bool CRandomAccessFile::OpenWith(const std::string& path, int flags)
{
    Close();
    m_File = open(path.c_str(), flags | CommonFlags);
    m_IsBusy = m_File < 0 && errno == EWOULDBLOCK;
    struct stat status;
    if (m_File < 0)
        return Fail(errno);
    if (flags == O_RDWR)
        KeepOthersOut();
    if (fstat(m_File, &status) != 0)
        return Fail(errno);
    if (!S_ISREG(status.st_mode))
        return Fail(NotRegular);
    m_State = MakeState(status);
    return true;
}

/// Takes a lease, which ends when the file is closed.
void CRandomAccessFile::KeepOthersOut()
{
#if defined(F_SETLEASE) && defined(F_SETSIG)
    // Somebody who waits is told of by a signal; this is one that is ignored.
    if (fcntl(m_File, F_SETSIG, SIGURG) == 0 && fcntl(m_File, F_SETLEASE, F_WRLCK) != 0)
        m_IsBusy = errno == EAGAIN;
#endif
}

bool CRandomAccessFile::Fail(int error)
{
    Close();
    m_Error = error;
    return false;
}

void CRandomAccessFile::Close()
{
    if (m_File >= 0)
        close(m_File);
    m_File = -1;
}

bool CRandomAccessFile::IsUnchanged() const
{
    struct stat status;
    return fstat(m_File, &status) == 0 && MakeState(status) == m_State;
}

std::int64_t CRandomAccessFile::Read(std::int64_t pos, void* dest, std::int64_t size)
{
    std::int64_t total = 0;
    while (total < size)
    {
        const ssize_t count = pread(
            m_File, static_cast<char*>(dest) + total, static_cast<std::size_t>(size - total),
            static_cast<off_t>(pos + total));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        total += count;
    }
    return total;
}

bool CRandomAccessFile::Write(std::int64_t pos, const void* source, std::int64_t size)
{
    std::int64_t total = 0;
    while (total < size)
    {
        const ssize_t count = pwrite(
            m_File, static_cast<const char*>(source) + total,
            static_cast<std::size_t>(size - total), static_cast<off_t>(pos + total));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
        {
            m_Error = count < 0 ? errno : EIO;
            return false;
        }
        total += count;
    }
    return true;
}

bool CRandomAccessFile::Touch()
{
    if (futimens(m_File, nullptr) == 0)
        return true;
    m_Error = errno;
    return false;
}

bool CRandomAccessFile::Flush()
{
    if (fsync(m_File) == 0)
        return true;
    m_Error = errno;
    return false;
}

std::string CRandomAccessFile::GetError() const
{
    return m_Error == NotRegular ? "Not a regular file" : std::generic_category().message(m_Error);
}

} // namespace filesystem
