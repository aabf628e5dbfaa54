#include "Events.h"

#include <gtest/gtest.h>

namespace testsupport
{

namespace
{

std::string MakeFieldEvent(
    std::string_view path,
    std::int64_t offset,
    std::int64_t size,
    int type,
    int count,
    const unsigned char* bytes)
{
    std::string event = std::string(path) + " at " + std::to_string(offset) + ", " +
                        std::to_string(count) + " of type " + std::to_string(type) + ", " +
                        std::to_string(size) + " bytes:";
    for (std::int64_t i = 0; i < size; ++i)
        event += " " + std::to_string(bytes[i]);
    return event;
}

std::string MakeArrayEvent(
    std::string_view path, std::int64_t offset, std::int64_t elementSize, std::int64_t count)
{
    return std::string(path) + " at " + std::to_string(offset) + ", " + std::to_string(count) +
           " elements of " + std::to_string(elementSize) + " bytes";
}

std::string MakeSectionEvent(std::string_view name)
{
    return "section " + std::string(name);
}

} // namespace

void CEventVisitor::OnSection(std::string_view name)
{
    m_Events.push_back(MakeSectionEvent(name));
}

void CEventVisitor::OnField(const zek::SZEKField& field)
{
    EXPECT_EQ(m_End, field.offset) << field.path;
    m_End = field.offset + field.size;
    m_Events.push_back(MakeFieldEvent(
        field.path, field.offset, field.size, static_cast<int>(field.type), field.count,
        field.bytes));
}

void CEventVisitor::OnArray(const zek::SZEKArray& array)
{
    EXPECT_FALSE(m_WantsElements);
    EXPECT_EQ(m_End, array.offset) << array.path;
    m_End = array.offset + array.elementSize * array.count;
    m_Events.push_back(MakeArrayEvent(array.path, array.offset, array.elementSize, array.count));
}

bool CEventVisitor::IsElementsWanted(std::string_view)
{
    return m_WantsElements;
}

Events MakeEvents(const CModelFields& fields, const Bytes& image, bool wantsElements)
{
    Events events;
    auto array = fields.GetArrays().begin();
    auto section = fields.GetSections().begin();
    for (std::size_t i = 0; i <= fields.GetFields().size(); ++i)
    {
        for (; array != fields.GetArrays().end() && array->firstField == i; ++array)
        {
            if (!wantsElements)
                events.push_back(MakeArrayEvent(
                    array->path, static_cast<std::int64_t>(array->offset),
                    static_cast<std::int64_t>(array->elementSize),
                    static_cast<std::int64_t>(array->count)));
        }
        for (; section != fields.GetSections().end() && section->firstField == i; ++section)
            events.push_back(MakeSectionEvent(section->name));
        if (i == fields.GetFields().size())
            break;
        const SField& field = fields.GetFields()[i];
        if (field.array < 0 || wantsElements)
            events.push_back(MakeFieldEvent(
                field.path, static_cast<std::int64_t>(field.offset),
                static_cast<std::int64_t>(field.size), static_cast<int>(field.kind),
                static_cast<int>(field.count), &image[field.offset]));
    }
    return events;
}

} // namespace testsupport
