#include "ZEKFormat/CZEKVisitor.h"

#include <filesystem>
#include <fstream>
#include <utility>

#include <gtest/gtest.h>

#include "Events.h"
#include "Independent/FileImage/FileImage.h"
#include "Support/Bytes.h"
#include "Support/CModelBuilder.h"
#include "Support/CModelMap.h"

using namespace testsupport;
using zek::EZEKFieldType;
using zek::SZEKField;

namespace
{

filesystem::CRandomAccessFile& Open(filesystem::CRandomAccessFile& file, const std::string& path)
{
    EXPECT_TRUE(file.Open(path));
    return file;
}

/// Expects a visitor to hear the same of an image and of a file, which the description says.
void ExpectEvents(const Bytes& image)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", image);
    const CModelMap map(image);
    for (const bool wantsElements : {false, true})
    {
        const Events expected = MakeEvents(map, image, wantsElements);
        CEventVisitor imageVisitor(wantsElements);
        const auto refusal = VisitFields(image.data(), SizeOf(image), imageVisitor);
        ASSERT_EQ(map.IsAccepted(), !refusal.has_value());
        ASSERT_EQ(expected, imageVisitor.GetEvents());
        ASSERT_EQ(map.GetEnd(), static_cast<std::size_t>(imageVisitor.GetEnd()));

        CEventVisitor fileVisitor(wantsElements);
        filesystem::CRandomAccessFile file;
        VisitFields(Open(file, folder.GetPath("model.zek")), fileVisitor);
        ASSERT_EQ(expected, fileVisitor.GetEvents());
    }
}

SZEKField MakeField(EZEKFieldType type, const Bytes& bytes)
{
    return {"path", 0, SizeOf(bytes), type, 1, bytes.data()};
}

class VisitorOfVersion : public testing::TestWithParam<int>
{
};

INSTANTIATE_TEST_SUITE_P(
    Version, VisitorOfVersion, testing::Range(OldestVersion, UnknownVersion + 1));

} // namespace

TEST_P(VisitorOfVersion, HearsOfEveryFieldOfImageAndFile)
{
    SModel model = MakeFullModel(GetParam());
    model.tail = "what follows is not walked";
    ExpectEvents(CModelBuilder::Build(model).GetImage());
    ExpectEvents(BuildEmpty(GetParam()).GetImage());
}

TEST_P(VisitorOfVersion, HearsOfWhatPrecedesTheFault)
{
    const Bytes image = CModelBuilder::Build(MakeFullModel(GetParam())).GetImage();
    for (std::int64_t size = 0; size < SizeOf(image); size += 29)
        ExpectEvents(Cut(image, size));
}

TEST(Visitor, HearsOfNamesThatAreLongerThanTheWindowOfAFile)
{
    for (const std::size_t length : {4095u, 4096u, 4097u, 70000u})
    {
        SModel model = MakeFullModel(26);
        model.textures[0].name.assign(length, 'a');
        model.lightmaps[1].name.assign(length, 'b');
        ExpectEvents(CModelBuilder::Build(model).GetImage());
        model = MakeFullModel(25);
        model.nodes[2].name.assign(length, 'c');
        model.meshes[1].morphNames[0].assign(length, 'd');
        ExpectEvents(CModelBuilder::Build(model).GetImage());
    }
}

TEST(Visitor, HearsOfBlocksThatLieAcrossTheWindowOfAFile)
{
    SModel model = MakeFullModel(25);
    model.nodes.resize(1);
    for (std::size_t length = 3900; length < 4100; ++length)
    {
        model.nodes[0].name.assign(length, 'n');
        ExpectEvents(CModelBuilder::Build(model).GetImage());
    }
}

TEST(Visitor, IsAskedForTheElementsOfEachArrayByItsPath)
{
    struct CUVVisitor : CEventVisitor
    {
        CUVVisitor() : CEventVisitor(false) {}
        bool IsElementsWanted(std::string_view path) override { return path == "materials[1].uvs"; }
    };
    const Bytes image = CModelBuilder::Build(MakeFullModel(25)).GetImage();
    CUVVisitor visitor;
    EXPECT_FALSE(VisitFields(image.data(), SizeOf(image), visitor).has_value());

    int elements = 0;
    int arrays = 0;
    for (const std::string& event : visitor.GetEvents())
    {
        elements += event.rfind("materials[1].uvs[", 0) == 0;
        arrays += event.rfind("materials[1].uvs at", 0) == 0;
        EXPECT_NE(0u, event.rfind("materials[3].uvs[", 0)) << event;
    }
    EXPECT_EQ(2, elements);
    EXPECT_EQ(0, arrays);
}

TEST(Visitor, NeedsToListenToFieldsAlone)
{
    struct CCounter : zek::CZEKVisitor
    {
        void OnField(const SZEKField&) override { ++count; }
        int count = 0;
    };
    const Bytes image = BuildEmpty(7).GetImage();
    CCounter counter;
    EXPECT_FALSE(VisitFields(image.data(), SizeOf(image), counter).has_value());
    EXPECT_EQ(2 + 6, counter.count);
}

TEST(Visitor, IsToldWhyTheFileIsRefused)
{
    const Bytes image = BuildEmpty(26, 0, 3).GetImage();
    CEventVisitor visitor(false);
    const auto refusal = VisitFields(image.data(), SizeOf(image), visitor);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ("header: zero at 0xc: 3 instead of 0", refusal->GetText());
}

TEST(Visitor, HearsOfFilesOver4GiB)
{
    // Sparse: it takes no room on the disk, and its vertices are not read.
    constexpr std::int64_t vertexCount = 62500000;
    constexpr std::int64_t vertexSize = 80;
    SModel model;
    model.version = 25;
    model.meshes.resize(1);
    model.meshes[0].vertexCount = 0;
    model.meshes[0].streams = {1, 1, 1, 1, 1, 1};
    model.meshes[0].primitives = {};
    const CModelBuilder builder = CModelBuilder::Build(model);
    const auto headSize = static_cast<std::streamsize>(builder.GetOffset("vertexCount") + 10);

    Bytes image = builder.GetImage();
    fileimage::WriteInt(&image[builder.GetOffset("vertexCount")], vertexCount);
    const CTemporaryFolder folder;
    const std::string path = folder.GetPath("model.zek");
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(image.data()), headSize);
    stream.seekp(headSize + vertexCount * vertexSize);
    stream.write(
        reinterpret_cast<const char*>(image.data()) + headSize,
        static_cast<std::streamsize>(image.size()) - headSize);
    stream.close();
    if (!stream)
        GTEST_SKIP() << "the file system does not take a sparse file of 5 GB";

    filesystem::CRandomAccessFile file;
    CEventVisitor visitor(false);
    const auto refusal = VisitFields(Open(file, path), visitor);
    EXPECT_FALSE(refusal.has_value()) << refusal->GetText();
    EXPECT_EQ(SizeOf(image) + vertexCount * vertexSize, visitor.GetEnd());

    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(visitor.GetEnd() - 1));
    CEventVisitor cutVisitor(false);
    const auto cutRefusal = VisitFields(Open(file, path), cutVisitor);
    ASSERT_TRUE(cutRefusal.has_value());
    EXPECT_EQ(visitor.GetEnd() - 4, cutRefusal->offset);
    EXPECT_EQ(0u, cutRefusal->GetText().find("lightmaps: trailingInt at 0x12a05f2"))
        << cutRefusal->GetText();
}

TEST(EZEKFieldType, HasItsName)
{
    using Type = EZEKFieldType;
    const std::pair<Type, std::string> names[] = {{Type::Byte, "byte"},   {Type::Short, "short"},
                                                  {Type::Word, "word"},   {Type::Int, "int"},
                                                  {Type::Float, "float"}, {Type::Text, "text"}};
    for (const auto& [type, name] : names)
        EXPECT_EQ(name, zek::GetName(type));
}

TEST(Field, GivesNumbersOfEveryType)
{
    EXPECT_EQ(200.0, MakeField(EZEKFieldType::Byte, {200}).GetNumber());
    EXPECT_EQ(-2.0, MakeField(EZEKFieldType::Short, {0xFE, 0xFF}).GetNumber());
    EXPECT_EQ(65534.0, MakeField(EZEKFieldType::Word, {0xFE, 0xFF}).GetNumber());
    EXPECT_EQ(-2.0, MakeField(EZEKFieldType::Int, {0xFE, 0xFF, 0xFF, 0xFF}).GetNumber());
    EXPECT_EQ(0x04030201, MakeField(EZEKFieldType::Int, {1, 2, 3, 4}).GetNumber());
    EXPECT_EQ(-2.5, MakeField(EZEKFieldType::Float, {0, 0, 0x20, 0xC0}).GetNumber());
}

TEST(Field, GivesEachNumberOfSeveral)
{
    const Bytes bytes = {1, 0, 2, 0, 3, 0, 0, 0x80};
    const SZEKField shorts = MakeField(EZEKFieldType::Short, bytes);
    EXPECT_EQ(3.0, shorts.GetNumber(2));
    EXPECT_EQ(-32768.0, shorts.GetNumber(3));
    EXPECT_EQ(0x80000003, MakeField(EZEKFieldType::Int, bytes).GetNumber(1) + 0x100000000);
    EXPECT_EQ(2.0, MakeField(EZEKFieldType::Byte, bytes).GetNumber(2));
}

TEST(Field, GivesTextsWithoutTheirZero)
{
    EXPECT_EQ("ab", MakeField(EZEKFieldType::Text, {'a', 'b', 0}).GetText());
    EXPECT_EQ("", MakeField(EZEKFieldType::Text, {0}).GetText());
}

TEST(FieldType, HasASize)
{
    EXPECT_EQ(1, GetSize(EZEKFieldType::Byte));
    EXPECT_EQ(2, GetSize(EZEKFieldType::Short));
    EXPECT_EQ(2, GetSize(EZEKFieldType::Word));
    EXPECT_EQ(4, GetSize(EZEKFieldType::Int));
    EXPECT_EQ(4, GetSize(EZEKFieldType::Float));
    EXPECT_EQ(1, GetSize(EZEKFieldType::Text));
}
