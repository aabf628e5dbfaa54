#include "Support/CModelBuilder.h"

#include "Support/ModelDescription.h"

namespace testsupport
{

CModelBuilder CModelBuilder::Build(SModel model)
{
    CModelBuilder builder(model.version);
    DescribeFile(builder, model);
    if (!model.tail.empty())
        builder.AddBytes("tail", model.tail);
    return builder;
}

CModelBuilder BuildEmpty(int version, int marker, int headerZero)
{
    SModel model;
    model.version = version;
    model.marker = marker;
    model.headerZero = headerZero;
    return CModelBuilder::Build(model);
}

void CModelBuilder::AddHeader(int marker, int zero)
{
    DescribeHeader(*this, m_Version, marker, zero);
}

void CModelBuilder::AddNodeList(std::vector<SNode> nodes)
{
    DescribeNodeList(*this, nodes);
}

void CModelBuilder::AddNode(SNode node)
{
    Enter("nodes");
    DescribeNode(*this, node);
    Leave();
}

void CModelBuilder::AddSimpleMesh(SSimpleMesh mesh)
{
    Enter("colliderMesh");
    DescribeSimpleMesh(*this, mesh);
    Leave();
}

void CModelBuilder::AddMeshList(std::vector<SMesh> meshes)
{
    DescribeMeshList(*this, meshes);
}

void CModelBuilder::AddMesh(SMesh mesh)
{
    Enter("meshes");
    DescribeMesh(*this, mesh);
    Leave();
}

void CModelBuilder::AddMaterialList(std::vector<SMaterial> materials, std::vector<SProbe> probes)
{
    DescribeMaterialList(*this, materials, probes);
}

void CModelBuilder::AddMaterial(SMaterial material)
{
    Enter("materials");
    DescribeMaterial(*this, material);
    Leave();
}

void CModelBuilder::AddBoneTable(std::vector<SBone> bones)
{
    bool isThere = true;
    DescribeBoneTable(*this, isThere, bones);
}

void CModelBuilder::AddTextureList(std::vector<STexture> textures)
{
    DescribeTextureList(*this, textures);
}

void CModelBuilder::AddProbeSection(std::vector<SProbe> probes)
{
    DescribeProbeSection(*this, probes);
}

void CModelBuilder::AddLightmapList(
    std::vector<SLightmap> lightmaps, int lightmapSwitch, int trailingInt)
{
    DescribeLightmapList(*this, lightmaps, lightmapSwitch, trailingInt);
}

void CModelBuilder::AddBytes(const std::string& name, const std::string& bytes)
{
    AddField(name, EFieldKind::Byte, bytes.size());
    m_Maker.AddString(bytes);
}

void CModelBuilder::Int(const std::string& name, int value)
{
    AddField(name, EFieldKind::Int, 1);
    m_Maker.AddInt(value);
}

void CModelBuilder::Word(const std::string& name, int value)
{
    AddField(name, EFieldKind::Word, 1);
    m_Maker.AddWord(static_cast<unsigned short>(value));
}

void CModelBuilder::Text(const std::string& name, const std::string& text)
{
    AddField(name, EFieldKind::Text, text.size() + 1);
    m_Maker.AddZeroTerminatedString(text);
}

void CModelBuilder::Floats(const std::string& name, const float* values, int count)
{
    AddField(name, EFieldKind::Float, static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_Maker.AddFloat(values[i]);
}

void CModelBuilder::Bytes(const std::string& name, const unsigned char* values, int count)
{
    AddField(name, EFieldKind::Byte, static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_Maker.AddByte(values[i]);
}

void CModelBuilder::Floats(const std::string& name, int count)
{
    AddField(name, EFieldKind::Float, static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_Maker.AddFloat(0.5f + static_cast<float>(GetImage().size()));
}

void CModelBuilder::Shorts(const std::string& name, int count)
{
    AddField(name, EFieldKind::Short, static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_Maker.AddWord(static_cast<unsigned short>(-1 - i));
}

void CModelBuilder::Filler(const std::string& name, int count)
{
    AddField(name, EFieldKind::Byte, static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_Maker.AddByte(static_cast<unsigned char>(0xF0 - 10 * i));
}

} // namespace testsupport
