#include "ZekTool/Models/CPathReader.h"

#include <cerrno>
#include <cstring>

#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Descriptor.h"
#include "ZekTool/Output/Interrupt.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

CPathReader::CPathReader(const std::string& path)
    : m_Descriptor(path == "-" ? StandardInput : OpenToRead(path))
{
    if (m_Descriptor < 0)
        throw CUsageError(
            MakeShowable(path) + ": " + std::strerror(errno) +
            "; --files0-from takes a file of paths, each ended by a zero byte");
}

CPathReader::~CPathReader()
{
    if (m_Descriptor != StandardInput)
        CloseDescriptor(m_Descriptor);
}

bool CPathReader::Next(std::string& path)
{
    std::size_t searched = 0; // of what has not been taken
    for (;;)
    {
        const std::size_t end = m_Buffer.find('\0', m_Start + searched);
        if (end != std::string::npos)
        {
            path.assign(m_Buffer, m_Start, end - m_Start);
            m_Start = end + 1;
            return true;
        }
        searched = m_Buffer.size() - m_Start;
        if (!Fill())
            break;
    }
    if (m_Error != 0 || IsInterrupted() || m_Start == m_Buffer.size())
        return false;
    path.assign(m_Buffer, m_Start);
    m_Start = m_Buffer.size();
    return true;
}

/// Appends what comes next to what has not been taken. False at the end, after Ctrl-C and after an
/// error.
bool CPathReader::Fill()
{
    constexpr std::size_t readSize = 65536;
    constexpr std::chrono::milliseconds most(100);
    // Whoever writes into a pipe may take his time, and Ctrl-C has to be seen meanwhile.
    while (!WaitForBytes(m_Descriptor, most))
    {
        if (IsInterrupted())
            return false;
    }

    m_Buffer.erase(0, m_Start);
    m_Start = 0;
    const std::size_t left = m_Buffer.size();
    m_Buffer.resize(left + readSize);
    const std::ptrdiff_t count = ReadBytes(m_Descriptor, m_Buffer.data() + left, readSize);
    m_Error = count < 0 ? errno : 0;
    m_Buffer.resize(left + (count > 0 ? static_cast<std::size_t>(count) : 0));
    return count > 0;
}

} // namespace zektool
