#include "Specific/FileSystem/CRandomAccessFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace filesystem
{

CRandomAccessFile::~CRandomAccessFile()
{
    Close();
}

bool CRandomAccessFile::Open(const std::string& path)
{
    Close();
    // Not blocking: a FIFO would wait for a writer.
    m_File = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status;
    if (m_File < 0 || fstat(m_File, &status) != 0 || !S_ISREG(status.st_mode))
    {
        Close();
        return false;
    }
    m_Size = status.st_size;
    return true;
}

void CRandomAccessFile::Close()
{
    if (m_File >= 0)
        close(m_File);
    m_File = -1;
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

} // namespace filesystem
