#include "ZekTool/Output/COutput.h"

#include <cerrno>

#include "ZekTool/Output/Descriptor.h"

namespace zektool
{

namespace
{

/// Writes all of a text to a descriptor. Returns the number of the error, or 0.
int WriteTo(int descriptor, std::string_view rest)
{
    while (!rest.empty())
    {
        const std::ptrdiff_t written = WriteBytes(descriptor, rest.data(), rest.size());
        if (written < 0)
            return errno;
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

} // namespace

COutput::COutput(int descriptor)
    : COutput([descriptor](std::string_view text) { return WriteTo(descriptor, text); })
{
}

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
    if (!m_Buffer.empty() && m_Error == 0)
        m_Error = m_Writer(m_Buffer);
    m_Buffer.clear();
}

void PrintError(std::string_view text)
{
    // Without a buffer, for which there may be no memory.
    WriteTo(StandardError, text);
}

} // namespace zektool
