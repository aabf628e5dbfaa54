#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Support/IntLimits.h"
#include "Tool.h"

using namespace testsupport;

namespace
{

/// The first bytes of a full model.
Bytes MakeCutModel(int version, std::size_t size)
{
    Bytes image = CModelBuilder::Build(MakeFullModel(version)).GetImage();
    image.resize(size);
    return image;
}

/// Expects a full model that ends inside a field to be refused.
void ExpectErrorInside(int version, const std::string& field)
{
    SCOPED_TRACE("version " + std::to_string(version) + ", inside " + field);
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(version));
    ExpectErrorForModel(MakeCutModel(version, builder.GetOffset(field) + 1));
}

/// Expects a run on an empty model of these marker bytes to leave those.
void ExpectMarker(int version, const Bytes& before, const Bytes& after)
{
    SCOPED_TRACE(version);
    const CTemporaryFolder folder;
    Bytes image = BuildEmpty(version).GetImage();
    std::copy(before.begin(), before.end(), image.begin() + 8);
    folder.Write("model.zek", image);
    std::copy(after.begin(), after.end(), image.begin() + 8);
    ExpectSuccess(folder, "model.zek", MakeCountLines(version, {}), "model.zek", image);
}

} // namespace

TEST(Header, FileOfZeroBytesIsAnError)
{
    ExpectErrorForModel(Bytes());
}

TEST(Header, UnterminatedMagicIsAnError)
{
    ExpectErrorForModel({'Z', 'E', 'K'});
}

TEST(Header, OtherMagicIsAnError)
{
    for (const std::string magic : {"ZEL", "zek", "ZE", "XEK"})
    {
        Bytes image = BuildEmpty(26).GetImage();
        std::copy_n(magic.c_str(), magic.length() + 1, image.begin());
        ExpectErrorForModel(image);
    }
}

TEST(Header, UnreadableVersionIsAnError)
{
    for (std::size_t size = 4; size < 8; ++size)
        ExpectErrorForModel(MakeCutModel(26, size));
}

TEST(Header, VersionSixIsAnErrorAndVersionSevenIsNot)
{
    Bytes image = BuildEmpty(7).GetImage();
    for (int version : {6, 0, -1, LowestInt})
    {
        fileimage::WriteInt(image.data() + 4, version);
        ExpectErrorForModel(image);
    }
    ExpectFlags(CTemporaryFolder(), MakeFullModel(7), {{None, None}, {}, {}});
}

TEST(Header, UnreadableMarkerIsAnErrorFromVersionTwentyOneOn)
{
    for (std::size_t size = 8; size < 12; ++size)
    {
        ExpectErrorForModel(MakeCutModel(21, size));
        ExpectErrorForModel(MakeCutModel(26, size));
    }
}

TEST(Header, UnreadableIntAfterTheMarkerIsAnErrorFromVersionTwentySixOn)
{
    for (std::size_t size = 12; size < 16; ++size)
        ExpectErrorForModel(MakeCutModel(26, size));
}

TEST(Header, IntAfterTheMarkerOtherThanZeroIsAnErrorFromVersionTwentySixOn)
{
    for (int value : {1, -1, 256, LowestInt})
    {
        ExpectErrorForModel(BuildEmpty(26, 0, value).GetImage());
        ExpectErrorForModel(BuildEmpty(UnknownVersion, 1, value).GetImage());
    }
}

TEST(Header, FailingSectionIsAnErrorThatPrintsNoCounts)
{
    for (const char* field :
         {"nodeCount", "nodes.name", "meshCount", "meshes.vertexCount", "materialCount",
          "probeCount", "probes.value", "materials.name", "textureCount", "textures.name",
          "textures.clamp", "textures.flags", "boneCount", "bones.name", "lightmapCount",
          "lightmapSwitch", "trailingInt"})
    {
        ExpectErrorInside(25, field);
    }
    for (const char* field :
         {"textureCount", "textures.name", "textures.flags", "probeCount", "probes.value",
          "probes.flags", "probes.name", "lightmapCount", "lightmaps.name", "lightmaps.flags",
          "lightmapSwitch", "trailingInt"})
    {
        ExpectErrorInside(26, field);
    }
}

TEST(Header, MarkerOfZerosBecomesOne)
{
    for (int version : {21, 25, 26, UnknownVersion})
        ExpectMarker(version, {0, 0, 0, 0}, {1, 0, 0, 0});
}

TEST(Header, OnlyTheFirstByteOfTheMarkerChanges)
{
    for (int version : {21, 26})
    {
        ExpectMarker(version, {5, 2, 0, 0}, {1, 2, 0, 0});
        ExpectMarker(version, {255, 255, 255, 255}, {1, 255, 255, 255});
        ExpectMarker(version, {0, 0, 0, 1}, {1, 0, 0, 1});
        ExpectMarker(version, {1, 0, 0, 0}, {1, 0, 0, 0});
    }
}

TEST(Header, VersionTwentyHasNoMarker)
{
    const CTemporaryFolder folder;
    const Bytes image = BuildEmpty(20).GetImage();
    ASSERT_EQ(0, image[8]) << "the node count, where later versions have the marker";
    folder.Write("model.zek", image);
    ExpectSuccess(folder, "model.zek", MakeCountLines(20, {}), "model.zek", image);
}

TEST(Header, EmptyVersionSevenIsWrittenBackAsItWas)
{
    const CTemporaryFolder folder;
    const Bytes image = BuildEmpty(7).GetImage();
    folder.Write("model.zek", image);
    ExpectSuccess(folder, "model.zek", NoTextures + NoLightmaps, "model.zek", image);
}
