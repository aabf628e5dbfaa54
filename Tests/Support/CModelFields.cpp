#include "Support/CModelFields.h"

#include <cstdio>
#include <cstdlib>

namespace testsupport
{

namespace
{

std::string RemoveIndices(const std::string& path)
{
    std::string result;
    bool isIndex = false;
    for (char c : path)
    {
        if (c == '[')
            isIndex = true;
        if (!isIndex)
            result += c;
        if (c == ']')
            isIndex = false;
    }
    return result;
}

bool IsNamed(const SField& field, const std::string& name)
{
    const std::string path = '.' + RemoveIndices(field.path);
    const std::string end = '.' + name;
    return path.size() >= end.size() &&
           path.compare(path.size() - end.size(), std::string::npos, end) == 0;
}

} // namespace

std::size_t GetSize(EFieldKind kind)
{
    switch (kind)
    {
    case EFieldKind::Short:
    case EFieldKind::Word:
        return 2;
    case EFieldKind::Int:
    case EFieldKind::Float:
        return 4;
    case EFieldKind::Byte:
    case EFieldKind::Text:
        break;
    }
    return 1;
}

std::size_t CModelFields::GetOffset(const std::string& name, int n) const
{
    for (const SField& field : m_Fields)
    {
        if (IsNamed(field, name) && n-- == 0)
            return field.offset;
    }
    std::fprintf(stderr, "the model has no such field: %s\n", name.c_str());
    std::abort();
}

std::vector<std::size_t> CModelFields::GetOffsets(const std::string& name) const
{
    std::vector<std::size_t> offsets;
    for (const SField& field : m_Fields)
    {
        if (IsNamed(field, name))
            offsets.push_back(field.offset);
    }
    return offsets;
}

void CModelFields::Section(const std::string& name)
{
    m_Sections.push_back({name, m_Fields.size()});
}

void CModelFields::Enter(const std::string& name, int index)
{
    m_Scopes.push_back({name, index, m_Path.size()});
    m_Path = MakePath(name);
    if (index >= 0)
        m_Path += '[' + std::to_string(index) + ']';
}

void CModelFields::Leave()
{
    m_Path.resize(m_Scopes.back().pathLength);
    m_Scopes.pop_back();
}

std::string CModelFields::MakePath(const std::string& name) const
{
    return m_Path + (m_Path.empty() || name.empty() ? "" : ".") + name;
}

void CModelFields::AddField(const std::string& name, EFieldKind kind, std::size_t count)
{
    const std::size_t size = count * GetSize(kind);
    const bool isText = kind == EFieldKind::Text;
    m_Fields.push_back({MakePath(name), kind, isText ? 1 : count, m_Pos, size, m_Array});
    m_Pos += size;
}

} // namespace testsupport
