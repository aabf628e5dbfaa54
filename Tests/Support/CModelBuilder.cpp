#include "Support/CModelBuilder.h"

#include <cstdio>
#include <cstdlib>

namespace testsupport
{

CModelBuilder CModelBuilder::Build(const SModel& model)
{
    CModelBuilder builder(model.version);
    builder.AddHeader(model.marker, model.headerZero);
    if (model.version < 26)
    {
        builder.AddNodeList(model.nodes);
        builder.AddMeshList(model.meshes);
        builder.AddMaterialList(model.materials, model.probes);
        builder.AddTextureList(model.textures);
        if (model.hasBoneTable)
            builder.AddBoneTable(model.bones);
    }
    else
    {
        builder.AddTextureList(model.textures);
        builder.AddProbeSection(model.probes);
    }
    builder.AddLightmapList(model.lightmaps, model.lightmapSwitch, model.lightmapTrailingInt);
    if (!model.tail.empty())
        builder.AddBlock("tail", model.tail);
    return builder;
}

void CModelBuilder::AddHeader(int marker, int zero)
{
    AddText("magic", "ZEK");
    AddInt("version", m_Version);
    if (m_Version >= 21)
        AddInt("marker", marker);
    if (m_Version >= 26)
        AddInt("header zero", zero);
}

void CModelBuilder::AddNodeList(const std::vector<SNode>& nodes)
{
    AddInt("node count", static_cast<int>(nodes.size()));
    for (const SNode& node : nodes)
        AddNode(node);
}

void CModelBuilder::AddNode(const SNode& node)
{
    AddText("node name", node.name);
    AddFloats("node position", 3);
    AddFloats("node rotation", 4);
    AddFloats("node scale", 3);
    AddInt("node parent", node.parentIndex);
    AddInt("node mesh", node.meshIndex);
    AddInt("collider shape", node.colliderShape);
    if (node.colliderShape != -1)
        AddCollider(node);
    if (m_Version >= 8)
    {
        AddInt("node offset flag", node.offsetFlag);
        if (node.offsetFlag == 1)
            AddFloats("node offset", 3);
    }
    if (m_Version >= 12)
    {
        AddInt("node reference selector", node.referenceSelector);
        if (node.referenceSelector == 1)
            AddInt("node selected reference", node.selectedReference);
        if (node.referenceSelector == 0 && m_Version >= 16)
            AddInt("node alternate reference", node.alternateReference);
    }
    if (m_Version >= 15)
        AddBlock("node reserved block", std::string(20, 'r'));
    if (m_Version >= 17)
        AddBlock("node reserved word", std::string(4, 'w'));
}

void CModelBuilder::AddCollider(const SNode& node)
{
    if (m_Version >= 6)
        AddInt("collider type", node.colliderType);
    if (m_Version >= 23)
        AddInt("collider second int", node.colliderSecondInt);
    AddFloats("collider centre", 3);
    AddFloats("collider size", node.colliderShape == 1 ? 1 : 3);
    if (node.colliderShape == 2 && m_Version >= 20)
    {
        AddInt("collider has mesh", node.hasMesh);
        if (node.hasMesh == 1)
            AddSimpleMesh(node.mesh);
    }
}

void CModelBuilder::AddSimpleMesh(const SSimpleMesh& mesh)
{
    AddInt("simple mesh vertex count", mesh.vertexCount);
    for (unsigned char stream : mesh.streams)
        AddByte("simple mesh stream flag", stream);
    for (int i = 0; i < mesh.vertexCount; ++i)
    {
        AddFloats("simple mesh position", 3);
        if (mesh.streams[0] != 0)
            AddFloats("simple mesh normal", 3);
    }
    AddInt("simple mesh primitive count", static_cast<int>(mesh.primitives.size()));
    for (const std::vector<int>& indices : mesh.primitives)
        AddIndices("simple mesh index", mesh.vertexCount, indices);
}

void CModelBuilder::AddMeshList(const std::vector<SMesh>& meshes)
{
    AddInt("mesh count", static_cast<int>(meshes.size()));
    for (const SMesh& mesh : meshes)
        AddMesh(mesh);
}

void CModelBuilder::AddMesh(const SMesh& mesh)
{
    AddInt("mesh vertex count", mesh.vertexCount);
    for (unsigned char stream : mesh.streams)
        AddByte("mesh stream flag", stream);
    for (int i = 0; i < mesh.vertexCount; ++i)
    {
        AddFloats("vertex position", 3);
        if (mesh.streams[0] != 0)
            AddFloats("vertex normal", 3);
        if (mesh.streams[1] != 0)
            AddFloats("vertex tangent", 3);
        if (mesh.streams[2] != 0)
            AddFloats("vertex UV", 2);
        if (mesh.streams[3] != 0)
            AddFloats("vertex UV2", 2);
        if (mesh.streams[4] != 0)
        {
            for (int channel = 0; channel < 4; ++channel)
                AddByte("vertex colour", static_cast<unsigned char>(10 * channel));
        }
        if (mesh.streams[5] != 0)
        {
            for (int bone = 0; bone < 4; ++bone)
                AddShort("vertex bone index", bone);
            AddFloats("vertex bone weight", 4);
        }
    }
    AddFloats("mesh minimum", 3);
    AddFloats("mesh maximum", 3);
    AddInt("primitive count", static_cast<int>(mesh.primitives.size()));
    for (const SPrimitive& primitive : mesh.primitives)
    {
        AddInt("primitive material", primitive.materialIndex);
        AddIndices("primitive index", mesh.vertexCount, primitive.indices);
    }
    AddInt("morph count", static_cast<int>(mesh.morphNames.size()));
    for (const std::string& name : mesh.morphNames)
    {
        AddText("morph name", name);
        for (int i = 0; i < mesh.vertexCount; ++i)
            AddFloats("morph position", 3);
    }
}

void CModelBuilder::AddMaterialList(
    const std::vector<SMaterial>& materials, const std::vector<SProbe>& probes)
{
    AddInt("material count", static_cast<int>(materials.size()));
    if (m_Version >= 11 && m_Version < 26)
        AddProbeSection(probes);
    for (const SMaterial& material : materials)
        AddMaterial(material);
}

void CModelBuilder::AddMaterial(const SMaterial& material)
{
    AddText("material name", material.name);
    AddInt("shader type", material.shaderType);
    AddInt("blend mode", material.blendMode);
    AddFloat("cutoff", material.cutoff);
    if (m_Version >= 3)
        AddByte("material first flag", 1);
    if (m_Version >= 13)
        AddByte("material second flag", 0);
    AddByte("material third flag", 1);
    AddColor("material colour");
    AddColor("material emission colour");
    AddInt("main texture index", 0);
    AddInt("normal texture index", -1);
    AddInt("emission texture index", -1);
    if (material.shaderType == 7 || (material.shaderType == 0 && m_Version >= 14))
        AddInt("roughness texture index", -1);
    if (material.shaderType == 1 && m_Version >= 24)
        AddInt("shader 1 extra index", -1);
    if (m_Version >= 4)
        AddTextureTransform("main transform", material.mainScaleV, material.mainOffsetV);
    if (m_Version >= 7)
        AddTextureTransform("second transform", 1.0f, 0.0f);
    if (m_Version >= 10)
    {
        AddInt("UV list flag", material.uvListFlag);
        if (material.uvListFlag != 0)
        {
            AddFloats("UV list float", 2);
            AddInt("UV list count", material.uvCount);
            for (int i = 0; i < material.uvCount; ++i)
                AddFloats("UV list pair", 2);
        }
    }
    if (m_Version >= 11 && m_Version < 24)
        AddInt("legacy int", 9);
    AddShaderParameters(material);
}

void CModelBuilder::AddShaderParameters(const SMaterial& material)
{
    switch (material.shaderType)
    {
    case 0:
    case 7:
        if (m_Version >= 2)
            AddFloats("shader float", 2);
        break;
    case 1:
        if (m_Version < 24)
            break;
        AddFloats("shader float", 2);
        AddColor("shader colour");
        AddFloats("shader float", 3);
        AddInt("shader int", 1);
        AddColor("shader colour");
        AddFloats("shader float", 1);
        if (m_Version < 25)
            break;
        AddInt("shader 1 sub flag", material.subFlag);
        if (material.subFlag != 1)
            break;
        AddFloats("shader float", 2);
        AddInt("shader int", 1);
        AddFloats("shader float", 2);
        break;
    case 2:
        AddColor("shader colour");
        AddFloats("shader float", 2);
        if (m_Version < 9)
            break;
        AddColor("shader colour");
        AddFloats("shader float", 3);
        AddColor("shader colour");
        break;
    case 3:
        AddColor("shader colour");
        AddColor("shader colour");
        AddFloats("shader float", 5);
        break;
    case 6:
        AddFloats("shader float", 1);
        AddInt("shader int", 1);
        break;
    default:
        break;
    }
}

void CModelBuilder::AddBoneTable(const std::vector<SBone>& bones)
{
    AddInt("bone count", static_cast<int>(bones.size()));
    for (const SBone& bone : bones)
    {
        AddText("bone name", bone.name);
        AddInt("bone int", bone.value);
    }
}

void CModelBuilder::AddTextureList(const std::vector<STexture>& textures)
{
    AddInt("texture count", static_cast<int>(textures.size()));
    for (const STexture& texture : textures)
    {
        AddText("texture name", texture.name);
        if (m_Version >= 1)
            AddInt("texture clamp", texture.clamp);
        if (m_Version >= 5)
        {
            m_TextureFlags.push_back(GetImage().size());
            AddFlags("texture flag", texture.flags);
        }
    }
}

void CModelBuilder::AddProbeSection(const std::vector<SProbe>& probes)
{
    if (m_Version < 11)
        return;
    AddInt("probe count", static_cast<int>(probes.size()));
    if (m_Version < 12)
        return;
    for (const SProbe& probe : probes)
    {
        AddInt("probe value", probe.value);
        for (float value : probe.floats)
            AddFloat("probe float", value);
        if (m_Version >= 16)
        {
            AddInt("probe second value", probe.secondValue);
            m_ProbeFlags.push_back(GetImage().size());
            AddFlags("probe flag", probe.flags);
        }
        if (m_Version >= 26)
            AddText("probe name", probe.name);
    }
}

void CModelBuilder::AddLightmapList(
    const std::vector<SLightmap>& lightmaps, int lightmapSwitch, int trailingInt)
{
    AddInt("lightmap count", static_cast<int>(lightmaps.size()));
    if (m_Version >= 26)
    {
        for (const SLightmap& lightmap : lightmaps)
        {
            AddText("lightmap name", lightmap.name);
            m_LightmapFlags.push_back(GetImage().size());
            AddFlags("lightmap flag", lightmap.flags);
        }
    }
    if (m_Version >= 18)
        AddInt("lightmap switch", lightmapSwitch);
    if (m_Version >= 22)
        AddInt("lightmap trailing int", trailingInt);
}

void CModelBuilder::AddByte(const std::string& name, unsigned char value)
{
    AddField(name, EFieldKind::Byte, 1);
    m_Maker.AddByte(value);
}

void CModelBuilder::AddShort(const std::string& name, int value)
{
    AddField(name, EFieldKind::Short, 2);
    m_Maker.AddWord(static_cast<unsigned short>(value));
}

void CModelBuilder::AddInt(const std::string& name, int value)
{
    AddField(name, EFieldKind::Int, 4);
    m_Maker.AddInt(value);
}

void CModelBuilder::AddFloat(const std::string& name, float value)
{
    AddField(name, EFieldKind::Float, 4);
    m_Maker.AddFloat(value);
}

void CModelBuilder::AddText(const std::string& name, const std::string& text)
{
    AddField(name, EFieldKind::Text, text.length() + 1);
    m_Maker.AddZeroTerminatedString(text);
}

void CModelBuilder::AddBlock(const std::string& name, const std::string& bytes)
{
    AddField(name, EFieldKind::Block, bytes.length());
    m_Maker.AddString(bytes);
}

std::size_t CModelBuilder::GetOffset(const std::string& name, int n) const
{
    for (const SField& field : m_Fields)
    {
        if (field.name == name && n-- == 0)
            return field.offset;
    }
    std::fprintf(stderr, "the model has no such field: %s\n", name.c_str());
    std::abort();
}

void CModelBuilder::AddField(const std::string& name, EFieldKind kind, std::size_t size)
{
    m_Fields.push_back({name, kind, GetImage().size(), size});
}

void CModelBuilder::AddFloats(const std::string& name, int count)
{
    for (int i = 0; i < count; ++i)
        AddFloat(name, 0.5f + static_cast<float>(i));
}

void CModelBuilder::AddFlags(const std::string& name, const Flags& flags)
{
    for (unsigned char flag : flags)
        AddByte(name, flag);
}

void CModelBuilder::AddColor(const std::string& name)
{
    AddFloats(name, 4);
}

void CModelBuilder::AddTextureTransform(const std::string& name, float scaleV, float offsetV)
{
    AddFloat(name, 1.0f);
    AddFloat(name, scaleV);
    AddFloat(name, 0.0f);
    AddFloat(name, offsetV);
}

void CModelBuilder::AddIndices(
    const std::string& name, int vertexCount, const std::vector<int>& indices)
{
    AddInt(name + " count", static_cast<int>(indices.size()));
    for (int index : indices)
    {
        if (vertexCount <= 65536)
            AddShort(name, index);
        else
            AddInt(name, index);
    }
}

SModel MakeFullModel(int version)
{
    SModel model;
    model.version = version;

    for (int shape = -1; shape <= 2; ++shape)
    {
        SNode node;
        node.name = "node" + std::to_string(shape);
        node.colliderShape = shape;
        node.offsetFlag = shape == 0 ? 1 : 0;
        node.referenceSelector = shape == 1 ? 1 : 0;
        model.nodes.push_back(node);
    }
    SNode meshCollider;
    meshCollider.colliderShape = 2;
    meshCollider.hasMesh = 1;
    meshCollider.mesh.streams = {1, 0, 0, 0, 0, 0};
    model.nodes.push_back(meshCollider);

    SMesh plain;
    plain.primitives = {SPrimitive(), SPrimitive{1, {}}};
    SMesh full;
    full.streams = {1, 1, 1, 1, 1, 1};
    full.morphNames = {"smile", ""};
    model.meshes = {plain, full};

    for (int shaderType = -1; shaderType <= 8; ++shaderType)
    {
        SMaterial material;
        material.name = "material" + std::to_string(shaderType);
        material.shaderType = shaderType;
        material.uvListFlag = shaderType % 2 == 0 ? 1 : 0;
        material.subFlag = 1;
        model.materials.push_back(material);
    }

    model.textures = {STexture{"first.png", 1, {}}, STexture{"", 0, {}}};
    model.probes = {SProbe(), SProbe()};
    model.probes[1].name = "Hall";
    model.bones = {SBone(), SBone{"", 0}};
    model.lightmaps = {SLightmap(), SLightmap{"LightMap001.png", {}}};
    return model;
}

} // namespace testsupport
