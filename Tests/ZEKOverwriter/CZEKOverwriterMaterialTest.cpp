#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "Independent/FileImage/CFileImageMaker.h"
#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

constexpr MemberWalker AnalyseMaterialList = &CZEKOverwriter::AnalyseMaterialList;

static_assert(std::is_same_v<
              decltype(&CZEKOverwriter::AnalyseColor),
              SColor (CZEKOverwriter::*)(fileimage::CFileImageAnalyser&)>);

/// A material with a name of two bytes, terminator included.
SMaterial MakeMaterial(int shaderType)
{
    SMaterial material;
    material.name = "m";
    material.shaderType = shaderType;
    return material;
}

CModelBuilder BuildList(int version, const std::vector<SMaterial>& materials)
{
    CModelBuilder builder(version);
    builder.AddMaterialList(materials);
    return builder;
}

/// The bytes in front of the first material of a list: its count and that of the probes.
int SizeBeforeMaterials(int version)
{
    return version >= 11 && version < 26 ? 8 : 4;
}

/// Expects a list of one material to take just so many bytes, those before the material not
/// counted.
void ExpectSize(std::int64_t size, int version, const SMaterial& material)
{
    SCOPED_TRACE(material.shaderType);
    testsupport::ExpectSize(
        SizeBeforeMaterials(version) + size, AnalyseMaterialList,
        BuildList(version, {material}).GetImage(), version);
}

/// Expects a list of one material to be accepted when all its bytes are there and not when one is
/// missing.
void ExpectNeedsLastByte(int version, const SMaterial& material)
{
    const Bytes image = BuildList(version, {material}).GetImage();
    EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, image, version)) << version;
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -1), version)) << version;
}

/// A list of one material of version 10, of shader type 4, that ends with the count of its UV
/// list.
Bytes BuildUVList(int flag, int count)
{
    SMaterial material = MakeMaterial(4);
    material.uvListFlag = flag;
    material.uvCount = 0;
    return SetInt(BuildList(10, {material}), "uvCount", count);
}

constexpr std::int64_t UpToUVListCount = 4 + 2 + 90 + 4 + 12;

/// Reads a texture transform from four floats.
zek::STextureTransform
ReadTransform(int version, float scaleU, float scaleV, float offsetU, float offsetV)
{
    fileimage::CFileImageMaker maker;
    for (float value : {scaleU, scaleV, offsetU, offsetV})
        maker.AddFloat(value);
    const Bytes bytes(maker.GetImageData());
    fileimage::CFileImageAnalyser reader(bytes.data(), bytes.data() + bytes.size());
    const zek::STextureTransform transform =
        CZEKOverwriter().AnalyseTextureTransform(reader, version);
    EXPECT_EQ(16, reader.GetPos());
    return transform;
}

float ReadOffsetV(int version, float scaleV, float offsetV)
{
    return ReadTransform(version, 1.0f, scaleV, 0.0f, offsetV).offset.v;
}

TEST(CZEKOverwriterMaterial, OneMaterialIsWalkedByItself)
{
    for (int version : {OldestVersion, 14, 25})
    {
        CModelBuilder builder(version);
        builder.AddMaterial(MakeMaterial(6));
        const Bytes image = builder.GetImage();
        testsupport::ExpectSize(SizeOf(image), &CZEKOverwriter::AnalyseMaterial, image, version);
    }
}

TEST(CZEKOverwriterMaterial, ShaderParametersAreWalkedByThemselves)
{
    const Walker walker = [](CZEKOverwriter& overwriter, auto& reader, int version)
    { return overwriter.AnalyseShaderParameters(reader, version, zek::EZEKShaderType::Shader6); };
    testsupport::ExpectSize(8, walker, Bytes(8), 25);
}

} // namespace

TEST(CZEKOverwriterMaterialList, CountOfZeroOrLessIsAnEmptySection)
{
    for (int count : {0, -1, LowestInt})
    {
        for (int version : {0, 7, 10, 26})
        {
            EXPECT_EQ(4, Walk(AnalyseMaterialList, IntAlone(count), version)) << count;
            EXPECT_EQ(4, Walk(AnalyseMaterialList, Extend(IntAlone(count), 200), version));
        }
    }
}

TEST(CZEKOverwriterMaterialList, CountOfZeroOrLessIsFollowedByTheProbesFromVersion11To25)
{
    for (int count : {0, -1, LowestInt})
    {
        for (int version : {11, 12, 16, 25})
        {
            CModelBuilder builder(version);
            builder.AddMaterialList({}, {SProbe(), SProbe()});
            const Bytes image = SetInt(builder, "materialCount", count);
            EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, Extend(image, 9), version));
        }
    }
}

TEST(CZEKOverwriterMaterialList, CountNeedsFourBytes)
{
    for (int size = 0; size < 4; ++size)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(IntAlone(0), size), 10)) << size;
}

TEST(CZEKOverwriterMaterialList, RecordsStandBackToBack)
{
    for (int version : {0, 7, 14, 25})
    {
        const Bytes image =
            BuildList(version, {MakeMaterial(3), MakeMaterial(8), MakeMaterial(7)}).GetImage();
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, image, version)) << version;
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, Extend(image, 200), version));
    }
}

TEST(CZEKOverwriterMaterialList, CountAboveTheRecordsThereIsRefused)
{
    const CModelBuilder builder = BuildList(14, {MakeMaterial(7), MakeMaterial(7)});
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, SetInt(builder, "materialCount", 3), 14));
}

TEST(CZEKOverwriterMaterialList, ProbesStandBeforeTheMaterialsFromVersion11To25)
{
    struct SRow
    {
        int version;
        int size;
    };
    // After the material count: the probe count; 28 bytes a probe; 8 more with its flags.
    const SRow rows[] = {
        {10, 4},          {11, 8},          {12, 8 + 3 * 28}, {15, 8 + 3 * 28},
        {16, 8 + 3 * 36}, {25, 8 + 3 * 36}, {26, 4},
    };
    for (const SRow& row : rows)
    {
        CModelBuilder builder(row.version);
        builder.AddMaterialList({}, {SProbe(), SProbe(), SProbe()});
        EXPECT_EQ(row.size, SizeOf(builder.GetImage())) << row.version;
        EXPECT_EQ(row.size, Walk(AnalyseMaterialList, builder.GetImage(), row.version))
            << row.version;
    }
}

TEST(CZEKOverwriterMaterialList, ProbesAreNamedByIndexAndTheirFlagsKeptFromVersion16)
{
    for (int version : {14, 20})
    {
        CModelBuilder builder(version);
        builder.AddMaterialList({MakeMaterial(7)}, {SProbe(), SProbe(), SProbe()});
        const Bytes& image = builder.GetImage();
        fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
        CZEKOverwriter overwriter;
        ASSERT_TRUE(overwriter.AnalyseMaterialList(reader, version));
        EXPECT_EQ(SizeOf(image), reader.GetPos());
        EXPECT_EQ(3, overwriter.GetProbeCount());
        EXPECT_EQ((std::vector<std::string>{"0", "1", "2"}), overwriter.GetProbeNameList());
        ASSERT_EQ(version < 16 ? 0u : 3u, overwriter.GetProbeFlagQuadList().size());
        for (std::size_t i = 0; i < overwriter.GetProbeFlagQuadList().size(); ++i)
        {
            EXPECT_EQ(
                image.data() + builder.GetProbeFlagOffsets()[i],
                overwriter.GetProbeFlagQuadList()[i][0]);
        }
    }
}

TEST(CZEKOverwriterMaterialList, ProbeCountOfZeroOrLessMeansNone)
{
    const CModelBuilder builder = BuildList(20, {MakeMaterial(4)});
    for (int count : {0, -1, LowestInt})
    {
        const Bytes image = SetInt(builder, "probeCount", count);
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, image, 20)) << count;
    }
}

TEST(CZEKOverwriterMaterialList, FailingProbeSectionIsRefused)
{
    CModelBuilder builder(16);
    builder.AddMaterialList({}, {SProbe()});
    const Bytes& image = builder.GetImage();
    for (std::int64_t size = 4; size < SizeOf(image); ++size)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, size), 16)) << size;
}

TEST(CZEKOverwriterMaterial, NameWithoutTerminatorIsRefused)
{
    CModelBuilder builder(7);
    builder.AddInt("materialCount", 1);
    builder.AddBytes("materials.name", std::string(200, 'm'));
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, builder.GetImage(), 7));
}

TEST(CZEKOverwriterMaterial, EmptyNameIsAccepted)
{
    SMaterial material = MakeMaterial(4);
    material.name = "";
    ExpectSize(1 + 90, 7, material);
}

TEST(CZEKOverwriterMaterial, SizeWithoutShaderParametersInEachVersion)
{
    struct SRow
    {
        int version;
        int size;
    };
    const SRow rows[] = {
        {0, 57},  {2, 57},            // type, blend, cutoff, a flag, two colours, three indices
        {3, 58},                      // first flag
        {4, 74},  {6, 74},            // main transform
        {7, 90},  {9, 90},            // second transform
        {10, 94},                     // UV list flag
        {11, 98}, {12, 98},           // legacy int
        {13, 99}, {14, 99}, {23, 99}, // second flag
        {24, 95}, {25, 95}, {26, 95}, // no legacy int
    };
    for (const SRow& row : rows)
        ExpectSize(2 + row.size, row.version, MakeMaterial(4));
}

TEST(CZEKOverwriterMaterial, FixedFieldsDemandARoughnessIndexThatTheRecordMayNotHave)
{
    struct SRow
    {
        int version;
        int demand;
        int size;
    };
    const SRow rows[] = {
        {0, 61, 57}, {2, 61, 57}, {3, 62, 58}, {4, 78, 74}, {6, 78, 74}, {7, 94, 90}, {9, 94, 90},
    };
    for (const SRow& row : rows)
    {
        const Bytes image = Extend(BuildList(row.version, {MakeMaterial(4)}).GetImage(), 100);
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, 6 + row.demand - 1), row.version))
            << row.version;
        EXPECT_EQ(6 + row.size, Walk(AnalyseMaterialList, Cut(image, 6 + row.demand), row.version))
            << row.version;
    }
}

TEST(CZEKOverwriterMaterial, FixedFieldsAreDemandedAsAWholeBeforeAnyIsRead)
{
    for (int version : {0, 3, 4, 7, 9, 10, 13, 24})
    {
        const std::int64_t begin = SizeBeforeMaterials(version) + 2;
        const int demand = version < 3    ? 61
                           : version < 4  ? 62
                           : version < 7  ? 78
                           : version < 13 ? 94
                                          : 95;
        const Bytes image = Extend(BuildList(version, {MakeMaterial(7)}).GetImage(), 4);
        EXPECT_EQ(begin, WhereRefused(AnalyseMaterialList, Cut(image, begin + demand - 1), version))
            << version;
    }
}

TEST(CZEKOverwriterMaterial, ShaderParametersAreDemandedAsAWholeBeforeAnyIsRead)
{
    struct SRow
    {
        int version;
        int shaderType;
        const char* first;
        int before; // bytes of parameters before those that are demanded
        int demand;
    };
    const SRow rows[] = {
        {10, 0, "parameters.floats", 0, 8},        {10, 7, "parameters.floats", 0, 8},
        {24, 1, "parameters.firstFloats", 0, 60},  {25, 1, "parameters.firstFloats", 60, 4},
        {25, 1, "parameters.firstFloats", 64, 20}, {10, 2, "parameters.firstColor", 0, 24},
        {10, 2, "parameters.firstColor", 24, 44},  {10, 3, "parameters.firstColor", 0, 52},
        {10, 6, "parameters.float", 0, 8},
    };
    for (const SRow& row : rows)
    {
        SMaterial material = MakeMaterial(row.shaderType);
        material.subFlag = 1;
        const CModelBuilder builder = BuildList(row.version, {material});
        const auto begin = static_cast<std::int64_t>(builder.GetOffset(row.first)) + row.before;
        EXPECT_EQ(
            begin,
            WhereRefused(
                AnalyseMaterialList, Cut(builder.GetImage(), begin + row.demand - 1), row.version))
            << "version " << row.version << ", type " << row.shaderType << ", " << row.demand;
    }
}

TEST(CZEKOverwriterMaterial, UVListIsDemandedAsAWholeBeforeAnyOfItIsRead)
{
    SMaterial material = MakeMaterial(4);
    material.uvListFlag = 1;
    const CModelBuilder builder = BuildList(10, {material});
    const auto block = static_cast<std::int64_t>(builder.GetOffset("uvListFloats"));
    const Bytes& image = builder.GetImage();
    EXPECT_EQ(block, WhereRefused(AnalyseMaterialList, Cut(image, block + 11), 10));
    EXPECT_EQ(block + 12, WhereRefused(AnalyseMaterialList, Cut(image, -1), 10));
}

TEST(CZEKOverwriterMaterial, MaterialOfVersion9WithoutRoughnessIndexThatEndsTheFileIsRefused)
{
    const Bytes image = BuildList(9, {MakeMaterial(4)}).GetImage();
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, image, 9));
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Extend(image, 3), 9));
    EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, Extend(image, 4), 9));
}

TEST(CZEKOverwriterMaterial, RecordFillsTheDemandByItselfFromVersion10)
{
    for (int version : {10, 11, 13, 23, 24, 25, 26})
        ExpectNeedsLastByte(version, MakeMaterial(4));
}

TEST(CZEKOverwriterMaterial, BytesOfEachShaderTypeInEachVersion)
{
    constexpr int versions[] = {0, 1, 2, 8, 9, 13, 14, 23, 24, 25, 26};
    struct SRow
    {
        int shaderType;
        int subFlag;
        int sizes[11]; // beyond those of a material of shader type 4
    };
    const SRow rows[] = {
        // version     0   1   2   8   9  13  14  23  24  25  26
        {LowestInt, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {-1, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {0, 1, {0, 0, 8, 8, 8, 8, 12, 12, 12, 12, 12}},
        {1, 0, {0, 0, 0, 0, 0, 0, 0, 0, 64, 68, 68}},
        {1, 1, {0, 0, 0, 0, 0, 0, 0, 0, 64, 88, 88}},
        {2, 1, {24, 24, 24, 24, 68, 68, 68, 68, 68, 68, 68}},
        {3, 1, {52, 52, 52, 52, 52, 52, 52, 52, 52, 52, 52}},
        {4, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {5, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {6, 1, {8, 8, 8, 8, 8, 8, 8, 8, 8, 8, 8}},
        {7, 1, {4, 4, 12, 12, 12, 12, 12, 12, 12, 12, 12}},
        {8, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {HighestInt, 1, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    };
    for (const SRow& row : rows)
    {
        for (std::size_t i = 0; i < std::size(versions); ++i)
        {
            SMaterial material = MakeMaterial(row.shaderType);
            material.subFlag = row.subFlag;
            const std::int64_t common =
                SizeOf(BuildList(versions[i], {MakeMaterial(4)}).GetImage()) -
                SizeBeforeMaterials(versions[i]);
            ExpectSize(common + row.sizes[i], versions[i], material);
        }
    }
}

TEST(CZEKOverwriterMaterial, EachDemandOfTheShaderParametersIsRefusedOneByteShort)
{
    for (int shaderType : {0, 1, 2, 3, 6, 7})
    {
        for (int version : {10, 14, 24, 25})
        {
            SMaterial material = MakeMaterial(shaderType);
            ExpectNeedsLastByte(version, material);
            material.subFlag = 1;
            ExpectNeedsLastByte(version, material);
        }
    }
}

TEST(CZEKOverwriterMaterial, ShaderType2FailsWithoutItsSecondBlock)
{
    const Bytes image = BuildList(10, {MakeMaterial(2)}).GetImage();
    for (int missing = 1; missing <= 68; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -missing), 10)) << missing;
}

TEST(CZEKOverwriterMaterial, ShaderType1FailsWithoutItsBlockFromVersion24)
{
    const Bytes image = BuildList(24, {MakeMaterial(1)}).GetImage();
    for (int missing = 1; missing <= 60; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -missing), 24)) << missing;
}

TEST(CZEKOverwriterMaterial, ShaderType1FailsWithoutItsSubBlock)
{
    SMaterial material = MakeMaterial(1);
    material.subFlag = 1;
    const Bytes image = BuildList(25, {material}).GetImage();
    for (int missing = 1; missing <= 84; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -missing), 25)) << missing;
}

TEST(CZEKOverwriterMaterial, SubFlagOtherThanOneEndsTheRecord)
{
    const CModelBuilder builder = BuildList(25, {MakeMaterial(1)});
    for (int subFlag : {0, 2, -1, 257, LowestInt, HighestInt})
    {
        const Bytes image = SetInt(builder, "hasSubBlock", subFlag);
        EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, image, 25)) << subFlag;
    }
}

TEST(CZEKOverwriterMaterial, BlendModeAndTextureIndicesMayHaveAnyValue)
{
    const CModelBuilder builder = BuildList(14, {MakeMaterial(0)});
    for (const char* name :
         {"blendMode", "mainTextureIndex", "normalTextureIndex", "emissionTextureIndex",
          "roughnessTextureIndex", "legacyInt"})
    {
        for (int value : {LowestInt, -1, 1000, HighestInt})
        {
            const Bytes image = SetInt(builder, name, value);
            EXPECT_EQ(SizeOf(image), Walk(AnalyseMaterialList, image, 14)) << name << value;
        }
    }
}

TEST(CZEKOverwriterMaterial, MissingUVListFlagIsRefused)
{
    // A roughness index and the parameters after it leave the demand of the fixed fields met.
    const CModelBuilder builder = BuildList(10, {MakeMaterial(7)});
    const auto offset = static_cast<std::int64_t>(builder.GetOffset("hasUVList"));
    for (int size = 0; size < 4; ++size)
    {
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(builder.GetImage(), offset + size), 10))
            << size;
    }
}

TEST(CZEKOverwriterMaterial, UVListFlagOtherThanZeroCountsAsSet)
{
    for (int flag : {1, 2, 5, -1, 0x100, LowestInt, HighestInt})
    {
        SMaterial material = MakeMaterial(4);
        material.uvListFlag = flag;
        material.uvCount = 3;
        ExpectSize(2 + 90 + 4 + 12 + 3 * 8, 10, material);
        ExpectNeedsLastByte(10, material);
    }
}

TEST(CZEKOverwriterMaterial, UVListStandsBeforeTheLegacyInt)
{
    SMaterial material = MakeMaterial(4);
    material.uvListFlag = 1;
    material.uvCount = 2;
    ExpectSize(2 + 90 + 4 + 28 + 4, 11, material);
    ExpectNeedsLastByte(11, material);
}

TEST(CZEKOverwriterMaterial, UVListBlockNeedsTwelveBytes)
{
    const Bytes image = BuildUVList(1, 0);
    EXPECT_EQ(UpToUVListCount, Walk(AnalyseMaterialList, image, 10));
    for (int missing = 1; missing <= 12; ++missing)
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -missing), 10)) << missing;
}

TEST(CZEKOverwriterMaterial, UVListCountOfZeroOrLessMeansNoPairs)
{
    for (int count : {0, -1, -1000, LowestInt})
        EXPECT_EQ(UpToUVListCount, Walk(AnalyseMaterialList, BuildUVList(1, count), 10)) << count;
}

TEST(CZEKOverwriterMaterial, UVListCountWhoseProductWrapsBelowTheBytesLeftIsRefused)
{
    // In 32 bits, 8 times these counts is -8, 0, 0, 8 and negative.
    for (int count : {HighestInt, 0x20000000, 0x40000000, 0x20000001, 0x10000000})
    {
        const Bytes image = Extend(BuildUVList(1, count), 1000);
        EXPECT_EQ(Refused, Walk(AnalyseMaterialList, image, 10)) << count;
    }
}

TEST(CZEKOverwriterMaterial, NegativeUVListCountWhoseProductWrapsAboveTheBytesLeftIsRefused)
{
    // -0x18000000 * 8 is 0x40000000 in 32 bits.
    const Bytes image = Extend(BuildUVList(1, -0x18000000), 1000);
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, image, 10));
}

TEST(CZEKOverwriterMaterial, NegativeUVListCountWhoseProductWrapsToBytesThatAreThereIsAccepted)
{
    // -0x1fffffff * 8 is 8 in 32 bits.
    const Bytes image = BuildUVList(1, -0x1fffffff);
    EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Extend(image, 7), 10));
    EXPECT_EQ(UpToUVListCount, Walk(AnalyseMaterialList, Extend(image, 8), 10));
}

TEST(CZEKOverwriterMaterial, MissingLegacyIntIsRefused)
{
    for (int version : {11, 23})
    {
        const Bytes image = BuildList(version, {MakeMaterial(4)}).GetImage();
        for (int missing = 1; missing <= 4; ++missing)
            EXPECT_EQ(Refused, Walk(AnalyseMaterialList, Cut(image, -missing), version));
    }
}

TEST(CZEKOverwriterTextureTransform, IsScaleThenOffsetOfUAndV)
{
    const zek::STextureTransform transform = ReadTransform(18, 2.0f, 3.0f, 4.0f, 5.0f);
    EXPECT_EQ(SUV(2.0f, 3.0f), transform.scale);
    EXPECT_EQ(SUV(4.0f, 5.0f), transform.offset);
}

TEST(CZEKOverwriterTextureTransform, StandsStillByDefault)
{
    EXPECT_EQ(SUV(1.0f, 1.0f), zek::STextureTransform().scale);
    EXPECT_EQ(SUV(0.0f, 0.0f), zek::STextureTransform().offset);
}

TEST(CZEKOverwriterTextureTransform, OnlyTheVOffsetIsFlipped)
{
    const zek::STextureTransform transform = ReadTransform(19, 0.5f, 0.25f, 0.125f, 0.5f);
    EXPECT_EQ(SUV(0.5f, 0.25f), transform.scale);
    EXPECT_EQ(SUV(0.125f, 0.25f), transform.offset);
}

TEST(CZEKOverwriterTextureTransform, ScaleVOfOneKeepsTheOffsetInVersion18AndFlipsItInVersion19)
{
    EXPECT_EQ(0.25f, ReadOffsetV(18, 1.0f, 0.25f));
    EXPECT_EQ(-0.25f, ReadOffsetV(19, 1.0f, 0.25f));
}

TEST(CZEKOverwriterTextureTransform, ScaleVBelowOneFlipsTheOffsetInEveryVersion)
{
    for (int version : {0, 4, 7, 18, 19, 25})
    {
        EXPECT_EQ(0.25f, ReadOffsetV(version, 0.5f, 0.25f)) << version;
        EXPECT_EQ(2.75f, ReadOffsetV(version, -2.0f, 0.25f)) << version;
        const float justBelow = std::nextafter(1.0f, 0.0f); // 1 - 2^-24
        EXPECT_EQ(std::ldexp(1.0f, -24), ReadOffsetV(version, justBelow, 0.0f)) << version;
    }
}

TEST(CZEKOverwriterTextureTransform, ScaleVFromOneUpKeepsTheOffsetBeforeVersion19)
{
    for (int version : {0, 4, 18})
    {
        for (float scale : {1.0f, std::nextafter(1.0f, 2.0f), 3.0f, HUGE_VALF})
            EXPECT_EQ(0.25f, ReadOffsetV(version, scale, 0.25f)) << version << ", " << scale;
    }
}

TEST(CZEKOverwriterTextureTransform, ScaleVFromOneUpFlipsTheOffsetFromVersion19)
{
    for (int version : {19, 25, 26})
        EXPECT_EQ(-2.25f, ReadOffsetV(version, 3.0f, 0.25f)) << version;
}

TEST(CZEKOverwriterTextureTransform, ScaleVThatIsNotANumberKeepsTheOffsetBeforeVersion19)
{
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(0.25f, ReadOffsetV(18, notANumber, 0.25f));
    EXPECT_TRUE(std::isnan(ReadOffsetV(19, notANumber, 0.25f)));
}

TEST(CZEKOverwriterTextureTransform, OffsetIsSubtractedBeforeTheScale)
{
    // 1 - 2^-25 rounds to 1, twice; 1 - (2^-25 + 2^-25) does not.
    const float tiny = std::ldexp(1.0f, -25);
    EXPECT_EQ(1.0f, ReadOffsetV(19, tiny, tiny));
    // 1 - 2^24 is exact; 1 - -2^24 is not.
    const float large = std::ldexp(1.0f, 24);
    EXPECT_EQ(1.0f, ReadOffsetV(19, -large, large));
}

TEST(CZEKOverwriterColor, IsRedGreenBlueAlpha)
{
    fileimage::CFileImageMaker maker;
    for (float value : {0.125f, 0.25f, 0.5f, 0.75f, 9.0f})
        maker.AddFloat(value);
    const Bytes bytes(maker.GetImageData());
    fileimage::CFileImageAnalyser reader(bytes.data(), bytes.data() + bytes.size());
    const SColor color = CZEKOverwriter().AnalyseColor(reader);
    EXPECT_EQ(SColor(0.125f, 0.25f, 0.5f, 0.75f), color);
    EXPECT_EQ(16, reader.GetPos());
}
