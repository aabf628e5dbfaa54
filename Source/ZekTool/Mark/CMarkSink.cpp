#include "ZekTool/Mark/CMarkSink.h"

namespace zektool
{

void CMarkSink::Add(zek::EZEKItemKind kind, std::string_view name, const zek::SZEKFlags& flags)
{
    if (flags.place.offset < 0)
        return;
    int& count = m_Counts[static_cast<std::size_t>(kind)];
    m_Result.items.push_back(
        {kind, count++, m_Result.names.Add(name), flags.place.offset, flags.values});
}

} // namespace zektool
