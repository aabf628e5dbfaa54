#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;
using zek::FlagQuad;

namespace
{

constexpr auto AnalyseTextureList = &CZEKOverwriter::AnalyseTextureList;

constexpr Flags NoFlags = {};

CModelBuilder BuildTextures(int version, const std::vector<STexture>& textures)
{
    CModelBuilder builder(version);
    builder.AddTextureList(textures);
    return builder;
}

/// Walks a whole list, which has to succeed, and leaves its flags in the overwriter.
void WalkTextures(CZEKOverwriter& overwriter, const Bytes& image, int version)
{
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    ASSERT_TRUE(overwriter.AnalyseTextureList(reader, version));
    ASSERT_TRUE(reader.IsEnd());
}

/// Expects one texture named "t" to take just size bytes, count included, and to need them all.
void ExpectSizeOfOne(std::int64_t size, int version)
{
    const CModelBuilder builder = BuildTextures(version, {STexture{"t", 1, NoFlags}});
    ExpectSize(size, AnalyseTextureList, builder.GetImage(), version);
}

} // namespace

TEST(CZEKOverwriterTextureList, CountOfZeroYieldsNoQuads)
{
    CZEKOverwriter overwriter;
    WalkTextures(overwriter, IntAlone(0), 26);
    EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
}

TEST(CZEKOverwriterTextureList, NegativeCountYieldsNoQuadsAndIsNoError)
{
    for (int count : {-1, LowestInt})
    {
        CZEKOverwriter overwriter;
        WalkTextures(overwriter, IntAlone(count), 26);
        EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty()) << count;
        EXPECT_EQ(4, Walk(AnalyseTextureList, Extend(IntAlone(count), 100), 26)) << count;
    }
}

TEST(CZEKOverwriterTextureList, CountNeedsFourBytes)
{
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseTextureList, Cut(IntAlone(0), size), 26)) << size;
}

TEST(CZEKOverwriterTextureList, NameOfZeroLengthIsAccepted)
{
    const Bytes image = BuildTextures(26, {STexture{"", 1, NoFlags}}).GetImage();
    EXPECT_EQ(4 + 1 + 4 + 4, Walk(AnalyseTextureList, image, 26));
}

TEST(CZEKOverwriterTextureList, NameWithoutTerminatorIsRefused)
{
    CModelBuilder builder(26);
    builder.AddInt("textureCount", 1);
    builder.AddBytes("textures.name", "texture.png and no zero byte after it");
    EXPECT_EQ(Refused, Walk(AnalyseTextureList, builder.GetImage(), 26));
}

TEST(CZEKOverwriterTextureList, NameOfAnyBytesIsAccepted)
{
    const std::string name = "\x83\x5C%s%n\\/\xFF\x81";
    const Bytes image = BuildTextures(26, {STexture{name, 1, NoFlags}}).GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseTextureList, image, 26));
}

TEST(CZEKOverwriterTextureList, BeforeVersionOneARecordIsItsName)
{
    ExpectSizeOfOne(4 + 2, 0);
}

TEST(CZEKOverwriterTextureList, VersionOneBringsTheClamp)
{
    ExpectSizeOfOne(4 + 2 + 4, 1);
    ExpectSizeOfOne(4 + 2 + 4, 4);
}

TEST(CZEKOverwriterTextureList, VersionFiveBringsTheFlags)
{
    for (int version : {5, 7, 21, 25, 26})
        ExpectSizeOfOne(4 + 2 + 4 + 4, version);
}

TEST(CZEKOverwriterTextureList, BeforeVersionFiveAQuadHasFourNullSlots)
{
    const FlagQuad nullSlots = {};
    for (int version : {0, 1, 4})
    {
        CZEKOverwriter overwriter;
        WalkTextures(
            overwriter, BuildTextures(version, {STexture(), STexture()}).GetImage(), version);
        EXPECT_EQ(std::vector({nullSlots, nullSlots}), overwriter.GetTextureFlagQuadList())
            << version;
    }
}

TEST(CZEKOverwriterTextureList, AnyClampIsAccepted)
{
    for (int clamp : {0, 1, 2, -1, HighestInt})
    {
        const Bytes image = BuildTextures(26, {STexture{"t", clamp, NoFlags}}).GetImage();
        EXPECT_EQ(SizeOf(image), Walk(AnalyseTextureList, image, 26)) << clamp;
    }
}

TEST(CZEKOverwriterTextureList, FlagSlotsAreTheFourBytesInFileOrder)
{
    const Bytes image = BuildTextures(7, {STexture{"t", 1, {1, 2, 3, 4}}}).GetImage();
    CZEKOverwriter overwriter;
    WalkTextures(overwriter, image, 7);
    const unsigned char* p = image.data();
    EXPECT_EQ(
        std::vector({FlagQuad({p + 10, p + 11, p + 12, p + 13})}),
        overwriter.GetTextureFlagQuadList());
}

TEST(CZEKOverwriterTextureList, QuadsStandInFileOrder)
{
    const Bytes image =
        BuildTextures(26, {STexture{"ab", 1, NoFlags}, STexture{"", 1, NoFlags}}).GetImage();
    CZEKOverwriter overwriter;
    WalkTextures(overwriter, image, 26);
    const unsigned char* p = image.data();
    EXPECT_EQ(
        std::vector(
            {FlagQuad({p + 11, p + 12, p + 13, p + 14}),
             FlagQuad({p + 20, p + 21, p + 22, p + 23})}),
        overwriter.GetTextureFlagQuadList());
}

TEST(CZEKOverwriterTextureList, QuadsAreAppendedToThoseOfAnEarlierList)
{
    const Bytes image = BuildTextures(26, {STexture()}).GetImage();
    CZEKOverwriter overwriter;
    WalkTextures(overwriter, image, 26);
    WalkTextures(overwriter, image, 26);
    ASSERT_EQ(2u, overwriter.GetTextureFlagQuadList().size());
    EXPECT_EQ(overwriter.GetTextureFlagQuadList()[0], overwriter.GetTextureFlagQuadList()[1]);
}

TEST(CZEKOverwriterTextureList, LastFlagByteMayBeTheLastOfTheFileAndMustNotBeMissing)
{
    const Bytes image = BuildTextures(26, {STexture(), STexture()}).GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseTextureList, image, 26));
    EXPECT_EQ(Refused, Walk(AnalyseTextureList, Cut(image, -1), 26));
}

TEST(CZEKOverwriterTextureList, WalkFillsNoOtherList)
{
    const Bytes image = BuildTextures(26, {STexture()}).GetImage();
    CZEKOverwriter overwriter;
    WalkTextures(overwriter, image, 26);
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetProbeNameList().empty());
    EXPECT_EQ(0, overwriter.GetProbeCount());
}

TEST(CZEKOverwriterTextureList, CountAboveTheRecordsThereIsRefused)
{
    const CModelBuilder builder = BuildTextures(26, {STexture(), STexture()});
    for (int count : {3, 65536, HighestInt})
        EXPECT_EQ(Refused, Walk(AnalyseTextureList, SetInt(builder, "textureCount", count), 26))
            << count;
}

TEST(CZEKOverwriterTextureList, CountBelowTheRecordsThereLeavesTheRest)
{
    const CModelBuilder builder = BuildTextures(26, {STexture{"t"}, STexture{"t"}});
    EXPECT_EQ(4 + 10, Walk(AnalyseTextureList, SetInt(builder, "textureCount", 1), 26));
}
