#include <cstdint>
#include <new>

#include <gtest/gtest.h>

#include "Reliability/RunMain.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "Support/Heap.h"
#include "ZEKOverwriter/CZEKModel.h"

namespace
{

class AllocationFailureTest : public testing::TestWithParam<int>
{
};

/// Does something with the n-th allocation failing, from 1. False when that had it throw.
template <typename Work>
bool IsDoneWithout(int allocation, const Work& work)
{
    const testsupport::CAllocationWatch watch(
        [&](std::size_t)
        {
            if (--allocation == 0)
                throw std::bad_alloc();
        });
    try
    {
        EXPECT_TRUE(work());
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

} // namespace

TEST_P(AllocationFailureTest, AnyAllocationMayFailAndTheRunEndsInErrorWithNothingWrittenOrLeaked)
{
    const testsupport::CTemporaryFolder folder;
    const auto model = testsupport::CModelBuilder::Build(testsupport::MakeFullModel(GetParam()));
    folder.Write("model.zek", model.GetImage());
    folder.Write("tex_etc/000.pvr", "");
    const testsupport::FolderContents before = folder.GetContents();
    const std::string path = folder.GetPath("model.zek");

    SFault fault;
    for (fault.allocation = 1;; ++fault.allocation)
    {
        SCOPED_TRACE("allocation " + std::to_string(fault.allocation));
        const SMainResult result = RunMain(path, fault);
        ASSERT_EQ(result.leakedBlocks, 0u);
        ASSERT_FALSE(result.hasLeakedFile);
        if (!result.hasFaultCome)
        {
            EXPECT_EQ(result.status, 0) << result.output;
            break;
        }
        ASSERT_EQ(result.status, -1);
        ASSERT_NE(result.output.find("Error " + path + "\n"), std::string::npos) << result.output;
        ASSERT_EQ(folder.GetContents(), before);
    }
    RecordProperty("failures", fault.allocation - 1);
    EXPECT_NE(folder.GetContents(), before);
    EXPECT_GT(fault.allocation, 5);
}

TEST_P(AllocationFailureTest, AnyAllocationMayFailInALoadWhichThrowsAndLeavesAnEmptyModel)
{
    const auto builder = testsupport::CModelBuilder::Build(testsupport::MakeFullModel(GetParam()));
    const testsupport::Bytes& image = builder.GetImage();
    zek::SZEKRefusal refusal;
    int allocation = 0;
    for (bool hasFailed = true; hasFailed;)
    {
        SCOPED_TRACE("allocation " + std::to_string(++allocation));
        const std::size_t blocksBefore = testsupport::GetLiveBlocks();
        zek::CZEKModel model;
        const auto load = [&]
        { return model.Load(image.data(), static_cast<std::int64_t>(image.size()), refusal); };
        ASSERT_TRUE(load());
        hasFailed = !IsDoneWithout(allocation, load);
        if (hasFailed)
        {
            ASSERT_EQ(model.GetVersion(), 0);
            ASSERT_EQ(testsupport::GetLiveBlocks(), blocksBefore);
        }
    }
    EXPECT_GT(allocation, 5);
}

INSTANTIATE_TEST_SUITE_P(
    Version,
    AllocationFailureTest,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1));
