#pragma once

#include <cstddef>
#include <string>

namespace zektool
{

/// Reads paths that are ended by zero bytes, one after the other; the last may lack its zero byte.
class CPathReader
{
public:
    /// Reads from a file, or from standard input when its path is "-". Throws `CUsageError` when it
    /// cannot be opened.
    explicit CPathReader(const std::string& path);
    ~CPathReader();
    CPathReader(const CPathReader&) = delete;
    CPathReader& operator=(const CPathReader&) = delete;

    /// Takes the next path. False at the end, when reading fails, and after Ctrl-C, unless there is
    /// one that need not be waited for.
    bool Next(std::string& path);

    /// The number of the error that reading failed with, or 0.
    int GetError() const { return m_Error; }

private:
    bool Fill();

    int m_Descriptor;
    int m_Error = 0;
    std::string m_Buffer;
    std::size_t m_Start = 0; // of what has not been taken, in the buffer
};

} // namespace zektool
