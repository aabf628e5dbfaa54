#include "ZekTool/Check/CLightmapStems.h"

#include <algorithm>

#include "ZEKOverwriter/CZEKVariantFinder.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

/// Returns what is below 0, 0 or above it, as a stands before b, with it or after it when A to Z
/// are small letters.
int CompareSmall(std::string_view a, std::string_view b)
{
    const auto [inA, inB] = std::mismatch(
        a.begin(), a.end(), b.begin(), b.end(),
        [](char x, char y) { return x == y || MakeSmall(x) == MakeSmall(y); });
    if (inA == a.end() || inB == b.end())
        return (inA == a.end() ? 0 : 1) - (inB == b.end() ? 0 : 1);
    return MakeSmall(*inA) - MakeSmall(*inB);
}

/// The same, where stems that differ only in such letters stand beside each other.
int Compare(std::string_view a, std::string_view b)
{
    const int small = CompareSmall(a, b);
    return small != 0 ? small : a.compare(b);
}

} // namespace

CLightmapStems::CLightmapStems(const std::deque<SSurveyedItem>& lightmaps) : m_Lightmaps(lightmaps)
{
    // Without this both would be held twice while they grow.
    m_Lengths.reserve(lightmaps.size());
    m_Order.reserve(lightmaps.size());
    for (const SSurveyedItem& lightmap : lightmaps)
    {
        const int index = static_cast<int>(m_Lengths.size());
        m_Lengths.push_back(zek::SZEKItem::MakeLightmap(lightmap.name).name.size());
        // Files of nameless lightmaps need no sorting.
        if (index == 0 || GetStem(index) != GetStem(index - 1))
            m_Order.push_back(index);
    }
    std::sort(
        m_Order.begin(), m_Order.end(),
        [this](int a, int b)
        {
            const int order = Compare(GetStem(a), GetStem(b));
            return order != 0 ? order < 0 : a < b;
        });
    const auto isSame = [this](int a, int b) { return GetStem(a) == GetStem(b); };
    m_Order.erase(std::unique(m_Order.begin(), m_Order.end(), isSame), m_Order.end());
}

bool CLightmapStems::Has(std::string_view stem) const
{
    const auto place = FindPlace(stem);
    return place != m_Order.end() && GetStem(*place) == stem;
}

bool CLightmapStems::HasInAnyCase(std::string_view stem) const
{
    const auto place = std::lower_bound(
        m_Order.begin(), m_Order.end(), stem,
        [this](int lightmap, std::string_view wanted)
        { return CompareSmall(GetStem(lightmap), wanted) < 0; });
    return place != m_Order.end() && CompareSmall(GetStem(*place), stem) == 0;
}

std::size_t CLightmapStems::FindFirst(std::size_t lightmap) const
{
    return static_cast<std::size_t>(*FindPlace(GetStem(static_cast<int>(lightmap))));
}

std::string_view CLightmapStems::GetStem(int lightmap) const
{
    const auto index = static_cast<std::size_t>(lightmap);
    return {m_Lightmaps[index].name, m_Lengths[index]};
}

std::vector<int>::const_iterator CLightmapStems::FindPlace(std::string_view stem) const
{
    return std::lower_bound(
        m_Order.begin(), m_Order.end(), stem,
        [this](int lightmap, std::string_view wanted)
        { return Compare(GetStem(lightmap), wanted) < 0; });
}

} // namespace zektool
