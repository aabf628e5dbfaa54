#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <vector>

#include "ZekTool/Check/SSurvey.h"

namespace zektool
{

/// The stems of a model's lightmaps, which are the names of their variants without the extension.
/// They are looked up in time that grows with the logarithm of their number, and take at most
/// twelve bytes each.
class CLightmapStems
{
public:
    /// Borrows the lightmaps.
    explicit CLightmapStems(const std::deque<SSurveyedItem>& lightmaps);

    /// Tells whether a stem is that of a lightmap.
    bool Has(std::string_view stem) const;

    /// The same, where A to Z are as good as small letters, whatever the character code is.
    bool HasInAnyCase(std::string_view stem) const;

    /// Returns the first lightmap that has the same stem as a lightmap: itself, or one before it.
    std::size_t FindFirst(std::size_t lightmap) const;

private:
    std::string_view GetStem(int lightmap) const;

    /// Returns the place of a stem in the order.
    std::vector<int>::const_iterator FindPlace(std::string_view stem) const;

    const std::deque<SSurveyedItem>& m_Lightmaps;
    std::vector<std::size_t> m_Lengths; // of the stems, by lightmap
    std::vector<int> m_Order;           // the first lightmap of each stem, by stem
};

} // namespace zektool
