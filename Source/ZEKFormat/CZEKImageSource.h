#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace zek
{

/// The bytes of a walk from an image in memory, which must outlive it. Addresses and texts stay
/// valid as long as the image does.
class CZEKImageSource
{
public:
    /// Borrows size bytes, the first of which counts as the one at pos. A negative size, of a
    /// reader that was moved past its end, is kept, so that nothing can be demanded.
    CZEKImageSource(const unsigned char* begin, std::int64_t size, std::int64_t pos = 0)
        : m_pNext(begin)
        , m_Left(size)
        , m_Pos(pos)
    {
    }

    std::int64_t GetPos() const { return m_Pos; }
    std::int64_t GetLeft() const { return m_Left; }
    const unsigned char* GetNext() const { return m_pNext; }

    /// All bytes are there.
    static constexpr bool Fetch(std::int64_t) { return true; }
    static constexpr bool IsUnreadable() { return false; }

    /// Steps over bytes that are there, and returns their address.
    const unsigned char* Take(std::int64_t size)
    {
        const unsigned char* bytes = m_pNext;
        Skip(size);
        return bytes;
    }

    void Skip(std::int64_t size)
    {
        m_pNext += size;
        m_Left -= size;
        m_Pos += size;
    }

    /// Takes the bytes up to a zero byte and steps over that. Without one the result is false, and
    /// the position at the end.
    bool TakeText(std::string_view& text)
    {
        if (m_Left <= 0)
            return false;
        const void* zero = std::memchr(m_pNext, 0, static_cast<std::size_t>(m_Left));
        if (zero == nullptr)
        {
            Skip(m_Left);
            return false;
        }
        const std::int64_t length = static_cast<const unsigned char*>(zero) - m_pNext;
        text = {reinterpret_cast<const char*>(m_pNext), static_cast<std::size_t>(length)};
        Skip(length + 1);
        return true;
    }

private:
    const unsigned char* m_pNext;
    std::int64_t m_Left;
    std::int64_t m_Pos;
};

} // namespace zek
