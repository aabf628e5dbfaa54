#include "ZEKFormat/SZEKRefusal.h"

#include <cstdio>

#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"

namespace zek
{

namespace
{

constexpr std::size_t LongestShownText = 80;

/// Returns a text of a file as it can be shown in a line.
std::string MakeShowable(std::string_view text)
{
    std::string result;
    for (char c : text.substr(0, LongestShownText))
    {
        const auto byte = static_cast<unsigned char>(c);
        char escaped[5];
        std::snprintf(escaped, sizeof(escaped), "\\x%02x", static_cast<unsigned>(byte));
        result += byte < ' ' || byte == 0x7F ? escaped : std::string(1, c);
    }
    return text.size() > LongestShownText ? result + "..." : result;
}

std::string MakeHex(std::int64_t offset)
{
    char text[24];
    std::snprintf(text, sizeof(text), "0x%llx", static_cast<unsigned long long>(offset));
    return text;
}

/// Returns the name of one record of a section: "material" for "materials".
std::string MakeSingular(const std::string& section)
{
    const bool isMeshes = section == "meshes";
    return section.substr(0, section.size() - (isMeshes ? 2 : 1));
}

std::string GetCause(const SZEKRefusal& refusal)
{
    switch (refusal.kind)
    {
    case SZEKFault::TooShort:
        return std::to_string(refusal.demanded) + " bytes needed, " + std::to_string(refusal.left) +
               " left";
    case SZEKFault::Unterminated:
        return "text without an end in the " + std::to_string(refusal.left) + " bytes left";
    case SZEKFault::WrongValue:
        return refusal.value + " instead of " + refusal.expected;
    case SZEKFault::Unreadable:
        break;
    }
    return std::to_string(refusal.demanded) +
           " bytes could not be read: the file has become shorter, or its disk is faulty";
}

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

std::string SZEKRefusal::GetText() const
{
    std::string text = section;
    if (index >= 0)
        text = MakeSingular(section) + " " + std::to_string(index);
    if (!name.empty())
        text += " \"" + MakeShowable(name) + "\"";
    return text + ": " + field + " at " + MakeHex(offset) + ": " + GetCause(*this);
}

void CZEKRefusalSink::Refuse(const SZEKFault& fault)
{
    m_Refusal.kind = fault.kind;
    m_Refusal.section = m_Section;
    m_Refusal.index = m_Scopes.empty() ? -1 : m_Scopes.front().index;
    m_Refusal.name = m_Name;
    for (std::size_t i = 1; i < m_Scopes.size(); ++i)
    {
        m_Refusal.field += m_Scopes[i].name;
        if (m_Scopes[i].index >= 0)
            m_Refusal.field += "[" + std::to_string(m_Scopes[i].index) + "]";
        m_Refusal.field += ".";
    }
    m_Refusal.field += fault.field;
    m_Refusal.offset = fault.offset;
    m_Refusal.demanded = fault.demanded;
    m_Refusal.left = fault.left;
    m_Refusal.value =
        fault.text.empty() ? std::to_string(fault.value) : "\"" + MakeShowable(fault.text) + "\"";
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
