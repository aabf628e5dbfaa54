#include "ZEKFormat/SZEKRefusal.h"

#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"

namespace zek
{

namespace
{

template <typename Source>
std::optional<SZEKRefusal> WhyRefusedIn(Source& source)
{
    CZEKRefusalSink sink;
    CZEKWalk<Source, CZEKRefusalSink> walk(source, sink);
    if (WalkFile(walk))
        return std::nullopt;
    return sink.GetRefusal();
}

} // namespace

std::string SZEKRefusal::GetCauseText() const
{
    switch (kind)
    {
    case SZEKFault::TooShort:
        return std::to_string(demanded) + " bytes needed, " + std::to_string(left) + " left";
    case SZEKFault::Unterminated:
        return "text without an end in the " + std::to_string(left) + " bytes left";
    case SZEKFault::WrongValue:
        return value + " instead of " + expected;
    case SZEKFault::Unreadable:
        break;
    }
    return std::to_string(demanded) +
           " bytes could not be read: the file has become shorter, or its disk is faulty";
}

std::string SZEKRefusal::GetText() const
{
    return GetLocationText() + ": " + GetCauseText();
}

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

std::optional<SZEKRefusal> WhyRefused(const unsigned char* image, std::int64_t size)
{
    CZEKImageSource source(image, size);
    return WhyRefusedIn(source);
}

std::optional<SZEKRefusal> WhyRefused(filesystem::CRandomAccessFile& file)
{
    CZEKFileSource source(file);
    return WhyRefusedIn(source);
}

} // namespace zek
