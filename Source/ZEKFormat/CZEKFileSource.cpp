#include "ZEKFormat/CZEKFileSource.h"

#include <algorithm>
#include <cstring>

namespace zek
{

namespace
{

// A read costs as much as some kilobytes: after an array that was stepped over, a little is read,
// and more and more where every byte is walked.
constexpr std::int64_t MostGrowth = 64;

} // namespace

CZEKFileSource::CZEKFileSource(filesystem::CRandomAccessFile& file, std::int64_t smallestReadSize)
    : m_File(file)
    , m_SmallestReadSize(smallestReadSize)
    , m_ReadSize(smallestReadSize)
{
}

bool CZEKFileSource::Refill(std::int64_t size)
{
    const bool isGoingOn = m_WindowEnd > 0 && m_Pos <= m_WindowEnd; // a walk never goes back
    m_ReadSize =
        isGoingOn ? std::min(2 * m_ReadSize, MostGrowth * m_SmallestReadSize) : m_SmallestReadSize;
    const std::int64_t wanted = std::min(std::max(m_ReadSize, size), GetLeft());
    if (static_cast<std::int64_t>(m_Window.size()) < wanted)
        m_Window.resize(static_cast<std::size_t>(wanted));
    m_WindowPos = m_Pos;
    m_WindowEnd = m_Pos + m_File.Read(m_Pos, m_Window.data(), wanted);
    m_IsUnreadable = m_WindowEnd - m_WindowPos < size;
    return !m_IsUnreadable;
}

bool CZEKFileSource::TakeText(std::string_view& text)
{
    // The end is looked for first, so that a text without one takes no memory.
    const std::int64_t start = m_Pos;
    const void* zero = nullptr;
    while (zero == nullptr)
    {
        if (GetLeft() <= 0 || !Fetch(1))
            return false;
        const std::int64_t size = m_WindowEnd - m_Pos;
        zero = std::memchr(GetNext(), 0, static_cast<std::size_t>(size));
        m_Pos = zero == nullptr
                    ? m_WindowEnd
                    : m_WindowPos + (static_cast<const unsigned char*>(zero) - m_Window.data());
    }

    const std::int64_t length = m_Pos - start;
    m_Text.resize(static_cast<std::size_t>(length));
    if (start >= m_WindowPos)
        std::memcpy(m_Text.data(), m_Window.data() + (start - m_WindowPos), m_Text.size());
    else if (m_File.Read(start, m_Text.data(), length) != length)
    {
        m_IsUnreadable = true;
        return false;
    }
    text = m_Text;
    ++m_Pos;
    return true;
}

} // namespace zek
