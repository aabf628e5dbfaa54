#pragma once

#include <cstddef>

namespace filesystem
{

/// The bytes of a file in memory that is not cleared before it is filled.
///
/// A large buffer lies on huge pages where the system has them: mapping it page by page would cost
/// as much as reading the file.
class CFileBuffer
{
public:
    /// Starts without bytes.
    CFileBuffer() = default;
    ~CFileBuffer();

    CFileBuffer(const CFileBuffer&) = delete;
    CFileBuffer& operator=(const CFileBuffer&) = delete;

    /// Replaces what was there by size bytes of any value. Throws `std::bad_alloc`, and then holds
    /// none.
    void Allocate(std::size_t size);

    unsigned char* GetData() { return m_pData; }
    const unsigned char* GetData() const { return m_pData; }
    std::size_t GetSize() const { return m_Size; }

private:
    void Free();

    unsigned char* m_pData = nullptr;
    std::size_t m_Size = 0;
};

} // namespace filesystem
