#pragma once

#include <string>
#include <vector>

#include "Support/CModelFields.h"
#include "Support/CTemporaryFolder.h"
#include "ZEKFormat/CZEKVisitor.h"

namespace testsupport
{

/// What a visitor hears, a line an event, with the bytes of every field.
using Events = std::vector<std::string>;

/// Writes down all that it hears, and checks that the fields and arrays lie side by side from the
/// first byte on.
class CEventVisitor : public zek::CZEKVisitor
{
public:
    explicit CEventVisitor(bool wantsElements) : m_WantsElements(wantsElements) {}

    void OnSection(std::string_view name) override;
    void OnField(const zek::SZEKField& field) override;
    void OnArray(const zek::SZEKArray& array) override;
    bool IsElementsWanted(std::string_view path) override;

    const Events& GetEvents() const { return m_Events; }

    /// Where the last field or array ends.
    std::int64_t GetEnd() const { return m_End; }

private:
    bool m_WantsElements;
    Events m_Events;
    std::int64_t m_End = 0;
};

/// What a visitor has to hear of a model whose fields these are.
Events MakeEvents(const CModelFields& fields, const Bytes& image, bool wantsElements);

} // namespace testsupport
