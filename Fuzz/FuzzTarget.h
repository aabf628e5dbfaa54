#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What the fuzzer calls with one input after another. Each program has one. It ends the program
/// when a property does not hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz
{

/// Ends the program, and with it the search, when a property does not hold.
inline void Require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", property);
    std::abort();
}

/// Takes an input apart into decisions and texts. What is asked for beyond its end is 0 or empty.
class CInput
{
public:
    CInput(const std::uint8_t* data, std::size_t size) : m_pRead(data), m_pEnd(data + size) {}

    bool IsEnd() const { return m_pRead == m_pEnd; }

    /// The next byte.
    std::uint8_t TakeByte() { return IsEnd() ? std::uint8_t{0} : *m_pRead++; }

    /// A text of at most as many bytes as the next byte says.
    std::string TakeText()
    {
        const std::size_t wanted = TakeByte();
        const std::size_t length = wanted < GetSizeLeft() ? wanted : GetSizeLeft();
        std::string text(m_pRead, m_pRead + length);
        m_pRead += length;
        return text;
    }

    /// All that is left, as text.
    std::string TakeRest()
    {
        std::string text(m_pRead, m_pEnd);
        m_pRead = m_pEnd;
        return text;
    }

private:
    std::size_t GetSizeLeft() const { return static_cast<std::size_t>(m_pEnd - m_pRead); }

    const std::uint8_t* m_pRead;
    const std::uint8_t* m_pEnd;
};

} // namespace fuzz
