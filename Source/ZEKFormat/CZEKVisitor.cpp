#include "ZEKFormat/CZEKVisitor.h"

#include <cstddef>
#include <string>
#include <vector>

#include "Independent/FileImage/FileImage.h"
#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKImageSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"

namespace zek
{

namespace
{

/// Gives every field its path and passes it on.
class CVisitorSink : public CZEKRefusalSink
{
public:
    explicit CVisitorSink(CZEKVisitor& visitor) : m_Visitor(visitor) {}

    void BeginSection(const char* name)
    {
        CZEKRefusalSink::BeginSection(name);
        m_Visitor.OnSection(name);
    }

    void BeginRecord(const char* kind, int index)
    {
        CZEKRefusalSink::BeginRecord(kind, index);
        Enter(kind, index);
    }

    void EndRecord()
    {
        CZEKRefusalSink::EndRecord();
        Leave();
    }

    void BeginPart(const char* name)
    {
        CZEKRefusalSink::BeginPart(name);
        Enter(name);
    }

    void EndPart()
    {
        CZEKRefusalSink::EndPart();
        Leave();
    }

    void Field(
        const char* name,
        EZEKFieldType type,
        int count,
        std::int64_t offset,
        const unsigned char* bytes)
    {
        Enter(name);
        const std::int64_t size = std::int64_t{count} * GetSize(type);
        m_Visitor.OnField({m_Path, offset, size, type, count, bytes});
        Leave();
    }

    void Text(const char* name, std::int64_t offset, std::string_view value)
    {
        CZEKRefusalSink::Text(name, offset, value);
        Enter(name);
        m_Visitor.OnField(
            {m_Path, offset, static_cast<std::int64_t>(value.size()) + 1, EZEKFieldType::Text, 1,
             reinterpret_cast<const unsigned char*>(value.data())});
        Leave();
    }

    bool WantsElements(const char* name)
    {
        Enter(name);
        const bool isWanted = m_Visitor.IsElementsWanted(m_Path);
        Leave();
        return isWanted;
    }

    void Array(const char* name, std::int64_t offset, int elementSize, std::int64_t count)
    {
        Enter(name);
        m_Visitor.OnArray({m_Path, offset, elementSize, count});
        Leave();
    }

    void BeginElement(const char* name, std::int64_t index) { Enter(name, index); }
    void EndElement() { Leave(); }

private:
    /// Appends a name to the path; the only field of an element has none.
    void Enter(std::string_view name, std::int64_t index = -1)
    {
        m_Lengths.push_back(m_Path.size());
        if (!m_Path.empty() && !name.empty())
            m_Path += '.';
        m_Path += name;
        if (index >= 0)
            m_Path += '[' + std::to_string(index) + ']';
    }

    void Leave()
    {
        m_Path.resize(m_Lengths.back());
        m_Lengths.pop_back();
    }

    CZEKVisitor& m_Visitor;
    std::string m_Path;
    std::vector<std::size_t> m_Lengths;
};

template <typename Source>
std::optional<SZEKRefusal> VisitFieldsOf(Source& source, CZEKVisitor& visitor)
{
    CVisitorSink sink(visitor);
    CZEKWalk<Source, CVisitorSink> walk(source, sink);
    if (WalkFile(walk))
        return std::nullopt;
    return sink.GetRefusal();
}

} // namespace

double SZEKField::GetNumber(int index) const
{
    const unsigned char* value = bytes + std::ptrdiff_t{index} * zek::GetSize(type);
    switch (type)
    {
    case EZEKFieldType::Byte:
    case EZEKFieldType::Text:
        return *value;
    case EZEKFieldType::Short:
        return static_cast<short>(fileimage::ReadWord(value));
    case EZEKFieldType::Word:
        return fileimage::ReadWord(value);
    case EZEKFieldType::Int:
        return fileimage::ReadInt(value);
    case EZEKFieldType::Float:
        break;
    }
    return fileimage::ReadFloat(value);
}

std::string_view SZEKField::GetText() const
{
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size - 1)};
}

std::optional<SZEKRefusal>
VisitFields(const unsigned char* image, std::int64_t size, CZEKVisitor& visitor)
{
    CZEKImageSource source(image, size);
    return VisitFieldsOf(source, visitor);
}

std::optional<SZEKRefusal> VisitFields(filesystem::CRandomAccessFile& file, CZEKVisitor& visitor)
{
    CZEKFileSource source(file);
    return VisitFieldsOf(source, visitor);
}

} // namespace zek
