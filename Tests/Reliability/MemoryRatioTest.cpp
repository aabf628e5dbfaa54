#include <algorithm>
#include <cstdio>

#include <gtest/gtest.h>

#include "Reliability/CSilence.h"
#include "Reliability/HostileModels.h"
#include "Reliability/MemoryBound.h"
#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Support/CTemporaryFolder.h"
#include "Support/Heap.h"
#include "ZEKOverwriter/CZEKModel.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

namespace
{

constexpr std::size_t HostileSize = 256 * 1024;

/// Does the pass and returns the most heap bytes that were in use, the image included.
std::size_t MeasurePass(const SHostileModel& model)
{
    const std::size_t bytesBefore = testsupport::GetLiveBytes();
    testsupport::Bytes image = model.image;
    testsupport::ResetPeak();
    bool isAccepted;
    {
        const CSilence silence;
        isAccepted = zek::CZEKOverwriter().OverwriteImage(image, "nowhere/model.zek");
    }
    EXPECT_EQ(isAccepted, model.isAccepted);
    return testsupport::GetPeakBytes() - bytesBefore;
}

/// Loads a model and returns the most heap bytes that were in use, the image left out.
template <typename Load>
std::size_t MeasureLoading(const SHostileModel& model, Load load)
{
    const std::size_t bytesBefore = testsupport::GetLiveBytes();
    testsupport::ResetPeak();
    zek::CZEKModel loaded;
    zek::SZEKRefusal refusal;
    EXPECT_EQ(load(loaded, refusal), model.isAccepted);
    return testsupport::GetPeakBytes() - bytesBefore;
}

std::size_t MeasureLoad(const SHostileModel& model)
{
    const auto size = static_cast<std::int64_t>(model.image.size());
    return MeasureLoading(
        model, [&](zek::CZEKModel& loaded, zek::SZEKRefusal& refusal)
        { return loaded.Load(model.image.data(), size, refusal); });
}

std::size_t MeasureLoadFromFile(const SHostileModel& model)
{
    const testsupport::CTemporaryFolder folder;
    folder.Write("model.zek", model.image);
    filesystem::CRandomAccessFile file;
    EXPECT_TRUE(file.Open(folder.GetPath("model.zek")));
    return MeasureLoading(
        model, [&](zek::CZEKModel& loaded, zek::SZEKRefusal& refusal)
        { return loaded.Load(file, refusal); });
}

/// Expects a measurement to stay within the bound for every hostile model.
void ExpectWithinBound(std::size_t (*measure)(const SHostileModel& model))
{
    double worst = 0.0;
    for (const SHostileModel& model : MakeHostileModels(HostileSize))
    {
        SCOPED_TRACE(model.what);
        const std::size_t bytes = measure(model);
        EXPECT_LE(bytes, GetMostHeapBytes(model.image.size()));
        const double ratio = static_cast<double>(bytes) / static_cast<double>(model.image.size());
        std::printf("%7.2f heap bytes per byte of file: %s\n", ratio, model.what.c_str());
        worst = std::max(worst, ratio);
    }
    std::printf("%7.2f is the worst\n", worst);
}

} // namespace

TEST(MemoryRatioTest, NoFileCostsMoreHeapThanTheBoundTimesItsSize)
{
    ExpectWithinBound(MeasurePass);
}

TEST(MemoryRatioTest, NoModelCostsMoreHeapToLoadThanTheBoundTimesTheSizeOfItsFile)
{
    ExpectWithinBound(MeasureLoad);
}

TEST(MemoryRatioTest, NoModelCostsMoreHeapToLoadFromAFileThanTheBoundTimesItsSize)
{
    ExpectWithinBound(MeasureLoadFromFile);
}
