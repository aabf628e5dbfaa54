#include "ZekTool/Check/SFinding.h"

namespace zektool
{

namespace
{

constexpr std::size_t LongestTold = 32768;

} // namespace

std::string MakeTold(std::string_view name)
{
    if (name.size() <= LongestTold)
        return std::string(name);
    return std::string(name.substr(0, LongestTold)) + "...";
}

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
