#include "ZEKOverwriter/CZEKOverwriter.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"
#include "Walk.h"

using namespace testsupport;
using fileimage::CFileImageAnalyser;
using zek::CZEKOverwriter;

using SectionWalker = bool (CZEKOverwriter::*)(CFileImageAnalyser&, int);

static_assert(std::has_virtual_destructor_v<CZEKOverwriter>);
static_assert(std::is_same_v<
              decltype(&CZEKOverwriter::Overwrite),
              bool (CZEKOverwriter::*)(const std::string&)>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseNodeList), SectionWalker>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseMeshList), SectionWalker>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseMaterialList), SectionWalker>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseTextureList), SectionWalker>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseReflectionProbe), SectionWalker>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseLightmapList), SectionWalker>);
static_assert(std::is_same_v<
              decltype(&CZEKOverwriter::AnalyseBoneTable),
              bool (CZEKOverwriter::*)(CFileImageAnalyser&)>);

namespace
{

/// What `Overwrite` made of a model file that stands alone in its folder.
struct SOutcome
{
    bool isSuccess;
    std::string output;
    Bytes image;
};

SOutcome Overwrite(const Bytes& image)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", image);
    CZEKOverwriter overwriter;
    testing::internal::CaptureStdout();
    const bool isSuccess = overwriter.Overwrite(folder.GetPath("model.zek"));
    const std::string output = testing::internal::GetCapturedStdout();
    return {isSuccess, output, folder.Read("model.zek")};
}

/// Expects a file to be refused, with nothing printed and not a byte changed.
void ExpectRefused(const Bytes& image)
{
    const SOutcome outcome = Overwrite(image);
    EXPECT_FALSE(outcome.isSuccess);
    EXPECT_EQ("", outcome.output);
    EXPECT_EQ(image, outcome.image);
}

/// An empty model's image with other bytes at an offset.
Bytes Poke(Bytes image, std::size_t offset, const Bytes& bytes)
{
    for (std::size_t i = 0; i < bytes.size(); ++i)
        image.at(offset + i) = bytes[i];
    return image;
}

} // namespace

TEST(CZEKOverwriter, IsEmptyOnConstruction)
{
    const CZEKOverwriter overwriter;
    EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
    EXPECT_EQ(0, overwriter.GetProbeCount());
    EXPECT_TRUE(overwriter.GetProbeNameList().empty());
}

TEST(CZEKOverwriter, MissingFileIsRefused)
{
    const CTemporaryFolder folder;
    CZEKOverwriter overwriter;
    EXPECT_FALSE(overwriter.Overwrite(folder.GetPath("model.zek")));
    EXPECT_TRUE(folder.GetContents().empty());
}

TEST(CZEKOverwriter, FileOfZeroBytesIsRefused)
{
    ExpectRefused(Bytes());
}

TEST(CZEKOverwriter, MagicMustBeTerminated)
{
    ExpectRefused({'Z', 'E', 'K'});
    ExpectRefused(Bytes(100, 'Z'));
}

TEST(CZEKOverwriter, MagicMustBeExact)
{
    const Bytes image = BuildEmpty(26).GetImage();
    for (const Bytes& magic : std::vector<Bytes>{
             {'z', 'E', 'K'}, {'Z', 'E', 'L'}, {'Z', 'E', 0}, {0}, {'Z', 'E', 'K', 'K'}})
        ExpectRefused(Poke(image, 0, magic));
    ExpectRefused(Poke(Extend(image, 1), 0, {'Z', 'E', 'K', ' ', 0, 26, 0, 0, 0}));
}

TEST(CZEKOverwriter, VersionNeedsFourBytes)
{
    const Bytes image = BuildEmpty(7).GetImage();
    for (std::int64_t size = 4; size < 8; ++size)
        ExpectRefused(Cut(image, size));
}

TEST(CZEKOverwriter, VersionBelowSevenIsRefused)
{
    const Bytes image = Extend(BuildEmpty(7).GetImage(), 100);
    for (int version : {6, 5, 1, 0, -1, LowestInt})
    {
        SCOPED_TRACE(version);
        ExpectRefused(Poke(image, 4, IntAlone(version)));
    }
}

TEST(CZEKOverwriter, VersionSevenIsAccepted)
{
    EXPECT_TRUE(Overwrite(BuildEmpty(7).GetImage()).isSuccess);
}

TEST(CZEKOverwriter, VersionIsLittleEndian)
{
    ExpectRefused(Poke(BuildEmpty(7).GetImage(), 4, {0, 0, 0, 7 | 0x80}));
    EXPECT_TRUE(Overwrite(Poke(BuildEmpty(26).GetImage(), 4, {0, 0, 0, 7})).isSuccess);
}

TEST(CZEKOverwriter, EveryVersionFromTwentySixOnIsReadAlike)
{
    for (int version : {26, UnknownVersion, 1000, HighestInt})
    {
        const Bytes image = Poke(BuildEmpty(26).GetImage(), 4, IntAlone(version));
        const SOutcome outcome = Overwrite(image);
        EXPECT_TRUE(outcome.isSuccess) << version;
        EXPECT_EQ(NoTextures + NoCubemaps + NoLightmaps, outcome.output) << version;
        EXPECT_EQ(Poke(image, 8, {1}), outcome.image) << version;
    }
}

TEST(CZEKOverwriter, EmptyVersionSevenIsWrittenBackAsItWas)
{
    const Bytes image = BuildEmpty(7).GetImage();
    const SOutcome outcome = Overwrite(image);
    EXPECT_TRUE(outcome.isSuccess);
    EXPECT_EQ(NoTextures + NoLightmaps, outcome.output);
    EXPECT_EQ(image, outcome.image);
}

TEST(CZEKOverwriter, CubemapLineComesWithVersionSixteen)
{
    EXPECT_EQ(NoTextures + NoLightmaps, Overwrite(BuildEmpty(15).GetImage()).output);
    EXPECT_EQ(NoTextures + NoCubemaps + NoLightmaps, Overwrite(BuildEmpty(16).GetImage()).output);
}

TEST(CZEKOverwriter, BelowVersionTwentyOneThereIsNoMarker)
{
    for (int version = 7; version <= 20; ++version)
    {
        const CModelBuilder builder = BuildEmpty(version);
        ASSERT_EQ(8u, builder.GetOffset("nodeCount"));
        const SOutcome outcome = Overwrite(builder.GetImage());
        EXPECT_TRUE(outcome.isSuccess) << version;
        EXPECT_EQ(builder.GetImage(), outcome.image) << version;
    }
}

TEST(CZEKOverwriter, MarkerOfZerosBecomesOne)
{
    for (int version : {21, 22, 25, 26, UnknownVersion})
    {
        const SOutcome outcome = Overwrite(BuildEmpty(version, 0).GetImage());
        EXPECT_TRUE(outcome.isSuccess) << version;
        EXPECT_EQ(BuildEmpty(version, 1).GetImage(), outcome.image) << version;
    }
}

TEST(CZEKOverwriter, MarkerKeepsItsHigherBytes)
{
    const Bytes image = BuildEmpty(21).GetImage();
    EXPECT_EQ(Poke(image, 8, {1, 2, 0, 0}), Overwrite(Poke(image, 8, {5, 2, 0, 0})).image);
    EXPECT_EQ(
        Poke(image, 8, {1, 255, 254, 253}), Overwrite(Poke(image, 8, {255, 255, 254, 253})).image);
}

TEST(CZEKOverwriter, MarkerNeedsFourBytes)
{
    const Bytes image = BuildEmpty(21).GetImage();
    for (std::int64_t size = 8; size < 12; ++size)
        ExpectRefused(Cut(image, size));
}

TEST(CZEKOverwriter, SectionsStartAtTwelveInVersionsTwentyOneToTwentyFive)
{
    for (int version = 21; version <= 25; ++version)
    {
        const CModelBuilder builder = BuildEmpty(version, 1);
        ASSERT_EQ(12u, builder.GetOffset("nodeCount"));
        EXPECT_TRUE(Overwrite(builder.GetImage()).isSuccess) << version;
    }
}

TEST(CZEKOverwriter, IntAfterTheMarkerMustBeZeroFromVersionTwentySixOn)
{
    for (int value : {1, -1, 0x100, 0x1000000, LowestInt})
    {
        SCOPED_TRACE(value);
        ExpectRefused(BuildEmpty(26, 0, value).GetImage());
        ExpectRefused(BuildEmpty(UnknownVersion, 0, value).GetImage());
    }
}

TEST(CZEKOverwriter, IntAfterTheMarkerNeedsFourBytes)
{
    const Bytes image = BuildEmpty(26).GetImage();
    for (std::int64_t size = 12; size < 16; ++size)
        ExpectRefused(Cut(image, size));
}

TEST(CZEKOverwriter, TexturesStartAtSixteenInVersionTwentySix)
{
    const CModelBuilder builder = BuildEmpty(26, 1);
    ASSERT_EQ(16u, builder.GetOffset("textureCount"));
    EXPECT_TRUE(Overwrite(builder.GetImage()).isSuccess);
}

TEST(CZEKOverwriter, HeaderIsWalkedToTheFirstSectionAndGivesTheVersion)
{
    for (int version = OldestVersion; version <= UnknownVersion; ++version)
    {
        const CModelBuilder builder = BuildEmpty(version);
        const std::int64_t headerSize = version < 21 ? 8 : version < 26 ? 12 : 16;
        int readVersion = 0;
        const Walker walker = [&](CZEKOverwriter& overwriter, CFileImageAnalyser& reader, int)
        { return overwriter.AnalyseHeader(reader, readVersion); };
        EXPECT_EQ(headerSize, Walk(walker, builder.GetImage(), version));
        EXPECT_EQ(version, readVersion);
        readVersion = -1;
        for (std::int64_t size = 0; size < headerSize; ++size)
            EXPECT_EQ(Refused, Walk(walker, Cut(builder.GetImage(), size), version))
                << "version " << version << " cut to " << size;
        EXPECT_EQ(-1, readVersion);
    }
}

TEST(CZEKOverwriter, TwoProbesAndTwoLightmapsOfVersionTwentySixYieldTwoOfEverything)
{
    SModel model;
    model.probes.resize(2);
    model.probes[1].name = "Hall";
    model.lightmaps = {SLightmap{"a.png"}, SLightmap{"b.png"}};
    const Bytes image = CModelBuilder::Build(model).GetImage();

    CZEKOverwriter overwriter;
    CFileImageAnalyser reader(image.data() + 16, image.data() + image.size());
    ASSERT_TRUE(overwriter.AnalyseSections(reader, 26));
    EXPECT_EQ(2u, overwriter.GetProbeFlagQuadList().size());
    EXPECT_EQ(std::vector<std::string>({"Probe", "Hall"}), overwriter.GetProbeNameList());
    EXPECT_EQ(2, overwriter.GetProbeCount());
    EXPECT_EQ(2u, overwriter.GetLightmapFlagQuadList().size());
    EXPECT_EQ(std::vector<std::string>({"a.png", "b.png"}), overwriter.GetLightmapNameList());
}

TEST(CZEKOverwriter, SectionsOfEveryVersionAreWalkedToTheirEndAndNoFurther)
{
    for (int version = OldestVersion; version <= UnknownVersion; ++version)
    {
        SCOPED_TRACE(version);
        const Bytes image = CModelBuilder::Build(MakeFullModel(version)).GetImage();
        const std::ptrdiff_t headerSize = version < 21 ? 8 : version < 26 ? 12 : 16;
        CZEKOverwriter overwriter;
        const Bytes longer = Extend(image, 100);
        CFileImageAnalyser reader(longer.data() + headerSize, longer.data() + longer.size());
        ASSERT_TRUE(overwriter.AnalyseSections(reader, version));
        EXPECT_EQ(SizeOf(image) - headerSize, reader.GetPos());

        const std::size_t two = 2;
        EXPECT_EQ(two, overwriter.GetTextureFlagQuadList().size());
        EXPECT_EQ(version < 11 ? 0 : 2, overwriter.GetProbeCount());
        EXPECT_EQ(version < 12 ? 0 : two, overwriter.GetProbeNameList().size());
        EXPECT_EQ(version < 16 ? 0 : two, overwriter.GetProbeFlagQuadList().size());
        EXPECT_EQ(version < 26 ? 0 : two, overwriter.GetLightmapNameList().size());
        EXPECT_EQ(version < 26 ? 0 : two, overwriter.GetLightmapFlagQuadList().size());
    }
}

TEST(CZEKOverwriter, BytesAfterTheLastSectionSurvive)
{
    for (int version : {7, 20, 25, 26})
    {
        SModel model = MakeFullModel(version);
        model.marker = 1;
        model.tail = std::string("tail\0of\xFF bytes", 14);
        const Bytes image = CModelBuilder::Build(model).GetImage();
        const SOutcome outcome = Overwrite(image);
        EXPECT_TRUE(outcome.isSuccess) << version;
        EXPECT_EQ(image, outcome.image) << version;
    }
}

TEST(CZEKOverwriter, FlagsAreFoundBesideTheModel)
{
    SModel model;
    model.textures = {STexture(), STexture()};
    const CModelBuilder builder = CModelBuilder::Build(model);
    const CTemporaryFolder folder;
    folder.Write("a/model.zek", builder.GetImage());
    folder.Write("a/tex_dxt/001.dds", "");
    folder.Write("tex_pvrtc/000.pvr", "");

    CZEKOverwriter overwriter;
    testing::internal::CaptureStdout();
    const bool isSuccess = overwriter.Overwrite(folder.GetPath("a/model.zek"));
    EXPECT_EQ(
        "ExistTextureCompression 0 0 0 1\n" + NoCubemaps + NoLightmaps,
        testing::internal::GetCapturedStdout());
    EXPECT_TRUE(isSuccess);
    EXPECT_EQ(
        Poke(Poke(builder.GetImage(), 8, {1}), builder.GetTextureFlagOffsets()[1], {0, 0, 0, 1}),
        folder.Read("a/model.zek"));
}

TEST(CZEKOverwriter, ImageInMemoryIsPatchedAndNoFileIsTouched)
{
    const CModelBuilder builder = BuildEmpty(26);
    Bytes image = builder.GetImage();
    const CTemporaryFolder folder;
    CZEKOverwriter overwriter;
    testing::internal::CaptureStdout();
    const bool isSuccess = overwriter.OverwriteImage(image, folder.GetPath("model.zek"));
    EXPECT_EQ(NoTextures + NoCubemaps + NoLightmaps, testing::internal::GetCapturedStdout());
    EXPECT_TRUE(isSuccess);
    EXPECT_EQ(Poke(builder.GetImage(), 8, {1}), image);
    EXPECT_TRUE(folder.GetContents().empty());
}

TEST(CZEKOverwriter, HeaderIsWalkedInMemoryThatCannotBeWritten)
{
    static constexpr unsigned char image[] = {'Z', 'E', 'K', 0, 21, 0, 0, 0, 5, 0, 0, 0};
    CFileImageAnalyser reader(image, image + sizeof(image));
    CZEKOverwriter overwriter;
    int version = 0;
    EXPECT_TRUE(overwriter.AnalyseHeader(reader, version));
    EXPECT_EQ(21, version);
    EXPECT_EQ(12, reader.GetPos());
}

TEST(CZEKOverwriter, MarkerIsSetWhenItIsAskedForAndNotBefore)
{
    Bytes image = BuildEmpty(21, 0x0204).GetImage();
    const Bytes before = image;
    CFileImageAnalyser reader(image.data(), image.data() + image.size());
    CZEKOverwriter overwriter;
    overwriter.SetProcessedMarker(); // of nothing yet
    int version = 0;
    ASSERT_TRUE(overwriter.AnalyseHeader(reader, version));
    EXPECT_EQ(before, image);
    overwriter.SetProcessedMarker();
    EXPECT_EQ(Poke(before, MarkerOffset, {1}), image);
}

TEST(CZEKOverwriter, ImageThatIsRefusedIsLeftAlone)
{
    // All flags and the marker have been walked when the last int is missing.
    SModel model = MakeFullModel(26);
    model.textures[0].flags = model.probes[0].flags = model.lightmaps[0].flags = Old;
    const Bytes before = Cut(CModelBuilder::Build(model).GetImage(), -1);
    Bytes image = before;
    EXPECT_FALSE(CZEKOverwriter().OverwriteImage(image, "no-such-folder/model.zek"));
    EXPECT_EQ(before, image);
}

TEST(CZEKOverwriter, KeepsNothingOfAnImageOnceItIsOverwrittenOrRefused)
{
    const Bytes whole = CModelBuilder::Build(MakeFullModel(26)).GetImage();
    for (const Bytes& bytes : {whole, Cut(whole, -1)})
    {
        Bytes image = bytes;
        CZEKOverwriter overwriter;
        testing::internal::CaptureStdout();
        overwriter.OverwriteImage(image, "no-such-folder/model.zek");
        testing::internal::GetCapturedStdout();
        EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
        EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
        EXPECT_TRUE(overwriter.GetProbeNameList().empty());
        EXPECT_EQ(0, overwriter.GetProbeCount());
        EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
        EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
        overwriter.SetProcessedMarker(); // of nothing any more
        EXPECT_EQ(image.size(), bytes.size());
    }
}

TEST(CZEKOverwriter, SecondFileIsOverwrittenAsByAnObjectOfItsOwn)
{
    // The first image is freed before the second is read: a flag written through an old address
    // would be a write to memory that is gone.
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "");
    const Bytes large = CModelBuilder::Build(MakeFullModel(26)).GetImage();
    SModel model;
    model.textures.resize(1);
    model.textures[0].flags = Old;
    const CModelBuilder builder = CModelBuilder::Build(model);
    CZEKOverwriter overwriter;
    for (const Bytes& first : {large, Cut(large, -1)})
    {
        folder.Write("first.zek", first);
        folder.Write("second.zek", builder.GetImage());
        testing::internal::CaptureStdout();
        EXPECT_EQ(first == large, overwriter.Overwrite(folder.GetPath("first.zek")));
        EXPECT_TRUE(overwriter.Overwrite(folder.GetPath("second.zek")));
        const std::string output = testing::internal::GetCapturedStdout();
        const std::string last = "ExistTextureCompression 0 0 0 1\n" + NoCubemaps + NoLightmaps;
        ASSERT_GE(output.size(), last.size());
        EXPECT_EQ(last, output.substr(output.size() - last.size()));
        const Bytes expected = Poke(
            Poke(builder.GetImage(), MarkerOffset, {1}), builder.GetTextureFlagOffsets()[0],
            {0, 0, 0, 1});
        EXPECT_EQ(expected, folder.Read("second.zek"));
    }
}
