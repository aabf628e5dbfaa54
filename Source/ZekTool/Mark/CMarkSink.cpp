#include "ZekTool/Mark/CMarkSink.h"

#include <algorithm>

namespace zektool
{

void CMarkSink::Add(zek::EZEKItemKind kind, std::string_view name, const zek::SZEKPlace& flags)
{
    if (flags.offset < 0)
        return;
    int& count = m_Counts[static_cast<std::size_t>(kind)];
    SMarkItem item = {kind, count++, m_Result.names.Add(name), flags.offset, {}};
    std::copy_n(flags.address, item.from.size(), item.from.begin());
    m_Result.items.push_back(item);
}

} // namespace zektool
