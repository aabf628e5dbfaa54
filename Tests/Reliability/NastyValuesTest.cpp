#include <algorithm>

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Reliability/CSilence.h"
#include "Reliability/MemoryBound.h"
#include "Reliability/NastyModels.h"
#include "Support/CModelMap.h"
#include "Support/Heap.h"
#include "Support/SModel.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/SCompressionFamily.h"

using testsupport::Bytes;
using testsupport::CModelMap;
using testsupport::CTemporaryFolder;

namespace
{

constexpr int MarkerVersion = 21;
constexpr unsigned char Absent = 0;
constexpr unsigned char Present = 1;

bool HasMarker(const Bytes& image)
{
    return fileimage::ReadInt(image.data() + testsupport::VersionOffset) >= MarkerVersion;
}

/// Returns what the model must be after a pass, by an independent reading of it. Of all variants,
/// only that of the first texture for the last family is there.
Bytes GetExpected(const Bytes& image, const CModelMap& map)
{
    Bytes expected = image;
    const std::vector<std::size_t> textureFlags = map.GetTextureFlagOffsets();
    for (const auto& flags :
         {textureFlags, map.GetProbeFlagOffsets(), map.GetLightmapFlagOffsets()})
    {
        for (std::size_t offset : flags)
            std::fill_n(expected.data() + offset, zek::CompressionFamilyCount, Absent);
    }
    if (!textureFlags.empty())
        expected[textureFlags[0] + zek::CompressionFamilyCount - 1] = Present;
    if (HasMarker(image))
        expected[testsupport::MarkerOffset] = 1;
    return expected;
}

/// Does the pass on a copy of the model that fills its heap block to the last byte, and checks
/// that it ends as it must and keeps to what it may do.
void CheckPass(const Bytes& model, const std::string& path)
{
    Bytes image = model;
    const std::size_t bytesBefore = testsupport::GetLiveBytes() - image.size();
    testsupport::ResetPeak();
    bool isAccepted;
    {
        const CSilence silence;
        isAccepted = zek::CZEKOverwriter().OverwriteImage(image, path);
    }
    EXPECT_LE(testsupport::GetPeakBytes() - bytesBefore, GetMostHeapBytes(image.size()));
    ASSERT_EQ(image.size(), model.size());

    const CModelMap map(model);
    ASSERT_EQ(isAccepted, map.IsAccepted());
    if (isAccepted)
    {
        EXPECT_TRUE(image == GetExpected(model, map)) << "a flag, the marker or another byte";
        return;
    }
    EXPECT_TRUE(image == model) << "refused, and yet a byte changed";
}

class NastyValuesTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(NastyValuesTest, AnyFieldMayHoldAnythingAndThePassEndsCleanlyWithinItsMemory)
{
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "");
    const std::string path = folder.GetPath("model.zek");
    int modelCount = 0;
    ForEachNastyModel(
        GetParam(),
        [&](const SNastyModel& model)
        {
            SCOPED_TRACE(model.what);
            CheckPass(model.image, path);
            ++modelCount;
        });
    RecordProperty("models", modelCount);
    EXPECT_GT(modelCount, 100);
}

INSTANTIATE_TEST_SUITE_P(
    Version,
    NastyValuesTest,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1));
