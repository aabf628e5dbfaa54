#include "ZekTool/Check/SFinding.h"

namespace zektool
{

std::string SFinding::GetText() const
{
    const SFindingKind& kind = GetFindingKind(finding);
    std::string text = location.GetLocationText() + ": " + message + "; ";
    text += kind.remedy;
    text += " [";
    text += kind.code;
    text += "]";
    return text;
}

} // namespace zektool
