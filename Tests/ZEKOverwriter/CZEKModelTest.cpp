// What a model file says is what the getters of the loaded model return, and a file that the
// walkers refuse leaves no model.

#include "ZEKOverwriter/CZEKModel.h"

#include <cmath>
#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "Independent/FileImage/FileImage.h"
#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"

using namespace testsupport;
using zek::CZEKModel;
using zek::SZEKRefusal;

namespace
{

/// A model file and its fields by their paths.
class CWrittenModel
{
public:
    explicit CWrittenModel(const SModel& model) : m_Builder(CModelBuilder::Build(model))
    {
        for (const SField& field : m_Builder.GetFields())
            m_Fields.emplace(field.path, field);
    }

    const Bytes& GetImage() const { return m_Builder.GetImage(); }
    bool Has(const std::string& path) const { return m_Fields.count(path) != 0; }

    std::vector<float> GetFloats(const std::string& path) const
    {
        const SField& field = m_Fields.at(path);
        std::vector<float> values;
        for (std::size_t i = 0; i < field.count; ++i)
            values.push_back(fileimage::ReadFloat(&GetImage()[field.offset + i * 4]));
        return values;
    }

    S3D GetS3D(const std::string& path) const
    {
        const std::vector<float> values = GetFloats(path);
        return S3D(values.at(0), values.at(1), values.at(2));
    }

    SUV GetUV(const std::string& path) const
    {
        const std::vector<float> values = GetFloats(path);
        return SUV(values.at(0), values.at(1));
    }

    SColor GetColor(const std::string& path) const
    {
        const std::vector<float> values = GetFloats(path);
        return SColor(values.at(0), values.at(1), values.at(2), values.at(3));
    }

private:
    CModelBuilder m_Builder;
    std::map<std::string, SField> m_Fields;
};

/// The full model with a value of its own in each field that a getter returns.
SModel MakeDistinctModel(int version)
{
    SModel model = MakeFullModel(version);
    int value = 100;
    for (SNode& node : model.nodes)
    {
        node.parentIndex = ++value;
        node.meshIndex = ++value;
        node.colliderType = ++value;
    }
    model.nodes[0].name = "\x83\x5C\x01";
    model.meshes[0].primitives[0] = {7, {2, 0, 65535}};
    model.meshes[1].vertexCount = 4;
    for (SMaterial& material : model.materials)
    {
        material.blendMode = ++value;
        material.cutoff = static_cast<float>(++value);
        material.mainTextureIndex = ++value;
        material.normalTextureIndex = ++value;
        material.emissionTextureIndex = ++value;
        material.roughnessTextureIndex = ++value;
        material.shader1Index = ++value;
        material.secondScaleV = 0.5f;
        material.secondOffsetV = 0.125f;
    }
    model.textures[0].flags = {0, 1, 2, 255};
    model.textures[1].flags = {1, 0, 0, 1};
    model.probes[0].flags = {1, 1, 0, 254};
    model.probes[1].flags = {0, 0, 1, 0};
    model.lightmaps[0].flags = {0, 1, 0, 128};
    model.lightmaps[1].flags = {1, 0, 1, 0};
    model.bones = {SBone{"hip", 3}, SBone{"", 4}, SBone{"\xE0\x2E", 5}};
    return model;
}

/// Loads a copy on the heap of exactly these bytes, so that a sanitizer sees a read after them, and
/// expects that the file is accepted.
CZEKModel Load(const Bytes& image)
{
    const Bytes exact(image);
    CZEKModel model;
    SZEKRefusal refusal;
    EXPECT_TRUE(model.Load(exact.data(), static_cast<std::int64_t>(exact.size()), refusal))
        << refusal.GetText();
    return model;
}

CZEKModel Load(const SModel& model)
{
    return Load(CModelBuilder::Build(model).GetImage());
}

/// Everything that the getters of a model return.
class CDump
{
public:
    explicit CDump(const CZEKModel& model)
    {
        Add("version", model.GetVersion(), model.GetLightmapCount());
        for (const zek::CZEKNode& node : model.GetNodeList())
            Add(node);
        for (int index : model.GetColliderMeshIndexList())
            Add("collider mesh", index);
        for (const zek::CZEKMesh& mesh : model.GetMeshList())
            Add(mesh);
        for (const zek::CZEKMesh& mesh : model.GetColliderMeshList())
            Add(mesh);
        for (const zek::CZEKMaterial& material : model.GetMaterialList())
            Add(material);
        for (const zek::CZEKTexture& texture : model.GetTextureList())
            Add(texture);
        for (const std::string& name : model.GetBoneNameList())
            Add("bone", name);
        for (const zek::SZEKNamedItem& probe : model.GetProbeList())
            Add("probe", probe);
        for (const zek::SZEKNamedItem& lightmap : model.GetLightmapList())
            Add("lightmap", lightmap);
    }

    std::string GetText() const { return m_Text.str(); }

private:
    template <typename... Values>
    void Add(const char* what, const Values&... values)
    {
        m_Text << what;
        (Write(values), ...);
        m_Text << '\n';
    }

    void Add(const zek::CZEKNode& node)
    {
        const zek::CZEKCollider& collider = node.GetCollider();
        Add("node", node.GetName(), node.GetLocalPos(), node.GetLocalRotate(), node.GetLocalScale(),
            node.GetParentNodeIndex(), node.GetMeshIndex());
        Add("collider", static_cast<int>(collider.GetShape()), static_cast<int>(collider.GetType()),
            collider.GetCenter(), collider.GetSize());
    }

    void Add(const zek::CZEKMesh& mesh)
    {
        Add("mesh", mesh.GetPosList(), mesh.GetNormalList(), mesh.GetTangentList(),
            mesh.GetUVList(), mesh.GetUV2List(), mesh.GetColorList(), mesh.GetBoundingBoxMinPos(),
            mesh.GetBoundingBoxMaxPos(), mesh.GetLightmapIndex());
        Add("lightmap", mesh.GetLightmapScale().x, mesh.GetLightmapScale().y,
            mesh.GetLightmapOffset().x, mesh.GetLightmapOffset().y);
        for (const zek::CZEKBoneWeight& weight : mesh.GetBoneWeightList())
            Add("bone weight", weight.GetIndexList(), weight.GetWeightList());
        for (const zek::CZEKPrimitive& primitive : mesh.GetZEKPrimitiveList())
            Add("primitive", primitive.GetMaterialIndex(), primitive.GetIndexListUSHORT(),
                primitive.GetIndexListINT());
        for (const zek::CZEKMorph& morph : mesh.GetMorphList())
            Add("morph", morph.GetName(), morph.GetPosList());
    }

    void Add(const zek::CZEKMaterial& material)
    {
        Add("material", material.GetName(), static_cast<int>(material.GetShaderType()),
            static_cast<int>(material.GetBlendMode()), material.GetCutoff(),
            material.IsDoubleSided(), material.IsUseVertexColor(), material.GetColor(),
            material.GetEmissionColor());
        Add("texture indices", material.GetTextureIndexMain(), material.GetTextureIndexNormal(),
            material.GetTextureIndexEmission(), material.GetTextureIndexRoughness());
        Add("transforms", material.GetTextureScaleMain(), material.GetTextureOffsetMain(),
            material.GetTexture1ScaleMain(), material.GetTexture1OffsetMain());
    }

    void Add(const zek::CZEKTexture& texture)
    {
        Add("texture", texture.GetFileName(), texture.IsClamp(),
            texture.GetTextureCompressionSupportedList());
    }

    void Write(int value) { m_Text << ' ' << value; }
    void Write(float value) { m_Text << ' ' << std::hexfloat << value; }
    void Write(const std::string& text) { m_Text << " \"" << text << '"'; }
    void Write(const S3D& value) { Write(std::vector<float>{value.x, value.y, value.z}); }
    void Write(const SUV& value) { Write(std::vector<float>{value.u, value.v}); }

    void Write(const SQuaternion& value)
    {
        Write(std::vector<float>{value.x, value.y, value.z, value.w});
    }

    void Write(const SColor& value)
    {
        Write(std::vector<float>{value.r, value.g, value.b, value.a});
    }

    void Write(const math3d::SColor32& value)
    {
        Write(std::vector<int>{value.r, value.g, value.b, value.a});
    }

    void Write(const zek::SZEKNamedItem& item)
    {
        Write(item.name);
        Write(item.compressionSupportedList);
    }

    template <typename Value, std::size_t Size>
    void Write(const std::array<Value, Size>& values)
    {
        Write(std::vector<Value>(values.begin(), values.end()));
    }

    template <typename Value>
    void Write(const std::vector<Value>& values)
    {
        m_Text << " (";
        for (const Value& value : values)
            Write(value);
        m_Text << ')';
    }

    std::ostringstream m_Text;
};

std::string Dump(const CZEKModel& model)
{
    return CDump(model).GetText();
}

std::string Element(const std::string& list, std::size_t index)
{
    return list + '[' + std::to_string(index) + ']';
}

class CZEKModelOfVersion : public testing::TestWithParam<int>
{
protected:
    /// Nodes, meshes, materials and bones.
    bool HasScene() const { return GetParam() < 26; }

    const SModel m_Model = MakeDistinctModel(GetParam());
    const CWrittenModel m_Written = CWrittenModel(m_Model);
    const CZEKModel m_Loaded = Load(m_Written.GetImage());
};

void ExpectCollider(
    const CWrittenModel& written,
    const std::string& path,
    const SNode& node,
    const zek::CZEKCollider& collider)
{
    EXPECT_EQ(node.colliderShape, static_cast<int>(collider.GetShape()));
    if (node.colliderShape == -1)
    {
        EXPECT_EQ(0, static_cast<int>(collider.GetType()));
        EXPECT_EQ(S3D(), collider.GetCenter());
        EXPECT_EQ(S3D(), collider.GetSize());
        return;
    }
    EXPECT_EQ(node.colliderType, static_cast<int>(collider.GetType()));
    EXPECT_EQ(written.GetS3D(path + ".colliderCenter"), collider.GetCenter());
    if (node.colliderShape == 1)
    {
        const float radius = written.GetFloats(path + ".colliderRadius").at(0);
        EXPECT_EQ(S3D(radius, radius, radius), collider.GetSize());
    }
    else
        EXPECT_EQ(written.GetS3D(path + ".colliderSize"), collider.GetSize());
}

TEST_P(CZEKModelOfVersion, IsKnown)
{
    EXPECT_EQ(GetParam(), m_Loaded.GetVersion());
}

TEST_P(CZEKModelOfVersion, Nodes)
{
    const auto& nodes = m_Loaded.GetNodeList();
    ASSERT_EQ(HasScene() ? m_Model.nodes.size() : 0, nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i)
    {
        const SNode& expected = m_Model.nodes[i];
        const std::string path = Element("nodes", i);
        SCOPED_TRACE(path);
        EXPECT_EQ(expected.name, nodes[i].GetName());
        EXPECT_EQ(m_Written.GetS3D(path + ".localPos"), nodes[i].GetLocalPos());
        const SQuaternion& rotate = nodes[i].GetLocalRotate();
        const std::vector<float> components = {rotate.x, rotate.y, rotate.z, rotate.w};
        EXPECT_EQ(m_Written.GetFloats(path + ".localRotate"), components);
        EXPECT_EQ(m_Written.GetS3D(path + ".localScale"), nodes[i].GetLocalScale());
        EXPECT_EQ(expected.parentIndex, nodes[i].GetParentNodeIndex());
        EXPECT_EQ(expected.meshIndex, nodes[i].GetMeshIndex());
        ExpectCollider(m_Written, path, expected, nodes[i].GetCollider());
    }
}

/// Expects a stream of a mesh to have that many values, each of which a function checks by the path
/// of its vertex.
template <typename Value, typename ExpectValue>
void ExpectStream(
    const std::string& path,
    std::size_t count,
    const std::vector<Value>& values,
    ExpectValue expectValue)
{
    ASSERT_EQ(count, values.size());
    for (std::size_t i = 0; i < count; ++i)
        expectValue(Element(path + ".vertices", i), values[i]);
}

void ExpectVertices(
    const CWrittenModel& written,
    const std::string& path,
    const StreamFlags& streams,
    std::size_t vertexCount,
    const zek::CZEKMesh& mesh)
{
    const auto count = [&](std::size_t stream) { return streams[stream] != 0 ? vertexCount : 0; };
    const auto expectS3D = [&](const char* name)
    {
        return [&written, name](const std::string& vertex, const S3D& value)
        { EXPECT_EQ(written.GetS3D(vertex + name), value); };
    };
    const auto expectUV = [&](const char* name)
    {
        return [&written, name](const std::string& vertex, const SUV& value)
        { EXPECT_EQ(written.GetUV(vertex + name), value); };
    };
    const auto expectColor = [](const std::string&, const math3d::SColor32& color) {
        EXPECT_EQ((Bytes{0xF0, 0xE6, 0xDC, 0xD2}), (Bytes{color.r, color.g, color.b, color.a}));
    };
    const auto expectWeight = [&](const std::string& vertex, const zek::CZEKBoneWeight& weight)
    {
        EXPECT_EQ((std::array<short, 4>{-1, -2, -3, -4}), weight.GetIndexList());
        const auto& weights = weight.GetWeightList();
        EXPECT_EQ(
            written.GetFloats(vertex + ".boneWeights"),
            std::vector<float>(weights.begin(), weights.end()));
    };
    ExpectStream(path, vertexCount, mesh.GetPosList(), expectS3D(".position"));
    ExpectStream(path, count(0), mesh.GetNormalList(), expectS3D(".normal"));
    ExpectStream(path, count(1), mesh.GetTangentList(), expectS3D(".tangent"));
    ExpectStream(path, count(2), mesh.GetUVList(), expectUV(".uv"));
    ExpectStream(path, count(3), mesh.GetUV2List(), expectUV(".uv2"));
    ExpectStream(path, count(4), mesh.GetColorList(), expectColor);
    ExpectStream(path, count(5), mesh.GetBoneWeightList(), expectWeight);
}

void ExpectPrimitive(
    int materialIndex, const std::vector<int>& indices, const zek::CZEKPrimitive& primitive)
{
    EXPECT_EQ(materialIndex, primitive.GetMaterialIndex());
    EXPECT_EQ(
        std::vector<unsigned short>(indices.begin(), indices.end()),
        primitive.GetIndexListUSHORT());
    EXPECT_TRUE(primitive.GetIndexListINT().empty());
}

void ExpectNotInLightmap(const zek::CZEKMesh& mesh)
{
    EXPECT_EQ(-1, mesh.GetLightmapIndex());
    EXPECT_EQ(S2D(1.0f, 1.0f), mesh.GetLightmapScale());
    EXPECT_EQ(S2D(0.0f, 0.0f), mesh.GetLightmapOffset());
}

void ExpectMorphs(
    const CWrittenModel& written,
    const std::string& path,
    const SMesh& expected,
    const std::vector<zek::CZEKMorph>& morphs)
{
    ASSERT_EQ(expected.morphNames.size(), morphs.size());
    const auto vertexCount = static_cast<std::size_t>(expected.vertexCount);
    for (std::size_t i = 0; i < morphs.size(); ++i)
    {
        EXPECT_EQ(expected.morphNames[i], morphs[i].GetName());
        ASSERT_EQ(vertexCount, morphs[i].GetPosList().size());
        const std::string positions = Element(path + ".morphs", i) + ".positions";
        for (std::size_t vertex = 0; vertex < vertexCount; ++vertex)
            EXPECT_EQ(written.GetS3D(Element(positions, vertex)), morphs[i].GetPosList()[vertex]);
    }
}

TEST_P(CZEKModelOfVersion, Meshes)
{
    const auto& meshes = m_Loaded.GetMeshList();
    ASSERT_EQ(HasScene() ? m_Model.meshes.size() : 0, meshes.size());
    for (std::size_t i = 0; i < meshes.size(); ++i)
    {
        const SMesh& expected = m_Model.meshes[i];
        const std::string path = Element("meshes", i);
        SCOPED_TRACE(path);
        ExpectVertices(
            m_Written, path, expected.streams, static_cast<std::size_t>(expected.vertexCount),
            meshes[i]);
        EXPECT_EQ(m_Written.GetS3D(path + ".boundingBoxMinPos"), meshes[i].GetBoundingBoxMinPos());
        EXPECT_EQ(m_Written.GetS3D(path + ".boundingBoxMaxPos"), meshes[i].GetBoundingBoxMaxPos());
        const auto& primitives = meshes[i].GetZEKPrimitiveList();
        ASSERT_EQ(expected.primitives.size(), primitives.size());
        for (std::size_t k = 0; k < primitives.size(); ++k)
            ExpectPrimitive(
                expected.primitives[k].materialIndex, expected.primitives[k].indices,
                primitives[k]);
        ExpectMorphs(m_Written, path, expected, meshes[i].GetMorphList());
        ExpectNotInLightmap(meshes[i]);
    }
}

TEST_P(CZEKModelOfVersion, ColliderMeshes)
{
    const bool hasMesh = GetParam() >= 20 && HasScene();
    const std::vector<int> indices =
        hasMesh ? std::vector<int>{-1, -1, -1, -1, 0} : std::vector<int>(HasScene() ? 5 : 0, -1);
    EXPECT_EQ(indices, m_Loaded.GetColliderMeshIndexList());
    ASSERT_EQ(hasMesh ? 1U : 0U, m_Loaded.GetColliderMeshList().size());
    if (!hasMesh)
        return;
    const zek::CZEKMesh& mesh = m_Loaded.GetColliderMeshList()[0];
    ExpectVertices(m_Written, "nodes[4].colliderMesh", {1, 0, 0, 0, 0, 0}, 3, mesh);
    EXPECT_EQ(S3D(), mesh.GetBoundingBoxMinPos());
    EXPECT_EQ(S3D(), mesh.GetBoundingBoxMaxPos());
    ASSERT_EQ(1U, mesh.GetZEKPrimitiveList().size());
    ExpectPrimitive(-1, {0, 1, 2}, mesh.GetZEKPrimitiveList()[0]);
    EXPECT_TRUE(mesh.GetMorphList().empty());
    ExpectNotInLightmap(mesh);
}

TEST_P(CZEKModelOfVersion, Materials)
{
    const auto& materials = m_Loaded.GetMaterialList();
    ASSERT_EQ(HasScene() ? m_Model.materials.size() : 0, materials.size());
    for (std::size_t i = 0; i < materials.size(); ++i)
    {
        const SMaterial& expected = m_Model.materials[i];
        const zek::CZEKMaterial& material = materials[i];
        const std::string path = Element("materials", i);
        SCOPED_TRACE(path);
        EXPECT_EQ(expected.name, material.GetName());
        EXPECT_EQ(expected.shaderType, static_cast<int>(material.GetShaderType()));
        EXPECT_EQ(expected.blendMode, static_cast<int>(material.GetBlendMode()));
        EXPECT_EQ(expected.cutoff, material.GetCutoff());
        EXPECT_EQ(m_Written.GetColor(path + ".color"), material.GetColor());
        EXPECT_EQ(m_Written.GetColor(path + ".emissionColor"), material.GetEmissionColor());
        EXPECT_EQ(expected.mainTextureIndex, material.GetTextureIndexMain());
        EXPECT_EQ(expected.normalTextureIndex, material.GetTextureIndexNormal());
        EXPECT_EQ(expected.emissionTextureIndex, material.GetTextureIndexEmission());
        const bool hasRoughness =
            expected.shaderType == 7 || (expected.shaderType == 0 && GetParam() >= 14);
        EXPECT_EQ(
            hasRoughness ? expected.roughnessTextureIndex : -1,
            material.GetTextureIndexRoughness());
        EXPECT_EQ(SUV(1.0f, 1.0f), material.GetTextureScaleMain());
        EXPECT_EQ(SUV(0.0f, GetParam() >= 19 ? -0.25f : 0.25f), material.GetTextureOffsetMain());
        EXPECT_EQ(SUV(1.0f, 0.5f), material.GetTexture1ScaleMain());
        EXPECT_EQ(SUV(0.0f, 0.375f), material.GetTexture1OffsetMain());
    }
}

TEST_P(CZEKModelOfVersion, MaterialFlags)
{
    // The third one is not kept.
    const std::array<unsigned char, 3> flags[] = {{0, 0, 1}, {1, 0, 1}, {0, 1, 0}, {2, 255, 0}};
    SModel model;
    model.version = GetParam();
    model.materials.resize(std::size(flags));
    for (std::size_t i = 0; i < std::size(flags); ++i)
        model.materials[i].flags = flags[i];
    const CZEKModel loaded = Load(model);
    const auto& materials = loaded.GetMaterialList();
    ASSERT_EQ(HasScene() ? std::size(flags) : 0, materials.size());
    for (std::size_t i = 0; i < materials.size(); ++i)
    {
        EXPECT_EQ(flags[i][0] != 0, materials[i].IsDoubleSided());
        EXPECT_EQ(GetParam() < 13 || flags[i][1] != 0, materials[i].IsUseVertexColor());
    }
}

TEST_P(CZEKModelOfVersion, Textures)
{
    const auto& textures = m_Loaded.GetTextureList();
    ASSERT_EQ(2U, textures.size());
    EXPECT_EQ("first.png", textures[0].GetFileName());
    EXPECT_TRUE(textures[0].IsClamp());
    EXPECT_EQ((std::vector<int>{0, 1, 2, 255}), textures[0].GetTextureCompressionSupportedList());
    EXPECT_EQ("", textures[1].GetFileName());
    EXPECT_FALSE(textures[1].IsClamp());
    EXPECT_EQ((std::vector<int>{1, 0, 0, 1}), textures[1].GetTextureCompressionSupportedList());
}

TEST_P(CZEKModelOfVersion, Bones)
{
    const std::vector<std::string> expected = {"hip", "", "\xE0\x2E"};
    EXPECT_EQ(HasScene() ? expected : std::vector<std::string>(), m_Loaded.GetBoneNameList());
}

TEST_P(CZEKModelOfVersion, Probes)
{
    using FlagInts = std::array<int, zek::CompressionFamilyCount>;
    const auto& probes = m_Loaded.GetProbeList();
    ASSERT_EQ(GetParam() < 12 ? 0U : 2U, probes.size());
    if (probes.empty())
        return;
    EXPECT_EQ(HasScene() ? "0" : "Probe", probes[0].name);
    EXPECT_EQ(HasScene() ? "1" : "Hall", probes[1].name);
    const bool hasFlags = GetParam() >= 16;
    EXPECT_EQ(hasFlags ? FlagInts({1, 1, 0, 254}) : FlagInts(), probes[0].compressionSupportedList);
    EXPECT_EQ(hasFlags ? FlagInts({0, 0, 1, 0}) : FlagInts(), probes[1].compressionSupportedList);
}

TEST_P(CZEKModelOfVersion, Lightmaps)
{
    using FlagInts = std::array<int, zek::CompressionFamilyCount>;
    EXPECT_EQ(2, m_Loaded.GetLightmapCount());
    const auto& lightmaps = m_Loaded.GetLightmapList();
    ASSERT_EQ(HasScene() ? 0U : 2U, lightmaps.size());
    if (lightmaps.empty())
        return;
    EXPECT_EQ("LightMap000.png", lightmaps[0].name);
    EXPECT_EQ("LightMap001.png", lightmaps[1].name);
    EXPECT_EQ(FlagInts({0, 1, 0, 128}), lightmaps[0].compressionSupportedList);
    EXPECT_EQ(FlagInts({1, 0, 1, 0}), lightmaps[1].compressionSupportedList);
}

/// Expects a model to be the same from an image and from a file with these bytes.
void ExpectSameFromFile(const Bytes& image, const CTemporaryFolder& folder)
{
    folder.Write("model.zek", image);
    filesystem::CRandomAccessFile file;
    ASSERT_TRUE(file.Open(folder.GetPath("model.zek")));
    CZEKModel model;
    SZEKRefusal refusal;
    EXPECT_TRUE(model.Load(file, refusal)) << refusal.GetText();
    EXPECT_EQ(Dump(Load(image)), Dump(model));
}

TEST_P(CZEKModelOfVersion, FileAndImageGiveTheSame)
{
    ExpectSameFromFile(m_Written.GetImage(), CTemporaryFolder());
}

TEST_P(CZEKModelOfVersion, NegativeCountsMeanNothing)
{
    const CModelBuilder builder = BuildEmpty(GetParam());
    Bytes image = builder.GetImage();
    for (const SField& field : builder.GetFields())
    {
        const std::string end = "Count";
        const bool isCount =
            field.path.size() > end.size() &&
            field.path.compare(field.path.size() - end.size(), end.size(), end) == 0;
        if (isCount)
            std::fill_n(image.begin() + static_cast<std::ptrdiff_t>(field.offset), 4, 0xFF);
    }
    const CZEKModel model = Load(image);
    EXPECT_EQ(-1, model.GetLightmapCount());
    EXPECT_TRUE(model.GetNodeList().empty());
    EXPECT_TRUE(model.GetMeshList().empty());
    EXPECT_TRUE(model.GetMaterialList().empty());
    EXPECT_TRUE(model.GetTextureList().empty());
    EXPECT_TRUE(model.GetBoneNameList().empty());
    EXPECT_TRUE(model.GetProbeList().empty());
    EXPECT_TRUE(model.GetLightmapList().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Version, CZEKModelOfVersion, testing::Range(OldestVersion, UnknownVersion + 1));

/// The first read of a file ends before each of the fields in turn, and the second replaces all of
/// its bytes, so that nothing of a record may be left behind in them.
TEST(CZEKModel, FileAndImageGiveTheSameWhereverAReadEnds)
{
    constexpr std::size_t ReadSize = 4096;
    const CTemporaryFolder folder;
    for (int version : {OldestVersion, 25, UnknownVersion})
    {
        const SModel model = MakeDistinctModel(version);
        const CModelBuilder builder = CModelBuilder::Build(model);
        for (const SField& field : builder.GetFields())
        {
            SCOPED_TRACE(field.path);
            ASSERT_LT(field.offset, ReadSize);
            const std::size_t padding = ReadSize - field.offset;
            SModel padded = model;
            (version < 26 ? padded.nodes[0].name : padded.textures[0].name).append(padding, '-');
            padded.tail = std::string(2 * ReadSize - padding - builder.GetImage().size(), '-');
            ExpectSameFromFile(CModelBuilder::Build(padded).GetImage(), folder);
        }
    }
}

/// A model with a mesh and a collider mesh of that many vertices, each with indices up to the last.
SModel MakeModelWithVertices(int vertexCount)
{
    SModel model;
    model.version = 25;
    model.meshes.resize(1);
    model.meshes[0].vertexCount = vertexCount;
    model.meshes[0].primitives = {{3, {0, vertexCount - 1}}, {4, {}}};
    model.nodes.resize(1);
    model.nodes[0].colliderShape = 2;
    model.nodes[0].hasMesh = 1;
    model.nodes[0].mesh.vertexCount = vertexCount;
    model.nodes[0].mesh.primitives = {{vertexCount - 1, 1}, {}};
    return model;
}

TEST(CZEKModel, IndicesOf65536VerticesHaveSixteenBits)
{
    const CZEKModel model = Load(MakeModelWithVertices(65536));
    const auto& primitives = model.GetMeshList().at(0).GetZEKPrimitiveList();
    ASSERT_EQ(2U, primitives.size());
    ExpectPrimitive(3, {0, 65535}, primitives[0]);
    ExpectPrimitive(4, {}, primitives[1]);
    const auto& colliderPrimitives = model.GetColliderMeshList().at(0).GetZEKPrimitiveList();
    ASSERT_EQ(2U, colliderPrimitives.size());
    ExpectPrimitive(-1, {65535, 1}, colliderPrimitives[0]);
    ExpectPrimitive(-1, {}, colliderPrimitives[1]);
}

TEST(CZEKModel, IndicesOfMoreVerticesHaveThirtyTwoBits)
{
    const CZEKModel model = Load(MakeModelWithVertices(65537));
    const auto& primitives = model.GetMeshList().at(0).GetZEKPrimitiveList();
    ASSERT_EQ(2U, primitives.size());
    EXPECT_EQ(3, primitives[0].GetMaterialIndex());
    EXPECT_TRUE(primitives[0].GetIndexListUSHORT().empty());
    EXPECT_EQ((std::vector<int>{0, 65536}), primitives[0].GetIndexListINT());
    ExpectPrimitive(4, {}, primitives[1]);
    const auto& colliderPrimitives = model.GetColliderMeshList().at(0).GetZEKPrimitiveList();
    ASSERT_EQ(2U, colliderPrimitives.size());
    EXPECT_EQ((std::vector<int>{65536, 1}), colliderPrimitives[0].GetIndexListINT());
    ExpectPrimitive(-1, {}, colliderPrimitives[1]);
}

TEST(CZEKModel, MorphsOfAMeshWithoutVerticesAreNotKept)
{
    SModel model;
    model.version = 25;
    model.meshes.resize(2);
    model.meshes[0].vertexCount = 0;
    model.meshes[0].primitives = {{2, {}}};
    model.meshes[0].morphNames = {"first", "second"};
    model.meshes[1].vertexCount = 1;
    model.meshes[1].morphNames = {"third"};
    const CZEKModel loaded = Load(model);
    ASSERT_EQ(2U, loaded.GetMeshList().size());
    EXPECT_TRUE(loaded.GetMeshList()[0].GetMorphList().empty());
    EXPECT_EQ(1U, loaded.GetMeshList()[0].GetZEKPrimitiveList().size());
    ASSERT_EQ(1U, loaded.GetMeshList()[1].GetMorphList().size());
    EXPECT_EQ("third", loaded.GetMeshList()[1].GetMorphList()[0].GetName());
}

TEST(CZEKModel, EachNodeHasItsOwnColliderMesh)
{
    SModel model;
    model.version = 20;
    model.nodes.resize(4);
    for (std::size_t i : {std::size_t{1}, std::size_t{3}})
    {
        model.nodes[i].colliderShape = 2;
        model.nodes[i].hasMesh = 1;
        model.nodes[i].mesh.vertexCount = static_cast<int>(i);
    }
    model.nodes[2].colliderShape = 2;
    model.nodes[2].hasMesh = 2;
    const CZEKModel loaded = Load(model);
    EXPECT_EQ((std::vector<int>{-1, 0, -1, 1}), loaded.GetColliderMeshIndexList());
    ASSERT_EQ(2U, loaded.GetColliderMeshList().size());
    EXPECT_EQ(1U, loaded.GetColliderMeshList()[0].GetPosList().size());
    EXPECT_EQ(3U, loaded.GetColliderMeshList()[1].GetPosList().size());
}

/// The V offsets of both transforms of a material with this scale and an offset of 0.25.
std::vector<float> LoadOffsets(int version, float scale)
{
    SModel model;
    model.version = version;
    model.materials.resize(1);
    model.materials[0].mainScaleV = scale;
    model.materials[0].mainOffsetV = 0.25f;
    model.materials[0].secondScaleV = scale;
    model.materials[0].secondOffsetV = 0.25f;
    const CZEKModel loaded = Load(model);
    const zek::CZEKMaterial& material = loaded.GetMaterialList().at(0);
    return {material.GetTextureOffsetMain().v, material.GetTexture1OffsetMain().v};
}

TEST(CZEKModel, OffsetsAreFlippedBelowAScaleOfOneAndFromVersionNineteen)
{
    const float belowOne = std::nextafter(1.0f, 0.0f);
    const float flippedBelowOne = 1.0f - 0.25f - belowOne;
    for (int version : {7, 18})
    {
        EXPECT_EQ((std::vector<float>{0.25f, 0.25f}), LoadOffsets(version, 1.0f));
        EXPECT_EQ((std::vector<float>{0.25f, 0.25f}), LoadOffsets(version, 2.0f));
        EXPECT_EQ((std::vector<float>{0.25f, 0.25f}), LoadOffsets(version, std::nanf("")));
        EXPECT_EQ((std::vector<float>{0.5f, 0.5f}), LoadOffsets(version, 0.25f));
        EXPECT_EQ(
            (std::vector<float>{flippedBelowOne, flippedBelowOne}), LoadOffsets(version, belowOne));
    }
    for (int version : {19, 25})
    {
        EXPECT_EQ((std::vector<float>{-0.25f, -0.25f}), LoadOffsets(version, 1.0f));
        EXPECT_EQ((std::vector<float>{-1.25f, -1.25f}), LoadOffsets(version, 2.0f));
        EXPECT_EQ((std::vector<float>{0.5f, 0.5f}), LoadOffsets(version, 0.25f));
        for (float offset : LoadOffsets(version, std::nanf("")))
            EXPECT_TRUE(std::isnan(offset));
    }
}

TEST(CZEKModel, OnlyAClampOfOneClamps)
{
    for (int version : {7, 25, 26})
    {
        SModel model;
        model.version = version;
        for (int clamp : {0, 1, 2, -1, 257})
            model.textures.push_back({"texture.png", clamp, {}});
        std::vector<bool> clamps;
        const CZEKModel loaded = Load(model);
        for (const zek::CZEKTexture& texture : loaded.GetTextureList())
            clamps.push_back(texture.IsClamp());
        EXPECT_EQ((std::vector<bool>{false, true, false, false, false}), clamps);
    }
}

TEST(CZEKModel, WhatFollowsTheLastSectionIsIgnored)
{
    SModel model = MakeFullModel(26);
    const std::string expected = Dump(Load(model));
    model.tail = std::string("\x01\0tail", 6);
    EXPECT_EQ(expected, Dump(Load(model)));
}

TEST(CZEKModel, StartsEmpty)
{
    EXPECT_EQ("version 0 0\n", Dump(CZEKModel()));
}

TEST(CZEKModel, ReplacesWhatWasLoaded)
{
    for (int before : {7, 25, 26})
    {
        for (int after : {7, 25, 26})
        {
            CZEKModel model = Load(MakeDistinctModel(before));
            const Bytes image = CModelBuilder::Build(MakeFullModel(after)).GetImage();
            SZEKRefusal refusal;
            EXPECT_TRUE(model.Load(image.data(), static_cast<std::int64_t>(image.size()), refusal));
            EXPECT_EQ(Dump(Load(image)), Dump(model));
        }
    }
}

TEST(CZEKModel, CopyOutlivesTheOriginal)
{
    const Bytes image = CModelBuilder::Build(MakeDistinctModel(25)).GetImage();
    const std::string expected = Dump(Load(image));
    CZEKModel model = Load(image);
    const CZEKModel copy = model;
    EXPECT_EQ(expected, Dump(copy));
    EXPECT_EQ(expected, Dump(model));
    model = CZEKModel();
    EXPECT_EQ(expected, Dump(copy));
}

TEST(CZEKModel, MoveTakesEverything)
{
    const Bytes image = CModelBuilder::Build(MakeDistinctModel(25)).GetImage();
    const std::string expected = Dump(Load(image));
    CZEKModel model = Load(image);
    const S3D* positions = model.GetMeshList().at(0).GetPosList().data();
    CZEKModel moved = std::move(model);
    EXPECT_EQ(expected, Dump(moved));
    EXPECT_EQ(positions, moved.GetMeshList().at(0).GetPosList().data());
    CZEKModel assigned = Load(MakeFullModel(26));
    assigned = std::move(moved);
    EXPECT_EQ(expected, Dump(assigned));
}

TEST(CZEKModel, ModelDoesNotBorrowTheImage)
{
    Bytes image = CModelBuilder::Build(MakeDistinctModel(25)).GetImage();
    const CZEKModel model = Load(image);
    const std::string expected = Dump(model);
    CZEKModel loaded;
    SZEKRefusal refusal;
    EXPECT_TRUE(loaded.Load(image.data(), static_cast<std::int64_t>(image.size()), refusal));
    std::fill(image.begin(), image.end(), static_cast<unsigned char>('x'));
    EXPECT_EQ(expected, Dump(loaded));
}

TEST(CZEKModelRefusal, OfAFileThatBecameShorter)
{
    const CTemporaryFolder folder;
    folder.Write("model.zek", CModelBuilder::Build(MakeFullModel(25)).GetImage());
    filesystem::CRandomAccessFile file;
    ASSERT_TRUE(file.Open(folder.GetPath("model.zek")));
    std::filesystem::resize_file(folder.GetPath("model.zek"), 100);
    CZEKModel model = Load(MakeFullModel(26));
    SZEKRefusal refusal;
    EXPECT_FALSE(model.Load(file, refusal));
    EXPECT_EQ(zek::SZEKFault::Unreadable, refusal.kind);
    EXPECT_EQ(Dump(CZEKModel()), Dump(model));
}

TEST(CZEKModelRefusal, IsTheSameOfFileAndImage)
{
    Bytes image = CModelBuilder::Build(MakeFullModel(25)).GetImage();
    image.resize(image.size() / 2);
    const CTemporaryFolder folder;
    folder.Write("model.zek", image);
    filesystem::CRandomAccessFile file;
    ASSERT_TRUE(file.Open(folder.GetPath("model.zek")));
    CZEKModel model = Load(MakeFullModel(26));
    SZEKRefusal refusal;
    EXPECT_FALSE(model.Load(file, refusal));
    const auto expected = zek::WhyRefused(image.data(), static_cast<std::int64_t>(image.size()));
    EXPECT_EQ(expected ? expected->GetText() : "accepted", refusal.GetText());
    EXPECT_EQ(Dump(CZEKModel()), Dump(model));
}

} // namespace
