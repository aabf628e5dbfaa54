#include "ZekTool/Output/COutput.h"

#include <cerrno>

#include "ZekTool/Output/Descriptor.h"

namespace zektool
{

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
        const std::ptrdiff_t written = WriteBytes(m_Descriptor, rest.data(), rest.size());
        if (written >= 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
        else
            m_Error = errno;
    }
    m_Buffer.clear();
}

} // namespace zektool
