#include "ZekTool/Check/CReferenceSink.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "CheckerFixture.h"
#include "Independent/FileImage/FileImage.h"

using namespace testsupport;

namespace
{

class CReferenceSink : public CheckerFixture
{
protected:
    static SModel MakeModelWithNodes(const std::vector<int>& parents)
    {
        SModel model = MakeModel(25);
        model.meshes = {SMesh()};
        model.materials = {SMaterial()};
        model.textures = {STexture()};
        for (int parent : parents)
        {
            model.nodes.emplace_back();
            model.nodes.back().parentIndex = parent;
        }
        return model;
    }

    /// Returns where a field of a model lies, as findings say it.
    static std::string HexOf(const SModel& model, const std::string& field, int n)
    {
        std::ostringstream text;
        text << "0x" << std::hex << CModelBuilder::Build(model).GetOffset(field, n);
        return text.str();
    }

    /// Returns the image of a model whose vertices have the bones 0 to 3.
    static Bytes WithBones(const SModel& model)
    {
        const CModelBuilder builder = CModelBuilder::Build(model);
        Bytes image = builder.GetImage();
        const SMesh& mesh = model.meshes[0];
        for (int vertex = 0; mesh.streams[5] != 0 && vertex < mesh.vertexCount; ++vertex)
        {
            for (unsigned short bone = 0; bone < 4; ++bone)
                fileimage::WriteWord(
                    image.data() + builder.GetOffset("boneIndices", vertex) + 2 * bone, bone);
        }
        return image;
    }

    /// Returns a line about a position up to its value, or nothing when there is not just one line.
    static std::string UpToValue(const Lines& lines)
    {
        return lines.size() == 1 ? lines[0].substr(0, lines[0].find('(')) : "";
    }

    /// Checks a model of which a float is not finite.
    Lines CheckWithFloat(
        const SModel& model, const std::string& field, int n, std::size_t component, float value)
    {
        const CModelBuilder builder = CModelBuilder::Build(model);
        Bytes image = WithBones(model);
        fileimage::CFileImageMaker bytes;
        bytes.AddFloat(value);
        std::copy_n(
            bytes.GetImageData().begin(), sizeof(value),
            image.begin() + static_cast<std::ptrdiff_t>(
                                builder.GetOffset(field, n) + component * sizeof(value)));
        return Check(image);
    }
};

TEST_F(CReferenceSink, FindsNamesThatLeadToAnotherFolder)
{
    SModel model = MakeModel();
    model.textures = {{"wall.png", 1, None}, {"../wall.png", 1, None}};
    model.probes = {SProbe()};
    model.probes[0].name = "..";
    model.lightmaps = {{"a\\b.png", None}};
    const Lines lines = Check(model);
    ASSERT_EQ(3U, lines.size());
    EXPECT_EQ(
        "warning: texture 1 \"../wall.png\": name at 0x25: the name leads to another folder; "
        "rename "
        "it and export the model again [unsafe-name]",
        lines[0]);
    EXPECT_EQ("warning: probe 0 \"..\": name at ", lines[1].substr(0, 31));
    EXPECT_EQ("warning: lightmap 0 \"a\\b.png\": name at ", lines[2].substr(0, 39));
}

TEST_F(CReferenceSink, LeavesTheNamesOfOtherRecordsAlone)
{
    SModel model = MakeModelWithNodes({-1});
    model.nodes[0].name = "root/arm";
    model.materials[0].name = "..";
    model.meshes[0].morphNames = {"mouth/smile"};
    model.textures[0].name = "a/b";
    EXPECT_EQ(1U, Check(model).size());
}

TEST_F(CReferenceSink, FindsParentsThatAreNoNodes)
{
    EXPECT_EQ(Lines(), Check(MakeModelWithNodes({-1, 0, 1})));
    EXPECT_EQ(
        (Lines{
            "warning: node 0 \"node\": parentNodeIndex at 0x3d: -2, and there are 2 nodes; export "
            "the model again [parent-index]",
            "warning: node 1 \"node\": parentNodeIndex at 0x9a: 2, and there are 2 nodes; export "
            "the model again [parent-index]"}),
        Check(MakeModelWithNodes({-2, 2})));
}

TEST_F(CReferenceSink, FindsParentsInACircle)
{
    EXPECT_EQ(
        (Lines{"warning: node 1 \"node\": parentNodeIndex at 0x9a: the parents form a circle, 1 -> "
               "3 -> 1; break the circle and export the model again [parent-circle]"}),
        Check(MakeModelWithNodes({1, 3, 0, 1})));
}

TEST_F(CReferenceSink, FindsMeshesAndMaterialsThatAreNot)
{
    SModel model = MakeModelWithNodes({-1});
    model.nodes[0].meshIndex = 1;
    model.meshes[0].primitives.push_back({1, {0, 1, 2}});
    model.meshes[0].primitives.push_back({-1, {0, 1, 2}});
    EXPECT_EQ(
        (Lines{
            "warning: node 0 \"node\": meshIndex at 0x41: 1, and there is 1 mesh; export the model "
            "again [mesh-index]",
            "warning: mesh 0: primitives[1].materialIndex at " +
                HexOf(model, "primitives.materialIndex", 1) +
                ": 1, and there is 1 material; export the model again [material-index]"}),
        Check(model));
}

TEST_F(CReferenceSink, FindsTexturesThatAreNot)
{
    for (const char* name : {"main", "normal", "emission", "roughness"})
    {
        SModel model = MakeModelWithNodes({});
        model.materials[0].shaderType = 7;
        const CModelBuilder builder = CModelBuilder::Build(model);
        Bytes image = builder.GetImage();
        fileimage::WriteInt(
            image.data() + builder.GetOffset(name + std::string("TextureIndex")), 1);
        const Lines lines = Check(image);
        ASSERT_EQ(1U, lines.size());
        EXPECT_EQ(
            "warning: material 0 \"material\": " + std::string(name) + "TextureIndex at ",
            lines[0].substr(0, lines[0].find("0x")));
        EXPECT_NE(std::string::npos, lines[0].find(": 1, and there is 1 texture; "));
    }
}

TEST_F(CReferenceSink, LooksAtVerticesOnlyWhenAsked)
{
    SModel model = MakeModelWithNodes({});
    model.meshes[0].streams[5] = 1;
    model.meshes[0].primitives[0].indices = {0, 3, 2, 4};
    EXPECT_EQ(Lines(), Check(WithBones(model)));
    m_Options.isDeep = true;
    EXPECT_EQ(
        (Lines{
            "warning: mesh 0: vertices[0].boneIndices at 0x1e: 0, and there are 0 bones; export "
            "the model again [bone-index]",
            "warning: mesh 0: primitives[0].indices[1] at 0xb0: 3, and there are 3 vertices; "
            "export the model again [vertex-index]"}),
        Check(WithBones(model)));
    model.bones = std::vector<SBone>(4);
    model.meshes[0].primitives[0].indices = {0, 1, 2};
    EXPECT_EQ(Lines(), Check(WithBones(model)));
}

TEST_F(CReferenceSink, LeavesBonesWithoutWeightAlone)
{
    SModel model = MakeModelWithNodes({});
    model.meshes[0].streams[5] = 1;
    model.meshes[0].vertexCount = 1;
    model.meshes[0].primitives.clear();
    model.bones = std::vector<SBone>(3);
    m_Options.isDeep = true;
    EXPECT_EQ(1U, Check(WithBones(model)).size());
    EXPECT_EQ(Lines(), CheckWithFloat(model, "boneWeights", 0, 3, 0.0f));
}

TEST_F(CReferenceSink, FindsPositionsThatAreNone)
{
    SModel model = MakeModelWithNodes({-1});
    model.meshes[0].morphNames = {"smile"};
    model.nodes[0].colliderShape = 2;
    model.nodes[0].hasMesh = 1;
    m_Options.isDeep = true;
    EXPECT_EQ(Lines(), Check(model));
    EXPECT_EQ(
        ("warning: mesh 0: vertices[1].position at " + HexOf(model, "meshes.vertices.position", 1) +
         ": "),
        UpToValue(CheckWithFloat(model, "meshes.vertices.position", 1, 2, INFINITY)));
    EXPECT_EQ(
        ("warning: mesh 0: morphs[0].positions[0] at " + HexOf(model, "positions", 0) + ": "),
        UpToValue(CheckWithFloat(model, "positions", 0, 0, NAN)));
    EXPECT_EQ(
        ("warning: node 0 \"node\": colliderMesh.vertices[2].position at " +
         HexOf(model, "colliderMesh.vertices.position", 2) + ": "),
        UpToValue(CheckWithFloat(model, "colliderMesh.vertices.position", 2, 1, -INFINITY)));
}

TEST_F(CReferenceSink, NamesTheFirstPositionOfEachArrayThatIsNone)
{
    SModel model = MakeModelWithNodes({});
    model.meshes[0].morphNames = {"smile"};
    const CModelBuilder builder = CModelBuilder::Build(model);
    Bytes image = builder.GetImage();
    for (const char* field : {"meshes.vertices.position", "positions"})
    {
        for (int n : {1, 2})
            std::fill_n(
                image.begin() + static_cast<std::ptrdiff_t>(builder.GetOffset(field, n)), 4,
                static_cast<unsigned char>(0xFF));
    }
    m_Options.isDeep = true;
    const Lines lines = Check(image);
    ASSERT_EQ(2U, lines.size());
    EXPECT_NE(std::string::npos, lines[0].find("vertices[1].position"));
    EXPECT_NE(std::string::npos, lines[1].find("morphs[0].positions[1]"));
}

TEST_F(CReferenceSink, LooksAtIndicesOf32Bits)
{
    SModel model = MakeModelWithNodes({});
    model.meshes[0].vertexCount = 65537;
    model.meshes[0].primitives[0].indices = {65536, -1};
    m_Options.isDeep = true;
    EXPECT_EQ(
        (Lines{"warning: mesh 0: primitives[0].indices[1] at 0xc0052: -1, and there are 65537 "
               "vertices; export the model again [vertex-index]"}),
        Check(model));
}

} // namespace
