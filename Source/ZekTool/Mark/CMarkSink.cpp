#include "ZekTool/Mark/CMarkSink.h"

#include <algorithm>
#include <string>

namespace zektool
{

void CMarkSink::Add(zek::EZEKItemKind kind, std::string_view name, const zek::SZEKPlace& flags)
{
    if (flags.offset < 0)
        return;
    SMarkItem item = {
        kind, m_Counts[static_cast<std::size_t>(kind)]++, std::string(name), flags.offset, {}};
    std::copy_n(flags.address, item.from.size(), item.from.begin());
    m_Items.push_back(std::move(item));
}

} // namespace zektool
