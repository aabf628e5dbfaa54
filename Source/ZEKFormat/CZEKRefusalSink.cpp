#include "ZEKFormat/CZEKRefusalSink.h"

namespace zek
{

SZEKLocation CZEKRefusalSink::Locate(std::string_view field, std::int64_t offset) const
{
    SZEKLocation location;
    location.section = m_Section;
    if (!m_Scopes.empty())
    {
        location.index = m_Scopes.front().index;
        location.name = m_Name;
    }
    for (std::size_t i = 1; i < m_Scopes.size(); ++i)
    {
        location.field += m_Scopes[i].name;
        if (m_Scopes[i].index >= 0)
            location.field += "[" + std::to_string(m_Scopes[i].index) + "]";
        location.field += ".";
    }
    location.field += field;
    location.offset = offset;
    return location;
}

void CZEKRefusalSink::Refuse(const SZEKFault& fault)
{
    static_cast<SZEKLocation&>(m_Refusal) = Locate(fault.field, fault.offset);
    m_Refusal.kind = fault.kind;
    m_Refusal.demanded = fault.demanded;
    m_Refusal.left = fault.left;
    const bool isText = fault.text.data() != nullptr;
    m_Refusal.value = isText ? "\"" + MakeExcerpt(fault.text) + "\"" : std::to_string(fault.value);
    m_Refusal.expected = fault.expected;
}

} // namespace zek
