// The position at which the overwriter's walkers stop is the one that the refusal names.

#include <algorithm>

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Support/CModelMap.h"
#include "Walk.h"
#include "ZEKFormat/SZEKRefusal.h"
#include "ZEKOverwriter/CZEKModel.h"

using namespace testsupport;
using zek::SZEKFault;
using zek::SZEKRefusal;

namespace
{

bool WalkFile(zek::CZEKOverwriter& overwriter, fileimage::CFileImageAnalyser& reader, int)
{
    int version;
    return overwriter.AnalyseHeader(reader, version) && overwriter.AnalyseSections(reader, version);
}

/// Where a walk is that stopped for this reason.
std::int64_t GetPosition(const SZEKRefusal& refusal, const Bytes& image)
{
    if (refusal.kind == SZEKFault::TooShort)
        return refusal.offset;
    if (refusal.kind == SZEKFault::Unterminated)
        return SizeOf(image);
    if (refusal.field == "magic")
        return std::find(image.begin(), image.end(), 0) - image.begin() + 1;
    return refusal.offset + 4;
}

zek::CZEKModel MakeLoadedModel()
{
    const Bytes image = CModelBuilder::Build(MakeFullModel(25)).GetImage();
    zek::CZEKModel model;
    SZEKRefusal refusal;
    EXPECT_TRUE(model.Load(image.data(), SizeOf(image), refusal));
    return model;
}

bool IsEmpty(const zek::CZEKModel& model)
{
    return model.GetVersion() == 0 && model.GetLightmapCount() == 0 &&
           model.GetNodeList().empty() && model.GetMeshList().empty() &&
           model.GetColliderMeshList().empty() && model.GetColliderMeshIndexList().empty() &&
           model.GetMaterialList().empty() && model.GetTextureList().empty() &&
           model.GetBoneNameList().empty() && model.GetProbeList().empty() &&
           model.GetLightmapList().empty();
}

/// Expects walkers, refusal, loader and the tests' own reading to agree on an image.
void ExpectAgreement(const Bytes& image)
{
    static const zek::CZEKModel Loaded = MakeLoadedModel();

    const auto refusal = zek::WhyRefused(image.data(), SizeOf(image));
    zek::CZEKModel model = Loaded;
    SZEKRefusal loaderRefusal;
    ASSERT_EQ(!refusal.has_value(), model.Load(image.data(), SizeOf(image), loaderRefusal));
    if (!refusal.has_value())
    {
        const CModelMap map(image);
        ASSERT_TRUE(map.IsAccepted());
        ASSERT_EQ(static_cast<std::int64_t>(map.GetEnd()), Walk(WalkFile, image, 0));
        return;
    }
    ASSERT_EQ(refusal->GetText(), loaderRefusal.GetText());
    ASSERT_TRUE(IsEmpty(model)) << refusal->GetText();
    ASSERT_EQ(GetPosition(*refusal, image), WhereRefused(WalkFile, image, 0)) << refusal->GetText();
}

class RefusalPosition : public testing::TestWithParam<int>
{
};

INSTANTIATE_TEST_SUITE_P(
    Version, RefusalPosition, testing::Range(OldestVersion, UnknownVersion + 1));

} // namespace

TEST_P(RefusalPosition, IsWhereTheWalkersStopInACutModel)
{
    const Bytes image = CModelBuilder::Build(MakeFullModel(GetParam())).GetImage();
    for (std::int64_t size = 0; size <= SizeOf(image); ++size)
        ASSERT_NO_FATAL_FAILURE(ExpectAgreement(Cut(image, size))) << size;
}

TEST_P(RefusalPosition, IsWhereTheWalkersStopAtAWrongInt)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(GetParam()));
    for (const SField& field : builder.GetFields())
    {
        if (field.kind != EFieldKind::Int)
            continue;
        Bytes image = builder.GetImage();
        for (const int value : {LowestInt, -1, 2, 6, 0x60000000, 0x55555556, HighestInt})
        {
            fileimage::WriteInt(&image[field.offset], value);
            ASSERT_NO_FATAL_FAILURE(ExpectAgreement(image)) << field.path << " = " << value;
        }
    }
}

TEST_P(RefusalPosition, IsWhereTheWalkersStopAtAWrongMagic)
{
    Bytes image = CModelBuilder::Build(MakeFullModel(GetParam())).GetImage();
    for (const std::size_t offset : {0u, 1u, 2u, 3u})
    {
        Bytes wrong = image;
        wrong[offset] = offset == 3 ? 'x' : 0;
        ASSERT_NO_FATAL_FAILURE(ExpectAgreement(wrong)) << offset;
    }
}
