#include <filesystem>
#include <type_traits>

#include <gtest/gtest.h>

#include "Support/CTemporaryFolder.h"
#include "Support/Variants.h"
#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

using Detector = bool (CZEKOverwriter::*)(int, const std::string&);

static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseTextureCompression), Detector>);
static_assert(
    std::is_same_v<decltype(&CZEKOverwriter::AnalyseReflectionProbeCompression), Detector>);
static_assert(std::is_same_v<decltype(&CZEKOverwriter::AnalyseLightmapCompression), Detector>);

namespace
{

using FlagsList = std::vector<Flags>;

/// What a detector made of a section.
struct SDetection
{
    FlagsList flags; ///< of each item
    std::string output;
};

/// Walks a section and sets a detector on it. Whatever else the detector changes fails the test:
/// a byte beside the flags, or a file.
SDetection Detect(
    const CModelBuilder& builder,
    const std::vector<std::size_t>& flagOffsets,
    const Walker& walker,
    Detector detector,
    int version,
    const CTemporaryFolder& folder)
{
    const FolderContents contents = folder.GetContents();
    Bytes image = builder.GetImage();
    CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    EXPECT_TRUE(walker(overwriter, reader, version));

    SDetection detection;
    testing::internal::CaptureStdout();
    const bool result = (overwriter.*detector)(version, folder.GetPath("model.zek"));
    detection.output = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(result);

    Bytes expected = builder.GetImage();
    for (std::size_t offset : flagOffsets)
    {
        Flags flags;
        for (std::size_t family = 0; family < 4; ++family)
            expected[offset + family] = flags[family] = image[offset + family];
        detection.flags.push_back(flags);
    }
    EXPECT_EQ(expected, image) << "a byte beside the flags has changed";
    EXPECT_EQ(contents, folder.GetContents());
    return detection;
}

SDetection DetectTextures(const CTemporaryFolder& folder, int count, int version = 26)
{
    CModelBuilder builder(version);
    builder.AddTextureList(
        std::vector<STexture>(static_cast<std::size_t>(count), {"name.png", 1, Old}));
    return Detect(
        builder, builder.GetTextureFlagOffsets(), &CZEKOverwriter::AnalyseTextureList,
        &CZEKOverwriter::AnalyseTextureCompression, version, folder);
}

SDetection DetectLightmaps(const CTemporaryFolder& folder, const std::vector<std::string>& names)
{
    std::vector<SLightmap> lightmaps;
    for (const std::string& name : names)
        lightmaps.push_back({name, Old});
    CModelBuilder builder(26);
    builder.AddLightmapList(lightmaps);
    return Detect(
        builder, builder.GetLightmapFlagOffsets(), &CZEKOverwriter::AnalyseLightmapList,
        &CZEKOverwriter::AnalyseLightmapCompression, 26, folder);
}

SDetection DetectProbes(
    const CTemporaryFolder& folder, const std::vector<std::string>& names, int version = 26)
{
    std::vector<SProbe> probes(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        probes[i].name = names[i];
        probes[i].flags = Old;
    }
    CModelBuilder builder(version);
    builder.AddProbeSection(probes);
    return Detect(
        builder, builder.GetProbeFlagOffsets(), &CZEKOverwriter::AnalyseReflectionProbe,
        &CZEKOverwriter::AnalyseReflectionProbeCompression, version, folder);
}

void WriteFacesOfAllFamilies(const CTemporaryFolder& folder, const std::string& probe)
{
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\" + probe, "pvr");
    WriteFaces(folder, "tex_reflection_cube_etc\\" + probe, "pvr");
    WriteFaces(folder, "tex_reflection_cube_astc\\" + probe, "pvr");
    WriteFaces(folder, "tex_reflection_cube_dxt\\" + probe, "dds");
}

} // namespace

TEST(CZEKOverwriterTextureCompression, NoTexturesPrintFourZeros)
{
    const CTemporaryFolder folder;
    const SDetection detection = DetectTextures(folder, 0);
    EXPECT_EQ("ExistTextureCompression 0 0 0 0\n", detection.output);
}

TEST(CZEKOverwriterTextureCompression, EachFamilyHasItsFolderAndExtension)
{
    const std::vector<std::pair<std::string, Flags>> families = {
        {"tex_pvrtc/000.pvr", {1, 0, 0, 0}},
        {"tex_etc/000.pvr", {0, 1, 0, 0}},
        {"tex_astc/000.pvr", {0, 0, 1, 0}},
        {"tex_dxt/000.dds", {0, 0, 0, 1}}};
    for (const auto& [name, flags] : families)
    {
        const CTemporaryFolder folder;
        folder.Write(name, "");
        EXPECT_EQ(FlagsList({flags}), DetectTextures(folder, 1).flags) << name;
    }
}

TEST(CZEKOverwriterTextureCompression, OnlyTheDxtVariantGivesTheLastFlagAndCount)
{
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "any bytes");
    const SDetection detection = DetectTextures(folder, 1);
    EXPECT_EQ(FlagsList({{0, 0, 0, 1}}), detection.flags);
    EXPECT_EQ("ExistTextureCompression 0 0 0 1\n", detection.output);
}

TEST(CZEKOverwriterTextureCompression, ExtensionOfAnotherFamilyIsNotTaken)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/000.dds", "");
    folder.Write("tex_etc/000.dds", "");
    folder.Write("tex_astc/000.dds", "");
    folder.Write("tex_dxt/000.pvr", "");
    EXPECT_EQ(FlagsList({None}), DetectTextures(folder, 1).flags);
}

TEST(CZEKOverwriterTextureCompression, FilesInTheFoldersOfCubemapsAreNotTaken)
{
    const CTemporaryFolder folder;
    folder.Write("tex_reflection_cube_pvrtc/000.pvr", "");
    EXPECT_EQ(FlagsList({None}), DetectTextures(folder, 1).flags);
}

TEST(CZEKOverwriterTextureCompression, FilesAreNamedByIndexAndNotByTheTexturesName)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/name.pvr", "");
    folder.Write("tex_pvrtc/name.png", "");
    folder.Write("tex_etc/001.pvr", "");
    EXPECT_EQ(FlagsList({None, {0, 1, 0, 0}}), DetectTextures(folder, 2).flags);
}

TEST(CZEKOverwriterTextureCompression, IndexIsPaddedToThreeDigits)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/010.pvr", "");
    folder.Write("tex_etc/10.pvr", "");
    folder.Write("tex_astc/0010.pvr", "");
    FlagsList expected(11, None);
    expected[10] = {1, 0, 0, 0};
    EXPECT_EQ(expected, DetectTextures(folder, 11).flags);
}

TEST(CZEKOverwriterTextureCompression, IndexGrowsBeyondThreeDigits)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/999.pvr", "");
    folder.Write("tex_pvrtc/1000.pvr", "");
    folder.Write("tex_dxt/1234.dds", "");
    FlagsList expected(1235, None);
    expected[999] = expected[1000] = {1, 0, 0, 0};
    expected[1234] = {0, 0, 0, 1};
    const SDetection detection = DetectTextures(folder, 1235);
    EXPECT_EQ(expected, detection.flags);
    EXPECT_EQ("ExistTextureCompression 2 0 0 1\n", detection.output);
}

TEST(CZEKOverwriterTextureCompression, CountsAreOfItemsPerFamily)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/000.pvr", "");
    folder.Write("tex_pvrtc/001.pvr", "");
    folder.Write("tex_pvrtc/002.pvr", "");
    folder.Write("tex_etc/001.pvr", "");
    folder.Write("tex_etc/002.pvr", "");
    folder.Write("tex_astc/001.pvr", "");
    folder.Write("tex_pvrtc/003.pvr", "beyond the last texture");
    const SDetection detection = DetectTextures(folder, 3);
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}, {1, 1, 1, 0}, {1, 1, 0, 0}}), detection.flags);
    EXPECT_EQ("ExistTextureCompression 3 2 1 0\n", detection.output);
}

TEST(CZEKOverwriterTextureCompression, EveryOldFlagIsOverwritten)
{
    const CTemporaryFolder folder;
    EXPECT_EQ(FlagsList({None, None}), DetectTextures(folder, 2).flags);
}

TEST(CZEKOverwriterTextureCompression, EmptyFileCounts)
{
    const CTemporaryFolder folder;
    folder.Write("tex_astc/000.pvr", "");
    EXPECT_EQ(FlagsList({{0, 0, 1, 0}}), DetectTextures(folder, 1).flags);
}

TEST(CZEKOverwriterTextureCompression, VersionIsNotConsulted)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/000.pvr", "");
    for (int version : {5, 7, 15, 25, 26, 1000})
    {
        const SDetection detection = DetectTextures(folder, 1, version);
        EXPECT_EQ(FlagsList({{0, 1, 0, 0}}), detection.flags) << version;
        EXPECT_EQ("ExistTextureCompression 0 1 0 0\n", detection.output) << version;
    }
}

TEST(CZEKOverwriterTextureCompression, TexturesOfVersionsWithoutFlagsAreNeitherMarkedNorCounted)
{
    const CTemporaryFolder folder;
    folder.Write("tex_etc/000.pvr", "");
    CModelBuilder builder(4);
    builder.AddTextureList({STexture(), STexture()});
    const SDetection detection = Detect(
        builder, {}, &CZEKOverwriter::AnalyseTextureList,
        &CZEKOverwriter::AnalyseTextureCompression, 4, folder);
    EXPECT_EQ("ExistTextureCompression 0 0 0 0\n", detection.output);
}

TEST(CZEKOverwriterLightmapCompression, NoLightmapsPrintFourZeros)
{
    const CTemporaryFolder folder;
    EXPECT_EQ("ExistLightmapCompression 0 0 0 0\n", DetectLightmaps(folder, {}).output);
}

TEST(CZEKOverwriterLightmapCompression, EachFamilyHasItsFolderAndExtension)
{
    const std::vector<std::pair<std::string, Flags>> families = {
        {"tex_pvrtc/LightMap000.pvr", {1, 0, 0, 0}},
        {"tex_etc/LightMap000.pvr", {0, 1, 0, 0}},
        {"tex_astc/LightMap000.pvr", {0, 0, 1, 0}},
        {"tex_dxt/LightMap000.dds", {0, 0, 0, 1}}};
    for (const auto& [name, flags] : families)
    {
        const CTemporaryFolder folder;
        folder.Write(name, "");
        EXPECT_EQ(FlagsList({flags}), DetectLightmaps(folder, {"LightMap000.png"}).flags) << name;
    }
}

TEST(CZEKOverwriterLightmapCompression, NameWithoutADotKeepsItsWhole)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/LightMap.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"LightMap"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, OnlyTheLastExtensionIsReplaced)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/a.b.pvr", "");
    folder.Write("tex_etc/a.pvr", "");
    folder.Write("tex_astc/a.b.png.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"a.b.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, DotInAFolderNameCountsWhenTheFileNameHasNone)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/a.pvr", "");
    folder.Write("tex_etc/a.b/c.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"a.b/c"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, TrailByteIsNotTakenForTheDot)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/a\x81.png.pvr", "");
    folder.Write("tex_etc/a\x81.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"a\x81.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, EmptyNameIsLookedForAsTheExtensionAlone)
{
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/.dds", "");
    EXPECT_EQ(FlagsList({{0, 0, 0, 1}}), DetectLightmaps(folder, {""}).flags);
}

TEST(CZEKOverwriterLightmapCompression, PercentInANameIsText)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/%s%d%n.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"%s%d%n.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, BackslashInANameStaysAsItIs)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/a\\b.pvr", "");
    folder.Write("tex_etc/a/b.pvr", "");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectLightmaps(folder, {"a\\b.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, EachLightmapIsLookedForUnderItsOwnName)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/first.pvr", "");
    folder.Write("tex_pvrtc/third.pvr", "");
    folder.Write("tex_etc/second.pvr", "");
    const SDetection detection = DetectLightmaps(folder, {"first.png", "second.tga", "third"});
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}}), detection.flags);
    EXPECT_EQ("ExistLightmapCompression 2 1 0 0\n", detection.output);
}

TEST(CZEKOverwriterLightmapCompression, FilesNamedByIndexAreNotTaken)
{
    const CTemporaryFolder folder;
    folder.Write("tex_pvrtc/000.pvr", "");
    EXPECT_EQ(FlagsList({None}), DetectLightmaps(folder, {"LightMap000.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, EveryOldFlagIsOverwritten)
{
    const CTemporaryFolder folder;
    EXPECT_EQ(FlagsList({None, None}), DetectLightmaps(folder, {"a.png", "b.png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, NameLongerThanTheFormatBufferIsAbsent)
{
    const CTemporaryFolder folder;
    const std::string longName(20000, 'l');
    EXPECT_EQ(
        FlagsList({None, None}), DetectLightmaps(folder, {longName, longName + ".png"}).flags);
}

TEST(CZEKOverwriterLightmapCompression, VersionIsNotConsulted)
{
    for (int version : {0, 7, 25, 26, 1000})
    {
        CZEKOverwriter overwriter;
        testing::internal::CaptureStdout();
        const bool result = overwriter.AnalyseLightmapCompression(version, "model.zek");
        EXPECT_EQ("ExistLightmapCompression 0 0 0 0\n", testing::internal::GetCapturedStdout());
        EXPECT_TRUE(result) << version;
    }
}

TEST(CZEKOverwriterReflectionProbeCompression, BelowVersionSixteenNothingIsWrittenOrPrinted)
{
    const CTemporaryFolder folder;
    WriteFacesOfAllFamilies(folder, "0");
    for (int version : {7, 10, 11, 12, 14, 15})
        EXPECT_EQ("", DetectProbes(folder, {"Probe"}, version).output) << version;
}

TEST(CZEKOverwriterReflectionProbeCompression, BelowVersionSixteenFlagsStayAsTheyAre)
{
    const CTemporaryFolder folder;
    WriteFacesOfAllFamilies(folder, "0");
    CModelBuilder builder(16);
    builder.AddProbeSection({SProbe()});
    Bytes image = builder.GetImage();
    CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    ASSERT_TRUE(overwriter.AnalyseReflectionProbe(reader, 16));
    EXPECT_TRUE(overwriter.AnalyseReflectionProbeCompression(15, folder.GetPath("model.zek")));
    EXPECT_EQ(builder.GetImage(), image);
}

TEST(CZEKOverwriterReflectionProbeCompression, NoProbesPrintFourZeros)
{
    const CTemporaryFolder folder;
    for (int version : {16, 25, 26})
        EXPECT_EQ("ExistCubemapCompression 0 0 0 0\n", DetectProbes(folder, {}, version).output);
}

TEST(CZEKOverwriterReflectionProbeCompression, EachFamilyHasItsFolderAndExtension)
{
    const std::vector<std::tuple<std::string, std::string, Flags>> families = {
        {"tex_reflection_cube_pvrtc\\Probe", "pvr", {1, 0, 0, 0}},
        {"tex_reflection_cube_etc\\Probe", "pvr", {0, 1, 0, 0}},
        {"tex_reflection_cube_astc\\Probe", "pvr", {0, 0, 1, 0}},
        {"tex_reflection_cube_dxt\\Probe", "dds", {0, 0, 0, 1}}};
    for (const auto& [start, extension, flags] : families)
    {
        const CTemporaryFolder folder;
        WriteFaces(folder, start, extension);
        EXPECT_EQ(FlagsList({flags}), DetectProbes(folder, {"Probe"}).flags) << start;
    }
}

TEST(CZEKOverwriterReflectionProbeCompression, ExtensionOfAnotherFamilyIsNotTaken)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\Probe", "dds");
    WriteFaces(folder, "tex_reflection_cube_dxt\\Probe", "pvr");
    EXPECT_EQ(FlagsList({None}), DetectProbes(folder, {"Probe"}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, AnyMissingFaceOfSixGivesZero)
{
    const std::string start = "tex_reflection_cube_pvrtc\\Probe\\reflection_cube_";
    for (char face = '0'; face <= '5'; ++face)
    {
        const CTemporaryFolder folder;
        WriteFacesOfAllFamilies(folder, "Probe");
        folder.Remove(start + face + ".pvr");
        folder.Write(start + "6.pvr", "no face");
        const SDetection detection = DetectProbes(folder, {"Probe"});
        EXPECT_EQ(FlagsList({{0, 1, 1, 1}}), detection.flags) << face;
        EXPECT_EQ("ExistCubemapCompression 0 1 1 1\n", detection.output) << face;
    }
}

TEST(CZEKOverwriterReflectionProbeCompression, AllSixFacesGiveOne)
{
    const CTemporaryFolder folder;
    WriteFacesOfAllFamilies(folder, "Probe");
    const SDetection detection = DetectProbes(folder, {"Probe"});
    EXPECT_EQ(FlagsList({All}), detection.flags);
    EXPECT_EQ("ExistCubemapCompression 1 1 1 1\n", detection.output);
}

TEST(CZEKOverwriterReflectionProbeCompression, FacesInRealFoldersAreNotFound)
{
    const CTemporaryFolder folder;
    for (char face = '0'; face <= '5'; ++face)
    {
        const std::string name = std::string("reflection_cube_") + face + ".pvr";
        folder.Write("tex_reflection_cube_pvrtc/Probe/" + name, "");
        folder.Write("tex_reflection_cube_etc/Probe\\" + name, "");
        folder.Write("tex_reflection_cube_astc\\Probe/" + name, "");
    }
    EXPECT_EQ(FlagsList({None}), DetectProbes(folder, {"Probe"}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, ProbesOfVersionsSixteenToTwentyFiveAreNamedByIndex)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\0", "pvr");
    WriteFaces(folder, "tex_reflection_cube_dxt\\10", "dds");
    WriteFacesOfAllFamilies(folder, "Probe");
    FlagsList expected(11, None);
    expected[0] = {1, 0, 0, 0};
    expected[10] = {0, 0, 0, 1};
    for (int version : {16, 25})
    {
        const SDetection detection =
            DetectProbes(folder, std::vector<std::string>(11, "Probe"), version);
        EXPECT_EQ(expected, detection.flags) << version;
        EXPECT_EQ("ExistCubemapCompression 1 0 0 1\n", detection.output) << version;
    }
}

TEST(CZEKOverwriterReflectionProbeCompression, EachProbeIsLookedForUnderItsOwnName)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_etc\\Hall", "pvr");
    WriteFaces(folder, "tex_reflection_cube_astc\\Yard.old", "pvr");
    const SDetection detection = DetectProbes(folder, {"Yard.old", "Attic", "Hall", "Hall"});
    EXPECT_EQ(FlagsList({{0, 0, 1, 0}, None, {0, 1, 0, 0}, {0, 1, 0, 0}}), detection.flags);
    EXPECT_EQ("ExistCubemapCompression 0 2 1 0\n", detection.output);
}

TEST(CZEKOverwriterReflectionProbeCompression, EmptyNameLeavesTwoBackslashesInARow)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\", "pvr");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectProbes(folder, {""}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, PercentInANameIsText)
{
    const CTemporaryFolder folder;
    WriteFaces(folder, "tex_reflection_cube_pvrtc\\%s%d%n", "pvr");
    EXPECT_EQ(FlagsList({{1, 0, 0, 0}}), DetectProbes(folder, {"%s%d%n"}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, NameLongerThanTheFormatBufferIsAbsent)
{
    const CTemporaryFolder folder;
    EXPECT_EQ(FlagsList({None}), DetectProbes(folder, {std::string(20000, 'p')}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, EveryOldFlagIsOverwritten)
{
    const CTemporaryFolder folder;
    EXPECT_EQ(FlagsList({None, None}), DetectProbes(folder, {"a", "b"}).flags);
}

TEST(CZEKOverwriterReflectionProbeCompression, NegativeProbeCountPrintsFourZeros)
{
    CZEKOverwriter overwriter;
    const Bytes image = IntAlone(-1);
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    ASSERT_TRUE(overwriter.AnalyseReflectionProbe(reader, 26));
    testing::internal::CaptureStdout();
    const bool result = overwriter.AnalyseReflectionProbeCompression(26, "model.zek");
    EXPECT_EQ("ExistCubemapCompression 0 0 0 0\n", testing::internal::GetCapturedStdout());
    EXPECT_TRUE(result);
}

TEST(CZEKOverwriterCompression, MissingFolderAndUnopenableFileCountAsAbsent)
{
    const CTemporaryFolder folder;
    folder.MakeFolder("tex_etc");
    std::filesystem::create_symlink("nowhere", folder.GetPath("tex_etc/000.pvr"));
    EXPECT_EQ(FlagsList({None}), DetectTextures(folder, 1).flags);
}

TEST(CZEKOverwriterCompression, LinkToAFileCountsAsTheFile)
{
    const CTemporaryFolder folder;
    folder.Write("elsewhere", "");
    folder.MakeFolder("tex_etc");
    std::filesystem::create_symlink("../elsewhere", folder.GetPath("tex_etc/000.pvr"));
    EXPECT_EQ(FlagsList({{0, 1, 0, 0}}), DetectTextures(folder, 1).flags);
}

TEST(CZEKOverwriterCompression, TexturesAndLightmapsShareTheirFolders)
{
    const CTemporaryFolder folder;
    folder.Write("tex_astc/000.pvr", "");
    EXPECT_EQ(FlagsList({{0, 0, 1, 0}}), DetectTextures(folder, 1).flags);
    EXPECT_EQ(FlagsList({{0, 0, 1, 0}}), DetectLightmaps(folder, {"000.png"}).flags);
}

TEST(CZEKOverwriterCubemapCompression, ProbeWhoseNameIsMissingIsNotLookedFor)
{
    const CTemporaryFolder folder;
    WriteFacesOfAllFamilies(folder, "Probe");
    CModelBuilder builder(26);
    builder.AddProbeSection({SProbe(), SProbe()});
    // The second probe ends inside its name: two groups of flags, one name.
    Bytes image = Cut(builder.GetImage(), -2);
    const Bytes before = image;
    CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    ASSERT_FALSE(overwriter.AnalyseReflectionProbe(reader, 26));
    ASSERT_EQ(2u, overwriter.GetProbeFlagQuadList().size());
    ASSERT_EQ(1u, overwriter.GetProbeNameList().size());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(overwriter.AnalyseReflectionProbeCompression(26, folder.GetPath("model.zek")));
    EXPECT_EQ(NoCubemaps, testing::internal::GetCapturedStdout());
    EXPECT_EQ(before, image);
}
