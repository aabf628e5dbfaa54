#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace zektool
{

/// Standard output, another descriptor, or a function, with a buffer. What cannot be written is
/// dropped and remembered as a failure, also when the reader of a pipe is gone: see
/// `PrepareStandardStreams`.
class COutput
{
public:
    static constexpr std::size_t BufferSize = 65536;

    /// Writes all of a text. Returns the number of the system's error, or 0.
    using Writer = std::function<int(std::string_view text)>;

    explicit COutput(int descriptor);
    explicit COutput(Writer writer) : m_Writer(std::move(writer)) {}

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
    Writer m_Writer;
    int m_Error = 0;
    std::string m_Buffer;
};

/// Writes a text to standard error. Whether it could be written changes nothing: there is nobody
/// else to tell.
void PrintError(std::string_view text);

} // namespace zektool
