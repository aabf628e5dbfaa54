#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zektool
{

/// Standard output, or another descriptor, with a buffer. What cannot be written is dropped and
/// remembered as a failure, also when the reader of a pipe is gone: see `PrepareStandardStreams`.
class COutput
{
public:
    static constexpr std::size_t BufferSize = 65536;

    explicit COutput(int descriptor) : m_Descriptor(descriptor) {}

    /// Appends to the buffer, which is flushed when it is full.
    void Write(std::string_view text);

    /// Writes out what is in the buffer.
    void Flush();

    /// Tells whether writing so many bytes flushes the buffer.
    bool IsFullWith(std::size_t size) const { return m_Buffer.size() + size >= BufferSize; }

    bool IsEmpty() const { return m_Buffer.empty(); }

    /// The number of the system's first error, or 0.
    int GetError() const { return m_Error; }

private:
    int m_Descriptor;
    int m_Error = 0;
    std::string m_Buffer;
};

} // namespace zektool
