#include "Specific/FileSystem/CFileBuffer.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace filesystem
{

namespace
{

constexpr std::size_t HugePageSize = std::size_t{2} * 1024 * 1024;
constexpr std::size_t SmallPageSize = 4096;

/// Buffers from two huge pages on start on one.
std::align_val_t GetAlignment(std::size_t size)
{
    return std::align_val_t(size < 2 * HugePageSize ? SmallPageSize : HugePageSize);
}

} // namespace

CFileBuffer::~CFileBuffer()
{
    Free();
}

void CFileBuffer::Allocate(std::size_t size)
{
    Free();
    m_pData = static_cast<unsigned char*>(::operator new(size, GetAlignment(size)));
    m_Size = size;
#ifdef __linux__
    // No more than a hint: without huge pages it is only slower.
    if (size >= 2 * HugePageSize)
        madvise(m_pData, size, MADV_HUGEPAGE);
#endif
}

void CFileBuffer::Free()
{
    ::operator delete(m_pData, GetAlignment(m_Size));
    m_pData = nullptr;
    m_Size = 0;
}

} // namespace filesystem
