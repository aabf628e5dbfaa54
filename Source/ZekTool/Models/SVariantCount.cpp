#include "ZekTool/Models/SVariantCount.h"

#include <string>

namespace zektool
{

namespace
{

constexpr std::array<std::string_view, ItemKindCount> KindNames = {
    "texture", "cubemap", "lightmap"};

} // namespace

void SVariantCount::Add(const SVariantCount& other)
{
    items += other.items;
    for (std::size_t family = 0; family < variants.size(); ++family)
        variants[family] += other.variants[family];
}

std::int64_t SVariantCount::GetMissing() const
{
    std::int64_t missing = 0;
    for (std::int64_t count : variants)
        missing += items - count;
    return missing;
}

std::string_view GetKindName(zek::EZEKItemKind kind)
{
    return KindNames[static_cast<std::size_t>(kind)];
}

Json MakeCountsJson(const VariantCounts& counts)
{
    Json json;
    for (std::size_t kind = 0; kind < counts.size(); ++kind)
    {
        Json variants;
        for (std::size_t family = 0; family < zek::CompressionFamilies.size(); ++family)
            variants[std::string(zek::CompressionFamilies[family].name)] =
                counts[kind].variants[family];
        json[std::string(KindNames[kind])] = {
            {"items", counts[kind].items}, {"variants", variants}};
    }
    return json;
}

} // namespace zektool
