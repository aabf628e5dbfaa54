#include "Support/CModelMap.h"

#include <algorithm>
#include <cstring>

#include "Support/ModelDescription.h"

namespace testsupport
{

namespace
{

/// Thrown, and caught in the constructor, where the file has to be refused.
struct SRefused
{
};

} // namespace

CModelMap::CModelMap(const std::vector<unsigned char>& image) : CModelFields(0), m_Image(image)
{
    try
    {
        DescribeFile(*this, m_Model);
        m_IsAccepted = true;
    }
    catch (const SRefused&)
    {
    }
}

std::vector<std::string> CModelMap::GetProbeNames() const
{
    std::vector<std::string> names;
    for (const SProbe& probe : m_Model.probes)
        names.push_back(m_Version < 26 ? std::to_string(names.size()) : probe.name);
    return names;
}

void CModelMap::Demand(const std::string& name, long long size)
{
    if (size <= GetLeft())
        return;
    m_Fault.demanded = size;
    Refuse(SFault::TooShort, name, m_Pos, m_Pos);
}

void CModelMap::Expect(bool holds, const std::string& name, int value, const std::string& expected)
{
    Expect(holds, name, std::to_string(value), expected);
}

void CModelMap::Expect(
    bool holds, const std::string& name, const std::string& value, const std::string& expected)
{
    if (holds)
        return;
    m_Fault.value = value;
    m_Fault.expected = expected;
    Refuse(SFault::WrongValue, name, GetFields().back().offset, m_Pos);
}

bool CModelMap::IsThere(bool& isThere)
{
    isThere = GetLeft() >= 4;
    return isThere;
}

void CModelMap::Int(const std::string& name, int& value)
{
    Demand(name, 4);
    value = static_cast<int>(GetNumber(m_Pos, 4));
    AddField(name, EFieldKind::Int, 1);
}

void CModelMap::Switch(const std::string& name, int& value)
{
    Int(name, value);
    Expect(value == 0 || value == 1, name, value, "0 or 1");
}

void CModelMap::Word(const std::string& name, int& value)
{
    Demand(name, 2);
    value = static_cast<int>(GetNumber(m_Pos, 2));
    AddField(name, EFieldKind::Word, 1);
}

void CModelMap::Text(const std::string& name, std::string& text)
{
    const auto begin = m_Image.begin() + static_cast<std::ptrdiff_t>(m_Pos);
    const auto end = std::find(begin, m_Image.end(), 0);
    if (end == m_Image.end())
        Refuse(SFault::Unterminated, name, m_Pos, m_Image.size());
    text.assign(begin, end);
    AddField(name, EFieldKind::Text, text.size() + 1);
}

void CModelMap::Floats(const std::string& name, float* values, int count)
{
    Demand(name, 4LL * count);
    for (int i = 0; i < count; ++i)
    {
        const unsigned int bits = GetNumber(m_Pos + 4 * static_cast<std::size_t>(i), 4);
        std::memcpy(&values[i], &bits, sizeof(bits));
    }
    AddField(name, EFieldKind::Float, static_cast<std::size_t>(count));
}

void CModelMap::Bytes(const std::string& name, unsigned char* values, int count)
{
    Demand(name, count);
    std::copy_n(m_Image.begin() + static_cast<std::ptrdiff_t>(m_Pos), count, values);
    AddField(name, EFieldKind::Byte, static_cast<std::size_t>(count));
}

void CModelMap::Skip(const std::string& name, EFieldKind kind, int count)
{
    const auto size = static_cast<long long>(GetSize(kind)) * count;
    Demand(name, size);
    AddField(name, kind, static_cast<std::size_t>(count));
}

unsigned int CModelMap::GetNumber(std::size_t offset, std::size_t size) const
{
    unsigned int value = 0;
    for (std::size_t i = size; i > 0; --i)
        value = value * 256 + m_Image[offset + i - 1];
    return value;
}

std::string CModelMap::GetRecordName() const
{
    if (m_Scopes.empty())
        return "";
    const SScope& record = m_Scopes.front();
    const std::string path = record.name + "[" + std::to_string(record.index) + "].name";
    for (const SField& field : GetFields())
    {
        if (field.path == path)
            return reinterpret_cast<const char*>(&m_Image[field.offset]);
    }
    return "";
}

void CModelMap::Refuse(
    SFault::EKind kind, const std::string& name, std::size_t offset, std::size_t stop)
{
    m_Fault.kind = kind;
    m_Fault.section = GetSections().back().name;
    m_Fault.index = m_Scopes.empty() ? -1 : m_Scopes.front().index;
    m_Fault.name = GetRecordName();
    for (std::size_t i = 1; i < m_Scopes.size(); ++i)
    {
        const SScope& scope = m_Scopes[i];
        m_Fault.field +=
            scope.name + (scope.index < 0 ? "" : "[" + std::to_string(scope.index) + "]") + ".";
    }
    m_Fault.field += name;
    m_Fault.offset = offset;
    m_Fault.left = m_Image.size() - offset;
    m_Fault.stop = stop;
    throw SRefused();
}

} // namespace testsupport
