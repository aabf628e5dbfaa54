#include <limits>

#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;
using zek::FlagQuad;

namespace
{

constexpr auto AnalyseReflectionProbe = &CZEKOverwriter::AnalyseReflectionProbe;

using Names = std::vector<std::string>;

SProbe MakeProbe(const std::string& name)
{
    SProbe probe;
    probe.name = name;
    return probe;
}

CModelBuilder BuildProbes(int version, const std::vector<SProbe>& probes)
{
    CModelBuilder builder(version);
    builder.AddProbeSection(probes);
    return builder;
}

bool WalkProbes(CZEKOverwriter& overwriter, const Bytes& image, int version)
{
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    return overwriter.AnalyseReflectionProbe(reader, version);
}

/// Expects two probes, named "p" and "", to take just size bytes and to need them all.
void ExpectSizeOfTwo(std::int64_t size, int version)
{
    const CModelBuilder builder = BuildProbes(version, {MakeProbe("p"), MakeProbe("")});
    ExpectSize(size, AnalyseReflectionProbe, builder.GetImage(), version);
}

} // namespace

TEST(CZEKOverwriterReflectionProbe, BeforeVersionElevenThereIsNoSection)
{
    for (int version : {0, 7, 10})
    {
        CZEKOverwriter overwriter;
        EXPECT_TRUE(WalkProbes(overwriter, IntAlone(3), version));
        EXPECT_EQ(0, overwriter.GetProbeCount()) << version;
        EXPECT_EQ(0, Walk(AnalyseReflectionProbe, IntAlone(3), version)) << version;
        EXPECT_EQ(0, Walk(AnalyseReflectionProbe, Bytes(), version)) << version;
    }
}

TEST(CZEKOverwriterReflectionProbe, VersionElevenBringsTheCountAlone)
{
    ExpectSizeOfTwo(4, 11);
    CZEKOverwriter overwriter;
    EXPECT_TRUE(WalkProbes(overwriter, IntAlone(3), 11));
    EXPECT_EQ(3, overwriter.GetProbeCount());
    EXPECT_EQ(Names(), overwriter.GetProbeNameList());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
}

TEST(CZEKOverwriterReflectionProbe, VersionTwelveBringsAnIntAndSixFloats)
{
    ExpectSizeOfTwo(4 + 2 * (4 + 24), 12);
    ExpectSizeOfTwo(4 + 2 * (4 + 24), 15);
}

TEST(CZEKOverwriterReflectionProbe, VersionSixteenBringsTheSecondIntAndTheFlags)
{
    ExpectSizeOfTwo(4 + 2 * (4 + 24 + 4 + 4), 16);
    ExpectSizeOfTwo(4 + 2 * (4 + 24 + 4 + 4), 25);
}

TEST(CZEKOverwriterReflectionProbe, VersionTwentySixBringsTheName)
{
    ExpectSizeOfTwo(4 + 2 * (4 + 24 + 4 + 4) + 2 + 1, 26);
    ExpectSizeOfTwo(4 + 2 * (4 + 24 + 4 + 4) + 2 + 1, UnknownVersion);
}

TEST(CZEKOverwriterReflectionProbe, VersionFourteenYieldsNamesAndNoQuads)
{
    CZEKOverwriter overwriter;
    EXPECT_TRUE(WalkProbes(overwriter, BuildProbes(14, {SProbe(), SProbe()}).GetImage(), 14));
    EXPECT_EQ(Names({"0", "1"}), overwriter.GetProbeNameList());
    EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty());
    EXPECT_EQ(2, overwriter.GetProbeCount());
}

TEST(CZEKOverwriterReflectionProbe, ThreeProbesInAVersionTwentyMaterialListYieldQuadsAndNames)
{
    CModelBuilder builder(20);
    builder.AddMaterialList({SMaterial()}, std::vector<SProbe>(3));
    CZEKOverwriter overwriter;
    fileimage::CFileImageAnalyser reader(
        builder.GetImage().data(), builder.GetImage().data() + builder.GetImage().size());
    EXPECT_TRUE(overwriter.AnalyseMaterialList(reader, 20));
    EXPECT_TRUE(reader.IsEnd());
    EXPECT_EQ(3u, overwriter.GetProbeFlagQuadList().size());
    EXPECT_EQ(Names({"0", "1", "2"}), overwriter.GetProbeNameList());
    EXPECT_EQ(3, overwriter.GetProbeCount());
}

TEST(CZEKOverwriterReflectionProbe, NamesBelowVersionTwentySixAreIndicesInDecimal)
{
    for (int version : {12, 16, 25})
    {
        CZEKOverwriter overwriter;
        const Bytes image = BuildProbes(version, std::vector<SProbe>(12)).GetImage();
        EXPECT_TRUE(WalkProbes(overwriter, image, version));
        EXPECT_EQ(
            Names({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}),
            overwriter.GetProbeNameList())
            << version;
    }
}

TEST(CZEKOverwriterReflectionProbe, NamesFromVersionTwentySixOnComeFromTheFileAsBytes)
{
    const Names names = {"Probe", "", "\x83\x5C%s\\x/y.z\xFF"};
    CZEKOverwriter overwriter;
    const Bytes image =
        BuildProbes(26, {MakeProbe(names[0]), MakeProbe(names[1]), MakeProbe(names[2])}).GetImage();
    EXPECT_TRUE(WalkProbes(overwriter, image, 26));
    EXPECT_EQ(names, overwriter.GetProbeNameList());
}

TEST(CZEKOverwriterReflectionProbe, NameWithoutTerminatorIsRefused)
{
    Bytes image = BuildProbes(26, {MakeProbe("Probe")}).GetImage();
    image.back() = 'e';
    EXPECT_EQ(Refused, Walk(AnalyseReflectionProbe, image, 26));
}

TEST(CZEKOverwriterReflectionProbe, FlagSlotsAreTheFourBytesAfterTheSecondInt)
{
    for (int version : {16, 25})
    {
        const Bytes image = BuildProbes(version, {SProbe(), SProbe()}).GetImage();
        CZEKOverwriter overwriter;
        EXPECT_TRUE(WalkProbes(overwriter, image, version));
        const unsigned char* p = image.data();
        EXPECT_EQ(
            std::vector(
                {FlagQuad({p + 36, p + 37, p + 38, p + 39}),
                 FlagQuad({p + 72, p + 73, p + 74, p + 75})}),
            overwriter.GetProbeFlagQuadList())
            << version;
    }
}

TEST(CZEKOverwriterReflectionProbe, FlagSlotsStandBeforeTheNameFromVersionTwentySixOn)
{
    const Bytes image = BuildProbes(26, {MakeProbe("ab"), MakeProbe("c")}).GetImage();
    CZEKOverwriter overwriter;
    EXPECT_TRUE(WalkProbes(overwriter, image, 26));
    const unsigned char* p = image.data();
    EXPECT_EQ(
        std::vector(
            {FlagQuad({p + 36, p + 37, p + 38, p + 39}),
             FlagQuad({p + 75, p + 76, p + 77, p + 78})}),
        overwriter.GetProbeFlagQuadList());
}

TEST(CZEKOverwriterReflectionProbe, CountOfZeroOrLessMeansNoRecordsAndIsKept)
{
    for (int version : {11, 12, 16, 26})
    {
        for (int count : {0, -1, LowestInt})
        {
            CZEKOverwriter overwriter;
            EXPECT_TRUE(WalkProbes(overwriter, IntAlone(count), version));
            EXPECT_EQ(count, overwriter.GetProbeCount()) << version;
            EXPECT_EQ(Names(), overwriter.GetProbeNameList()) << version;
            EXPECT_TRUE(overwriter.GetProbeFlagQuadList().empty()) << version;
            EXPECT_EQ(4, Walk(AnalyseReflectionProbe, Extend(IntAlone(count), 100), version));
        }
    }
}

TEST(CZEKOverwriterReflectionProbe, CountAboveTheRecordsThereIsRefused)
{
    const CModelBuilder builder = BuildProbes(26, {SProbe(), SProbe()});
    for (int count : {3, 65536, HighestInt})
        EXPECT_EQ(Refused, Walk(AnalyseReflectionProbe, SetInt(builder, "probeCount", count), 26))
            << count;
}

TEST(CZEKOverwriterReflectionProbe, FailureKeepsTheCountAtZeroAndTheProbesReadBefore)
{
    const CModelBuilder builder = BuildProbes(16, {SProbe(), SProbe()});
    const std::size_t secondFlags = builder.GetProbeFlagOffsets()[1];
    const Bytes image(
        builder.GetImage().begin(),
        builder.GetImage().begin() + static_cast<std::ptrdiff_t>(secondFlags) + 3);
    CZEKOverwriter overwriter;
    EXPECT_FALSE(WalkProbes(overwriter, image, 16));
    EXPECT_EQ(0, overwriter.GetProbeCount());
    EXPECT_EQ(Names({"0"}), overwriter.GetProbeNameList());
    EXPECT_EQ(1u, overwriter.GetProbeFlagQuadList().size());
}

TEST(CZEKOverwriterReflectionProbe, AnyValuesAreAccepted)
{
    SProbe probe;
    probe.value = LowestInt;
    probe.secondValue = -1;
    probe.floats.fill(std::numeric_limits<float>::quiet_NaN());
    const Bytes image = BuildProbes(26, {probe}).GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseReflectionProbe, image, 26));
}

TEST(CZEKOverwriterReflectionProbe, WalkFillsNoOtherList)
{
    CZEKOverwriter overwriter;
    EXPECT_TRUE(WalkProbes(overwriter, BuildProbes(26, {SProbe()}).GetImage(), 26));
    EXPECT_TRUE(overwriter.GetTextureFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapFlagQuadList().empty());
    EXPECT_TRUE(overwriter.GetLightmapNameList().empty());
}
