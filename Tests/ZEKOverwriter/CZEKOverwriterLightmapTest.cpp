#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;
using zek::FlagQuad;

namespace
{

constexpr auto AnalyseLightmapList = &CZEKOverwriter::AnalyseLightmapList;

CModelBuilder BuildLightmaps(int version, const std::vector<SLightmap>& lightmaps)
{
    CModelBuilder builder(version);
    builder.AddLightmapList(lightmaps);
    return builder;
}

/// Walks a whole list, which has to succeed, and leaves its lightmaps in the overwriter.
void WalkLightmaps(CZEKOverwriter& overwriter, const Bytes& image, int version)
{
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    ASSERT_TRUE(overwriter.AnalyseLightmapList(reader, version));
    ASSERT_TRUE(reader.IsEnd());
}

/// Expects the list to take just size bytes and to need them all.
void ExpectSize(std::int64_t size, int version, const std::vector<SLightmap>& lightmaps)
{
    testsupport::ExpectSize(
        size, AnalyseLightmapList, BuildLightmaps(version, lightmaps).GetImage(), version);
}

} // namespace

TEST(CZEKOverwriterLightmapList, BeforeVersionEighteenTheListIsItsCount)
{
    for (int version : {0, 7, 17})
        ExpectSize(4, version, {SLightmap(), SLightmap(), SLightmap()});
}

TEST(CZEKOverwriterLightmapList, VersionEighteenBringsTheSwitch)
{
    for (int version : {18, 21})
        ExpectSize(4 + 4, version, {SLightmap()});
}

TEST(CZEKOverwriterLightmapList, VersionTwentyTwoBringsTheTrailingInt)
{
    for (int version : {22, 25})
        ExpectSize(4 + 4 + 4, version, {SLightmap()});
}

TEST(CZEKOverwriterLightmapList, VersionTwentySixBringsTheRecords)
{
    for (int version : {26, UnknownVersion})
        ExpectSize(4 + (3 + 4) + (1 + 4) + 4 + 4, version, {SLightmap{"lm"}, SLightmap{""}});
}

TEST(CZEKOverwriterLightmapList, CountOfThreeInVersionTwentyFiveHoldsNoRecords)
{
    const Bytes image = BuildLightmaps(25, std::vector<SLightmap>(3)).GetImage();
    CZEKOverwriter overwriter;
    WalkLightmaps(overwriter, image, 25);
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
    EXPECT_EQ(12, Walk(AnalyseLightmapList, Extend(image, 100), 25));
}

TEST(CZEKOverwriterLightmapList, NegativeCountMeansNone)
{
    CModelBuilder builder(26);
    for (int value : {-1, 1, 2})
        builder.AddInt("lightmap count, switch, trailing int", value);
    CZEKOverwriter overwriter;
    WalkLightmaps(overwriter, builder.GetImage(), 26);
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
}

TEST(CZEKOverwriterLightmapList, HighestCountBelowVersionTwentySixIsAcceptedAtOnce)
{
    for (int version : {7, 18, 25})
    {
        const CModelBuilder builder = BuildLightmaps(version, {});
        EXPECT_EQ(
            SizeOf(builder.GetImage()),
            Walk(AnalyseLightmapList, SetInt(builder, "lightmapCount", HighestInt), version));
    }
}

TEST(CZEKOverwriterLightmapList, CountOfZeroOrLessMeansNoRecordsAndTheTrailingIntsFollow)
{
    const CModelBuilder builder = BuildLightmaps(26, {});
    for (int count : {0, -1, LowestInt})
    {
        const Bytes image = SetInt(builder, "lightmapCount", count);
        CZEKOverwriter overwriter;
        WalkLightmaps(overwriter, image, 26);
        EXPECT_TRUE(overwriter.GetLightmapNameList().empty()) << count;
        EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty()) << count;
        EXPECT_EQ(12, Walk(AnalyseLightmapList, Extend(image, 100), 26)) << count;
    }
}

TEST(CZEKOverwriterLightmapList, CountAboveTheRecordsThereIsRefused)
{
    const CModelBuilder builder = BuildLightmaps(26, {SLightmap(), SLightmap()});
    for (int count : {3, 65536, HighestInt})
        EXPECT_EQ(Refused, Walk(AnalyseLightmapList, SetInt(builder, "lightmapCount", count), 26))
            << count;
}

TEST(CZEKOverwriterLightmapList, NamesAreKeptAsBytesInFileOrder)
{
    const std::vector<std::string> names = {"LightMap000.png", "", "\x83\x5C%s\\x/y\xFF"};
    const Bytes image =
        BuildLightmaps(26, {SLightmap{names[0]}, SLightmap{names[1]}, SLightmap{names[2]}})
            .GetImage();
    CZEKOverwriter overwriter;
    WalkLightmaps(overwriter, image, 26);
    EXPECT_EQ(names, overwriter.GetLightmapNameList());
}

TEST(CZEKOverwriterLightmapList, NameWithoutTerminatorIsRefused)
{
    CModelBuilder builder(26);
    builder.AddInt("lightmapCount", 1);
    builder.AddBytes("lightmaps.name", "LightMap000.png and no zero byte after it");
    EXPECT_EQ(Refused, Walk(AnalyseLightmapList, builder.GetImage(), 26));
}

TEST(CZEKOverwriterLightmapList, FlagSlotsAreTheFourBytesAfterEachName)
{
    const Bytes image =
        BuildLightmaps(26, {SLightmap{"ab", {1, 2, 3, 4}}, SLightmap{"", {}}}).GetImage();
    CZEKOverwriter overwriter;
    WalkLightmaps(overwriter, image, 26);
    const unsigned char* p = image.data();
    EXPECT_EQ(
        std::vector(
            {FlagQuad({p + 7, p + 8, p + 9, p + 10}), FlagQuad({p + 12, p + 13, p + 14, p + 15})}),
        overwriter.GetLightmapFlagQuadList());
}

TEST(CZEKOverwriterLightmapList, AnySwitchAndTrailingIntAreAccepted)
{
    for (int value : {0, 1, 2, -1, LowestInt})
    {
        CModelBuilder builder(26);
        builder.AddLightmapList({SLightmap()}, value, value);
        EXPECT_EQ(SizeOf(builder.GetImage()), Walk(AnalyseLightmapList, builder.GetImage(), 26))
            << value;
    }
}

TEST(CZEKOverwriterLightmapList, WalkFillsNoOtherList)
{
    const Bytes image = BuildLightmaps(26, {SLightmap()}).GetImage();
    CZEKOverwriter overwriter;
    WalkLightmaps(overwriter, image, 26);
    EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetProbeNameList().empty());
    EXPECT_EQ(0, overwriter.GetProbeCount());
}
