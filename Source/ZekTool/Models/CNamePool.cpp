#include "ZekTool/Models/CNamePool.h"

#include <algorithm>

namespace zektool
{

const char* CNamePool::Add(std::string_view name)
{
    if (name.empty())
        return "";
    const std::size_t size = name.size() + 1;
    if (size > m_Left)
    {
        // One string that grows would hold all names twice while it is copied. The first block is
        // small, since most models have few names.
        constexpr std::size_t firstBlock = 512;
        constexpr std::size_t nextBlock = std::size_t{16} * 1024;
        m_Left = std::max(size, m_Blocks.empty() ? firstBlock : nextBlock);
        // Without values, so that what no name reaches takes no memory.
        m_Blocks.push_back(std::unique_ptr<char[]>(new char[m_Left]));
        m_Next = m_Blocks.back().get();
    }
    char* kept = m_Next;
    *std::copy(name.begin(), name.end(), kept) = '\0';
    m_Next += size;
    m_Left -= size;
    return kept;
}

} // namespace zektool
