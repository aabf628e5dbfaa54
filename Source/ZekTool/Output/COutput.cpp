#include "ZekTool/Output/COutput.h"

#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace zektool
{

namespace
{

/// Waits until a descriptor that does not block takes more.
void WaitForRoom(int descriptor)
{
    constexpr int withoutEnd = -1;
    pollfd request = {descriptor, POLLOUT, 0};
    poll(&request, 1, withoutEnd);
}

} // namespace

void COutput::Write(std::string_view text)
{
    if (m_Error != 0)
        return;
    m_Buffer += text;
    if (m_Buffer.size() >= BufferSize)
        Flush();
}

void COutput::Flush()
{
    std::string_view rest = m_Buffer;
    while (!rest.empty() && m_Error == 0)
    {
        const ssize_t written = write(m_Descriptor, rest.data(), rest.size());
        if (written >= 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
        else if (errno == EAGAIN)
            WaitForRoom(m_Descriptor);
        else if (errno != EINTR)
            m_Error = errno;
    }
    m_Buffer.clear();
}

} // namespace zektool
