#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ZEKFormat/CZEKSink.h"
#include "ZEKFormat/SZEKRefusal.h"

namespace zek
{

/// Remembers where a walk is, to say where it was refused. Sinks that do more derive from it.
class CZEKRefusalSink : public CZEKSink
{
public:
    void BeginSection(const char* name)
    {
        m_Section = name;
        m_Name = {};
    }

    void BeginRecord(const char* kind, int index)
    {
        if (m_Scopes.empty())
            m_Name = {};
        m_Scopes.push_back({kind, index});
    }

    void EndRecord() { m_Scopes.pop_back(); }
    void BeginPart(const char* name) { m_Scopes.push_back({name, -1}); }
    void EndPart() { m_Scopes.pop_back(); }

    void Text(const char* field, std::int64_t, std::string_view value)
    {
        if (m_Scopes.size() == 1 && std::string_view(field) == "name")
            m_Name = value;
    }

    void Refuse(const SZEKFault& fault);

    /// Returns the place of a field of the record that the walk is in.
    SZEKLocation Locate(std::string_view field, std::int64_t offset) const;

    /// What was refused; only valid when the walk returned false.
    const SZEKRefusal& GetRefusal() const { return m_Refusal; }

private:
    /// A record with its index in the list, or a part of a record with -1.
    struct SScope
    {
        const char* name;
        int index;
    };

    std::string_view m_Section;
    std::string_view m_Name;
    std::vector<SScope> m_Scopes;
    SZEKRefusal m_Refusal;
};

} // namespace zek
