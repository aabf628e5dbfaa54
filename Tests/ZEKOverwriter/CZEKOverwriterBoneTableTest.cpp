#include <type_traits>

#include <gtest/gtest.h>

#include "Walk.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

using namespace testsupport;
using zek::CZEKOverwriter;

namespace
{

static_assert(std::is_same_v<
              decltype(&CZEKOverwriter::AnalyseBoneTable),
              bool (CZEKOverwriter::*)(fileimage::CFileImageAnalyser&)>);

std::int64_t WalkBoneTable(const Bytes& bytes)
{
    return Walk(
        [](CZEKOverwriter& overwriter, fileimage::CFileImageAnalyser& reader, int)
        { return overwriter.AnalyseBoneTable(reader); },
        bytes, 0);
}

CModelBuilder BuildBoneTable(const std::vector<SBone>& bones)
{
    CModelBuilder builder(7);
    builder.AddBoneTable(bones);
    return builder;
}

} // namespace

TEST(CZEKOverwriterBoneTable, FewerThanFourBytesBeforeTheEndMeanThatThereIsNone)
{
    for (std::size_t left = 0; left < 4; ++left)
    {
        EXPECT_EQ(0, WalkBoneTable(Bytes(left, 0x00))) << left;
        EXPECT_EQ(0, WalkBoneTable(Bytes(left, 0xff))) << left;
    }
}

TEST(CZEKOverwriterBoneTable, CountOfZeroOrLessIsAnEmptyTable)
{
    for (int count : {0, -1, LowestInt})
    {
        EXPECT_EQ(4, WalkBoneTable(IntAlone(count))) << count;
        EXPECT_EQ(4, WalkBoneTable(Extend(IntAlone(count), 100))) << count;
    }
}

TEST(CZEKOverwriterBoneTable, BoneIsANameAndAnInt)
{
    const Bytes image = BuildBoneTable({SBone{"hip", 1}, SBone{"left leg", -1}}).GetImage();
    EXPECT_EQ(4 + (4 + 4) + (9 + 4), WalkBoneTable(image));
    EXPECT_EQ(4 + (4 + 4) + (9 + 4), WalkBoneTable(Extend(image, 100)));
}

TEST(CZEKOverwriterBoneTable, EmptyNameIsAccepted)
{
    EXPECT_EQ(4 + 1 + 4, WalkBoneTable(BuildBoneTable({SBone{"", 1}}).GetImage()));
}

TEST(CZEKOverwriterBoneTable, NameWithoutTerminatorIsRefused)
{
    CModelBuilder builder(7);
    builder.AddInt("boneCount", 1);
    builder.AddBytes("bones.name", "a name to the end");
    EXPECT_EQ(Refused, WalkBoneTable(builder.GetImage()));
}

TEST(CZEKOverwriterBoneTable, MissingBytesOfTheIntAreRefused)
{
    const Bytes image = BuildBoneTable({SBone(), SBone{"hip", 1}}).GetImage();
    for (int missing = 1; missing <= 4; ++missing)
        EXPECT_EQ(Refused, WalkBoneTable(Cut(image, -missing))) << missing;
}

TEST(CZEKOverwriterBoneTable, CountAboveTheBonesThereIsRefused)
{
    EXPECT_EQ(Refused, WalkBoneTable(SetInt(BuildBoneTable({SBone(), SBone()}), "boneCount", 3)));
}
