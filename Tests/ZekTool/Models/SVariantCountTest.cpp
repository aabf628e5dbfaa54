#include "ZekTool/Models/SVariantCount.h"

#include <gtest/gtest.h>

namespace
{

using zektool::GetKindName;
using zektool::SVariantCount;
using zektool::VariantCounts;

TEST(SVariantCount, AddsAndCountsWhatIsMissing)
{
    SVariantCount count = {3, {0, 1, 2, 3}};
    EXPECT_EQ(6, count.GetMissing());
    count.Add({2, {2, 0, 1, 0}});
    EXPECT_EQ(5, count.items);
    EXPECT_EQ((std::array<std::int64_t, 4>{2, 1, 3, 3}), count.variants);
    EXPECT_EQ(11, count.GetMissing());
}

TEST(SVariantCount, IsWrittenByTheNamesOfKindsAndFamilies)
{
    const VariantCounts counts = {{{1, {1, 0, 0, 0}}, {}, {5000000000, {0, 0, 0, 4000000000}}}};
    EXPECT_EQ(
        "{\"texture\":{\"items\":1,\"variants\":{\"PVRTC\":1,\"ETC\":0,\"ASTC\":0,\"DXT\":0}},"
        "\"cubemap\":{\"items\":0,\"variants\":{\"PVRTC\":0,\"ETC\":0,\"ASTC\":0,\"DXT\":0}},"
        "\"lightmap\":{\"items\":5000000000,"
        "\"variants\":{\"PVRTC\":0,\"ETC\":0,\"ASTC\":0,\"DXT\":4000000000}}}",
        MakeCountsJson(counts).dump());
    EXPECT_EQ("cubemap", GetKindName(zek::EZEKItemKind::Cubemap));
}

} // namespace
