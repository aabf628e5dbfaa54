#include "Support/CModelMap.h"

#include <cstdint>

namespace testsupport
{

namespace
{

/// Thrown, and caught in the constructor, where the file has to be refused.
struct SRefused
{
};

} // namespace

CModelMap::CModelMap(const std::vector<unsigned char>& image) : m_Image(image)
{
    try
    {
        ReadFile();
        m_IsAccepted = true;
    }
    catch (const SRefused&)
    {
    }
}

void CModelMap::ReadFile()
{
    RefuseIf(Text("magic") != "ZEK");
    m_Version = Int("version");
    RefuseIf(m_Version < 7);
    if (m_Version >= 21)
        Int("marker");
    if (m_Version >= 26)
        RefuseIf(Int("header zero") != 0);

    if (m_Version <= 25)
    {
        ReadList("node count", [this] { ReadNode(); });
        ReadList("mesh count", [this] { ReadMesh(); });
        const std::size_t countOffset = m_Pos;
        const int materialCount = Int("material count");
        ReadProbes();
        ReadRecords(materialCount, countOffset, [this] { ReadMaterial(); });
        ReadList("texture count", [this] { ReadTexture(); });
        ReadBones();
    }
    else
    {
        ReadList("texture count", [this] { ReadTexture(); });
        ReadProbes();
    }
    ReadLightmaps();
}

void CModelMap::ReadNode()
{
    Text("node name");
    Demand(52);
    Floats("node position", 3);
    Floats("node rotation", 4);
    Floats("node scale", 3);
    Int("node parent");
    Int("node mesh");
    const int shape = Int("collider shape");
    RefuseIf(shape != -1 && shape != 0 && shape != 1 && shape != 2);
    if (shape != -1)
        ReadCollider(shape);

    if (m_Version >= 8)
    {
        const int flag = Int("node offset flag");
        RefuseIf(flag != 0 && flag != 1);
        if (flag == 1)
            Floats("node offset", 3);
    }
    if (m_Version >= 12)
    {
        const int selector = Int("node reference selector");
        RefuseIf(selector != 0 && selector != 1);
        if (selector == 1)
            Int("node selected reference");
        else if (m_Version >= 16)
            Int("node alternate reference");
    }
    if (m_Version >= 15)
        Block("node reserved block", 20);
    if (m_Version >= 17)
        Block("node reserved word", 4);
}

void CModelMap::ReadCollider(int shape)
{
    Demand(32);
    if (m_Version >= 6)
        Int("collider type");
    if (m_Version >= 23)
        Int("collider second int");
    Floats("collider centre", 3);
    Floats("collider size", shape == 1 ? 1 : 3);
    if (shape == 2 && m_Version >= 20 && Int("collider has mesh") == 1)
        ReadSimpleMesh();
}

void CModelMap::ReadSimpleMesh()
{
    Demand(10);
    const int vertexCount = Int("simple mesh vertex count");
    const bool hasNormal = Byte("simple mesh stream flag") != 0;
    for (int i = 1; i < 6; ++i)
        Byte("simple mesh stream flag");
    Demand(hasNormal ? 24 : 12);
    for (int i = 0; i < vertexCount; ++i)
        Floats("simple mesh vertex", hasNormal ? 6 : 3);
    ReadList("simple mesh primitive count", [this, vertexCount] { ReadIndices(vertexCount); });
}

void CModelMap::ReadMesh()
{
    Demand(m_Version < 15 ? 30 : 10);
    const int vertexCount = Int("mesh vertex count");
    const int streamSizes[6] = {12, 12, 8, 8, 4, 24};
    int vertexSize = 12;
    for (int streamSize : streamSizes)
        vertexSize += Byte("mesh stream flag") != 0 ? streamSize : 0;
    DemandList(vertexSize, vertexCount);
    for (int i = 0; i < vertexCount; ++i)
        Block("vertex", vertexSize);
    Floats("mesh bounding box", 6);

    ReadList(
        "primitive count",
        [this, vertexCount]
        {
            Int("primitive material");
            ReadIndices(vertexCount);
        });
    ReadList(
        "morph count",
        [this, vertexCount]
        {
            Text("morph name");
            DemandList(12, vertexCount);
            for (int i = 0; i < vertexCount; ++i)
                Floats("morph position", 3);
        });
}

void CModelMap::ReadIndices(int vertexCount)
{
    const int indexSize = vertexCount > 65536 ? 4 : 2;
    const int count = Int("index count");
    DemandList(indexSize, count);
    for (int i = 0; i < count; ++i)
        Block("index", indexSize);
}

void CModelMap::ReadMaterial()
{
    Text("material name");
    Demand(
        61 + (m_Version >= 3 ? 1 : 0) + (m_Version >= 13 ? 1 : 0) + (m_Version >= 4 ? 16 : 0) +
        (m_Version >= 7 ? 16 : 0));
    const int shaderType = Int("shader type");
    Int("blend mode");
    Floats("cutoff", 1);
    if (m_Version >= 3)
        Byte("material first flag");
    if (m_Version >= 13)
        Byte("material second flag");
    Byte("material third flag");
    Floats("material colour", 4);
    Floats("material emission colour", 4);
    Int("main texture index");
    Int("normal texture index");
    Int("emission texture index");
    if (shaderType == 7 || (shaderType == 0 && m_Version >= 14))
        Int("roughness texture index");
    if (shaderType == 1 && m_Version >= 24)
        Int("shader 1 extra index");
    if (m_Version >= 4)
        Floats("main transform", 4);
    if (m_Version >= 7)
        Floats("second transform", 4);
    if (m_Version >= 10 && Int("UV list flag") != 0)
    {
        Demand(12);
        Floats("UV list float", 2);
        const int pairCount = Int("UV list count");
        DemandList(8, pairCount);
        for (int i = 0; i < pairCount; ++i)
            Floats("UV list pair", 2);
    }
    if (m_Version >= 11 && m_Version <= 23)
        Int("legacy int");
    ReadShaderParameters(shaderType);
}

void CModelMap::ReadShaderParameters(int shaderType)
{
    if (shaderType == 0 || shaderType == 7)
        Block("shader 0 parameters", m_Version >= 2 ? 8 : 0);
    if (shaderType == 1 && m_Version >= 24)
    {
        Block("shader 1 parameters", 60);
        if (m_Version >= 25 && Int("shader 1 sub flag") == 1)
            Block("shader 1 more parameters", 20);
    }
    if (shaderType == 2)
        Block("shader 2 parameters", m_Version >= 9 ? 24 + 44 : 24);
    if (shaderType == 3)
        Block("shader 3 parameters", 52);
    if (shaderType == 6)
        Block("shader 6 parameters", 8);
}

void CModelMap::ReadTexture()
{
    Text("texture name");
    if (m_Version >= 1)
        Int("texture clamp");
    if (m_Version >= 5)
        m_TextureFlags.push_back(Flags("texture flag"));
}

void CModelMap::ReadProbes()
{
    if (m_Version < 11)
        return;
    const std::size_t countOffset = m_Pos;
    const int count = Int("probe count");
    if (m_Version < 12)
        return;
    ReadRecords(
        count, countOffset,
        [this]
        {
            Int("probe value");
            Floats("probe float", 6);
            if (m_Version >= 16)
            {
                Int("probe second value");
                m_ProbeFlags.push_back(Flags("probe flag"));
            }
            m_ProbeNames.push_back(
                m_Version >= 26 ? Text("probe name") : std::to_string(m_ProbeNames.size()));
        });
}

void CModelMap::ReadBones()
{
    if (m_Image.size() - m_Pos < 4)
        return;
    ReadList(
        "bone count",
        [this]
        {
            Text("bone name");
            Int("bone int");
        });
}

void CModelMap::ReadLightmaps()
{
    const std::size_t countOffset = m_Pos;
    const int count = Int("lightmap count");
    if (m_Version >= 26)
    {
        ReadRecords(
            count, countOffset,
            [this]
            {
                m_LightmapNames.push_back(Text("lightmap name"));
                m_LightmapFlags.push_back(Flags("lightmap flag"));
            });
    }
    if (m_Version >= 18)
        Int("lightmap switch");
    if (m_Version >= 22)
        Int("lightmap trailing int");
}

template <typename ReadRecord>
void CModelMap::ReadList(const char* name, ReadRecord readRecord)
{
    const std::size_t countOffset = m_Pos;
    const int count = Int(name);
    ReadRecords(count, countOffset, readRecord);
}

template <typename ReadRecord>
void CModelMap::ReadRecords(int count, std::size_t countOffset, ReadRecord readRecord)
{
    for (int i = 0; i < count; ++i)
    {
        const std::size_t begin = m_Pos;
        readRecord();
        m_Records.push_back({begin, m_Pos, countOffset});
    }
}

int CModelMap::Int(const char* name)
{
    Demand(4);
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = value * 256 + m_Image[m_Pos + static_cast<std::size_t>(i)];
    AddField(name, EFieldKind::Int, 4);
    return static_cast<int>(value);
}

int CModelMap::Byte(const char* name)
{
    Demand(1);
    const int value = m_Image[m_Pos];
    AddField(name, EFieldKind::Byte, 1);
    return value;
}

void CModelMap::Floats(const char* name, int count)
{
    Demand(4LL * count);
    for (int i = 0; i < count; ++i)
        AddField(name, EFieldKind::Float, 4);
}

void CModelMap::Block(const char* name, int size)
{
    Demand(size);
    AddField(name, EFieldKind::Block, static_cast<std::size_t>(size));
}

std::string CModelMap::Text(const char* name)
{
    std::string text;
    while (m_Pos + text.size() < m_Image.size() && m_Image[m_Pos + text.size()] != 0)
        text.push_back(static_cast<char>(m_Image[m_Pos + text.size()]));
    Demand(static_cast<long long>(text.size()) + 1);
    AddField(name, EFieldKind::Text, text.size() + 1);
    return text;
}

std::size_t CModelMap::Flags(const char* name)
{
    const std::size_t offset = m_Pos;
    Demand(4);
    for (int i = 0; i < 4; ++i)
        Byte(name);
    return offset;
}

void CModelMap::Demand(long long size)
{
    RefuseIf(size > static_cast<long long>(m_Image.size() - m_Pos));
}

void CModelMap::DemandList(int size, int count)
{
    const long long product = static_cast<long long>(size) * count;
    Demand(static_cast<std::int32_t>(static_cast<std::uint32_t>(product)));
    if (count > 0)
        Demand(product);
}

void CModelMap::RefuseIf(bool isFault)
{
    if (isFault)
        throw SRefused();
}

void CModelMap::AddField(const char* name, EFieldKind kind, std::size_t size)
{
    m_Fields.push_back({name, kind, m_Pos, size});
    m_Pos += size;
}

} // namespace testsupport
