#include <gtest/gtest.h>

#include "Reliability/RunMain.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

namespace
{

class AllocationFailureTest : public testing::TestWithParam<int>
{
};

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

INSTANTIATE_TEST_SUITE_P(
    Version,
    AllocationFailureTest,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1));
