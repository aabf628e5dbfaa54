#include "ZEKFormat/SZEKLocation.h"

#include <cstdio>

namespace zek
{

namespace
{

constexpr std::size_t LongestShownText = 80;

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

} // namespace

std::string MakeExcerpt(std::string_view text)
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

std::string SZEKLocation::GetLocationText() const
{
    std::string text = section;
    if (index >= 0)
        text = MakeSingular(section) + " " + std::to_string(index);
    if (!name.empty())
        text += " \"" + MakeExcerpt(name) + "\"";
    return field.empty() ? text : text + ": " + field + " at " + MakeHex(offset);
}

} // namespace zek
