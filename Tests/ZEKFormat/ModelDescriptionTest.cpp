#include "Support/ModelDescription.h"

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CModelMap.h"

using namespace testsupport;

namespace
{

class DescriptionOfVersion : public testing::TestWithParam<int>
{
};

INSTANTIATE_TEST_SUITE_P(
    Version, DescriptionOfVersion, testing::Range(OldestVersion, UnknownVersion + 1));

} // namespace

TEST_P(DescriptionOfVersion, ReadsWhatItWrites)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(GetParam()));
    const CModelMap map(builder.GetImage());
    ASSERT_TRUE(map.IsAccepted());
    EXPECT_EQ(builder.GetImage().size(), map.GetEnd());
    // Of items without records the file says no more than how many there are.
    SModel model = map.GetModel();
    model.lightmaps.resize(2);
    model.probes.resize(2);
    EXPECT_EQ(builder.GetImage(), CModelBuilder::Build(model).GetImage());

    ASSERT_EQ(builder.GetFields().size(), map.GetFields().size());
    for (std::size_t i = 0; i < map.GetFields().size(); ++i)
    {
        EXPECT_EQ(builder.GetFields()[i].path, map.GetFields()[i].path);
        EXPECT_EQ(builder.GetFields()[i].offset, map.GetFields()[i].offset);
        EXPECT_EQ(builder.GetFields()[i].size, map.GetFields()[i].size);
    }
}

TEST(Description, FindsFieldsByTheEndsOfTheirPaths)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(26));
    EXPECT_EQ(VersionOffset, builder.GetOffset("version"));
    EXPECT_EQ(MarkerOffset, builder.GetOffset("processedMarker"));
    EXPECT_EQ(20u, builder.GetOffset("textures.name"));
    EXPECT_EQ(builder.GetTextureFlagOffsets()[1], builder.GetOffset("textures.flags", 1));
    EXPECT_EQ(builder.GetTextureFlagOffsets()[1], builder.GetOffset("flags", 1));
}
