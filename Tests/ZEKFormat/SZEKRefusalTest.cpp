#include "ZEKFormat/SZEKRefusal.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Support/Bytes.h"
#include "Support/CModelBuilder.h"
#include "Support/CModelMap.h"
#include "Support/CTemporaryFolder.h"
#include "Support/IntLimits.h"

using namespace testsupport;
using zek::SZEKFault;
using zek::SZEKRefusal;
using zek::WhyRefused;

namespace
{

SZEKFault::EKind GetKind(SFault::EKind kind)
{
    if (kind == SFault::TooShort)
        return SZEKFault::TooShort;
    return kind == SFault::Unterminated ? SZEKFault::Unterminated : SZEKFault::WrongValue;
}

std::optional<SZEKRefusal> WhyImageRefused(const Bytes& image)
{
    // A block of exactly these bytes, so that a sanitizer sees a read past them.
    const Bytes block(image.begin(), image.end());
    return WhyRefused(block.data(), SizeOf(block));
}

/// Expects an image to be refused where and why the description says, or to be accepted.
void ExpectAsDescribed(const Bytes& image)
{
    const CModelMap map(image);
    const std::optional<SZEKRefusal> refusal = WhyImageRefused(image);
    ASSERT_EQ(map.IsAccepted(), !refusal.has_value());
    if (map.IsAccepted())
        return;
    const SFault& fault = map.GetFault();
    SCOPED_TRACE(refusal->GetText());
    EXPECT_EQ(GetKind(fault.kind), refusal->kind);
    EXPECT_EQ(fault.section, refusal->section);
    EXPECT_EQ(fault.index, refusal->index);
    EXPECT_EQ(fault.name, refusal->name);
    EXPECT_EQ(fault.field, refusal->field);
    EXPECT_EQ(fault.offset, static_cast<std::size_t>(refusal->offset));
    if (fault.kind == SFault::TooShort)
    {
        EXPECT_EQ(fault.demanded, refusal->demanded);
    }
    if (fault.kind != SFault::WrongValue)
    {
        EXPECT_EQ(fault.left, static_cast<std::size_t>(refusal->left));
    }
    if (fault.kind == SFault::WrongValue)
    {
        const bool isText = fault.field == "magic";
        EXPECT_EQ(isText ? "\"" + fault.value + "\"" : fault.value, refusal->value);
        EXPECT_EQ(fault.expected, refusal->expected);
    }
    ASSERT_FALSE(testing::Test::HasFailure());
}

/// The line for an image, or nothing when it is accepted.
std::string GetText(const Bytes& image)
{
    const std::optional<SZEKRefusal> refusal = WhyImageRefused(image);
    return refusal.has_value() ? refusal->GetText() : "";
}

std::string GetText(const SModel& model)
{
    return GetText(CModelBuilder::Build(model).GetImage());
}

/// The line for a model with another int in a field.
std::string GetTextWithInt(const SModel& model, const std::string& field, int value)
{
    const CModelBuilder builder = CModelBuilder::Build(model);
    Bytes image = builder.GetImage();
    fileimage::WriteInt(&image[builder.GetOffset(field)], value);
    return GetText(image);
}

/// The line for a model that ends so many bytes after the start of a field.
std::string GetTextCut(const SModel& model, const std::string& field, std::int64_t size)
{
    const CModelBuilder builder = CModelBuilder::Build(model);
    const auto offset = static_cast<std::int64_t>(builder.GetOffset(field));
    return GetText(Cut(builder.GetImage(), offset + size));
}

/// A model of one node that is called "box".
SModel MakeNodeModel(int version, int colliderShape = -1)
{
    SModel model;
    model.version = version;
    model.nodes.resize(1);
    model.nodes[0].name = "box";
    model.nodes[0].colliderShape = colliderShape;
    return model;
}

class RefusalOfVersion : public testing::TestWithParam<int>
{
};

INSTANTIATE_TEST_SUITE_P(
    Version, RefusalOfVersion, testing::Range(OldestVersion, UnknownVersion + 1));

} // namespace

TEST_P(RefusalOfVersion, SaysWhereAModelIsCut)
{
    SModel model = MakeFullModel(GetParam());
    model.tail = "tail";
    const Bytes image = CModelBuilder::Build(model).GetImage();
    for (std::int64_t size = 0; size <= SizeOf(image); ++size)
        ASSERT_NO_FATAL_FAILURE(ExpectAsDescribed(Cut(image, size)));
}

TEST_P(RefusalOfVersion, SaysWhichIntIsWrong)
{
    const CModelBuilder builder = CModelBuilder::Build(MakeFullModel(GetParam()));
    for (const SField& field : builder.GetFields())
    {
        if (field.kind != EFieldKind::Int)
            continue;
        Bytes image = builder.GetImage();
        for (const int value : {-1, 2, 0x55555556, HighestInt, -0x0aaaaaab})
        {
            fileimage::WriteInt(&image[field.offset], value);
            SCOPED_TRACE(field.path + " = " + std::to_string(value));
            ASSERT_NO_FATAL_FAILURE(ExpectAsDescribed(image));
        }
    }
}

TEST(Refusal, OfTheHeader)
{
    EXPECT_EQ("header: magic at 0x0: text without an end in the 0 bytes left", GetText(Bytes()));
    EXPECT_EQ(
        "header: magic at 0x0: text without an end in the 3 bytes left",
        GetText(Bytes{'Z', 'E', 'K'}));
    EXPECT_EQ(
        "header: magic at 0x0: \"ZEN\" instead of \"ZEK\"",
        GetText(Bytes{'Z', 'E', 'N', 0, 7, 0, 0, 0}));
    EXPECT_EQ("header: magic at 0x0: \"\" instead of \"ZEK\"", GetText(Bytes{0, 1, 2, 3}));
    const Bytes image = BuildEmpty(26).GetImage();
    EXPECT_EQ("header: version at 0x4: 4 bytes needed, 3 left", GetText(Cut(image, 7)));
    EXPECT_EQ(
        "header: version at 0x4: 6 instead of 7 or more", GetTextWithInt(SModel(), "version", 6));
    EXPECT_EQ("header: processedMarker at 0x8: 4 bytes needed, 2 left", GetText(Cut(image, 10)));
    EXPECT_EQ("header: zero at 0xc: 4 bytes needed, 0 left", GetText(Cut(image, 12)));
    EXPECT_EQ("header: zero at 0xc: -1 instead of 0", GetText(BuildEmpty(26, 1, -1).GetImage()));
}

TEST(Refusal, OfNodes)
{
    EXPECT_EQ(
        "nodes: nodeCount at 0x8: 4 bytes needed, 1 left",
        GetTextCut(MakeNodeModel(7), "nodeCount", 1));
    EXPECT_EQ(
        "node 0: name at 0xc: text without an end in the 3 bytes left",
        GetTextCut(MakeNodeModel(7), "name", 3));
    EXPECT_EQ(
        "node 0 \"box\": transform at 0x10: 52 bytes needed, 51 left",
        GetTextCut(MakeNodeModel(7), "localPos", 51));
    EXPECT_EQ(
        "node 0 \"box\": colliderShape at 0x40: 3 instead of -1, 0, 1 or 2",
        GetText(MakeNodeModel(7, 3)));
    EXPECT_EQ(
        "node 0 \"box\": collider at 0x44: 32 bytes needed, 31 left",
        GetTextCut(MakeNodeModel(7, 0), "colliderType", 31));

    SModel model = MakeNodeModel(25);
    model.nodes[0].offsetFlag = 2;
    EXPECT_EQ("node 0 \"box\": hasOffset at 0x48: 2 instead of 0 or 1", GetText(model));
    model = MakeNodeModel(25);
    model.nodes[0].referenceSelector = -1;
    EXPECT_EQ("node 0 \"box\": referenceSelector at 0x4c: -1 instead of 0 or 1", GetText(model));
    EXPECT_EQ(
        "node 0 \"box\": reservedBlock at 0x54: 20 bytes needed, 19 left",
        GetTextCut(MakeNodeModel(25), "reservedBlock", 19));
}

TEST(Refusal, OfAPartOfARecord)
{
    SModel model = MakeNodeModel(20, 2);
    model.nodes[0].hasMesh = 1;
    EXPECT_EQ(
        "node 0 \"box\": colliderMesh.vertices at 0x6e: 12 bytes needed, 0 left",
        GetTextCut(model, "position", 0));
    EXPECT_EQ(
        "node 0 \"box\": colliderMesh.vertices at 0x7a: 12 bytes needed, 11 left",
        GetTextCut(model, "position", 12 + 11));
    EXPECT_EQ(
        "node 0 \"box\": colliderMesh.primitives[0].indices at 0x9a: 6 bytes needed, 5 left",
        GetTextCut(model, "indices", 5));

    model = MakeFullModel(25);
    const std::string text = GetTextCut(model, "morphs.positions", 35);
    EXPECT_EQ(0u, text.find("mesh 1: morphs[0].positions at 0x")) << text;
    EXPECT_NE(std::string::npos, text.find(": 36 bytes needed, 35 left")) << text;
}

TEST(Refusal, OfListsIsSaidWithTheRealSizeWhereThe32BitProductPasses)
{
    SModel model;
    model.version = 15;
    model.meshes.resize(1);
    // 12 * 0x60000000 is 0x480000000, and 0x80000000 in 32 bits: below zero, which passes.
    const CModelBuilder builder = CModelBuilder::Build(model);
    const std::string left =
        std::to_string(builder.GetImage().size() - builder.GetOffset("position"));
    EXPECT_EQ(
        "mesh 0: vertices at 0x1a: 19327352832 bytes needed, " + left + " left",
        GetTextWithInt(model, "meshes.vertexCount", 0x60000000));
    // The same of a count below zero gives a product above.
    EXPECT_EQ(
        "mesh 0: vertices at 0x1a: 2147483644 bytes needed, " + left + " left",
        GetTextWithInt(model, "meshes.vertexCount", -0x0aaaaaab));
}

TEST(Refusal, IsNamedBySection)
{
    const SModel model = MakeFullModel(25);
    const auto getStart = [&](const std::string& field)
    {
        const std::string text = GetTextCut(model, field, 0);
        return text.substr(0, text.find(" at "));
    };
    EXPECT_EQ("materials: materialCount", getStart("materialCount"));
    EXPECT_EQ("material 2 \"material1\": material", getStart("shader1Index").substr(0, 34 + 1));
    EXPECT_EQ("probes: probeCount", getStart("probeCount"));
    EXPECT_EQ("probe 0: vectors", getStart("firstVector"));
    EXPECT_EQ("texture 0 \"first.png\": flags", getStart("textures.flags"));
    EXPECT_EQ("bone 0 \"bone\": value", getStart("bones.value"));
    EXPECT_EQ("lightmaps: lightmapSwitch", getStart("lightmapSwitch"));
    EXPECT_EQ(
        "lightmap 0 \"LightMap000.png\": flags",
        GetTextCut(MakeFullModel(26), "lightmaps.flags", 0).substr(0, 35));
}

TEST(Refusal, ShowsNamesInOneLine)
{
    SModel model = MakeNodeModel(7, 9);
    model.nodes[0].name = "a\nb\x1b\x7f\xe9\"%s";
    EXPECT_EQ(
        "node 0 \"a\\x0ab\\x1b\\x7f\xe9\"%s\": colliderShape at 0x46: 9 instead of -1, 0, 1 or 2",
        GetText(model));
    model.nodes[0].name.assign(80, 'n');
    EXPECT_EQ(0u, GetText(model).find("node 0 \"" + std::string(80, 'n') + "\": "));
    model.nodes[0].name.assign(81, 'n');
    EXPECT_EQ(0u, GetText(model).find("node 0 \"" + std::string(80, 'n') + "...\": "));
    Bytes longMagic(100, 'z');
    longMagic.back() = 0;
    EXPECT_EQ(
        "header: magic at 0x0: \"" + std::string(80, 'z') + "...\" instead of \"ZEK\"",
        GetText(longMagic));
}

TEST(Refusal, OfAFileIsThatOfItsImage)
{
    const CTemporaryFolder folder;
    const Bytes image = CModelBuilder::Build(MakeFullModel(25)).GetImage();
    for (std::int64_t size = 0; size <= SizeOf(image); size += 5)
    {
        folder.Write("model.zek", Cut(image, size));
        filesystem::CRandomAccessFile file;
        ASSERT_TRUE(file.Open(folder.GetPath("model.zek")));
        const std::optional<SZEKRefusal> refusal = WhyRefused(file);
        EXPECT_EQ(GetText(Cut(image, size)), refusal.has_value() ? refusal->GetText() : "");
    }
}

TEST(Refusal, OfAFileThatBecomesShorterSaysWhatCouldNotBeRead)
{
    const CTemporaryFolder folder;
    const std::string path = folder.GetPath("model.zek");
    for (const int version : {25, 26})
    {
        const Bytes image = CModelBuilder::Build(MakeFullModel(version)).GetImage();
        for (std::size_t size = 0; size < image.size(); size += 3)
        {
            folder.Write("model.zek", image);
            filesystem::CRandomAccessFile file;
            ASSERT_TRUE(file.Open(path));
            std::filesystem::resize_file(path, size);
            const std::optional<SZEKRefusal> refusal = WhyRefused(file);
            ASSERT_TRUE(refusal.has_value()) << size;
            EXPECT_EQ(SZEKFault::Unreadable, refusal->kind) << size;
            EXPECT_GT(refusal->offset + refusal->demanded, static_cast<std::int64_t>(size));
            EXPECT_NE(std::string::npos, refusal->GetText().find(" could not be read: "));
        }
    }
}

TEST(Refusal, OfAFileThatBecomesShorterNamesTheField)
{
    const CTemporaryFolder folder;
    const std::string path = folder.GetPath("model.zek");
    SModel model = MakeNodeModel(7);
    model.nodes[0].name.assign(70000, 'n');
    folder.Write("model.zek", CModelBuilder::Build(model).GetImage());
    filesystem::CRandomAccessFile file;
    ASSERT_TRUE(file.Open(path));
    const std::int64_t left = file.GetSize() - 12;
    std::filesystem::resize_file(path, 30000);
    const std::optional<SZEKRefusal> refusal = WhyRefused(file);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ(
        "node 0: name at 0xc: " + std::to_string(left) +
            " bytes could not be read: the file has become shorter, or its disk is faulty",
        refusal->GetText());
    EXPECT_EQ(left, refusal->left);
}
