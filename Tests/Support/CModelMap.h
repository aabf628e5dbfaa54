#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Support/CModelBuilder.h"

namespace testsupport
{

/// Where a record lies in a model file, and the count that it is one of.
struct SRecord
{
    std::size_t begin;
    std::size_t end;
    std::size_t countOffset;
};

/// Reads a model file of any version, slowly and without the library: what the walkers make of a
/// file must agree with it. It lists every field and record with its place, so that a test or a
/// fuzzer can change one and keep the rest walkable.
class CModelMap
{
public:
    explicit CModelMap(const std::vector<unsigned char>& image);

    /// False when the file has to be refused. The lists then hold what precedes the fault.
    bool IsAccepted() const { return m_IsAccepted; }

    int GetVersion() const { return m_Version; }

    /// All fields read, in file order.
    const std::vector<SField>& GetFields() const { return m_Fields; }

    /// Nodes, meshes, primitives, morphs, materials, textures, probes, bones and lightmaps.
    const std::vector<SRecord>& GetRecords() const { return m_Records; }

    /// Offset of the four flags of each item.
    const std::vector<std::size_t>& GetTextureFlags() const { return m_TextureFlags; }
    const std::vector<std::size_t>& GetProbeFlags() const { return m_ProbeFlags; }
    const std::vector<std::size_t>& GetLightmapFlags() const { return m_LightmapFlags; }

    const std::vector<std::string>& GetProbeNames() const { return m_ProbeNames; }
    const std::vector<std::string>& GetLightmapNames() const { return m_LightmapNames; }

private:
    void ReadFile();
    void ReadNode();
    void ReadCollider(int shape);
    void ReadSimpleMesh();
    void ReadMesh();
    void ReadIndices(int vertexCount);
    void ReadMaterial();
    void ReadShaderParameters(int shaderType);
    void ReadTexture();
    void ReadProbes();
    void ReadBones();
    void ReadLightmaps();

    /// Reads a count and calls the reader of a record as often as it says.
    template <typename ReadRecord>
    void ReadList(const char* name, ReadRecord readRecord);
    template <typename ReadRecord>
    void ReadRecords(int count, std::size_t countOffset, ReadRecord readRecord);

    int Int(const char* name);
    int Byte(const char* name);
    void Floats(const char* name, int count);
    void Block(const char* name, int size);
    std::string Text(const char* name);
    std::size_t Flags(const char* name);

    /// Refuses the file unless that many bytes are left.
    void Demand(long long size);
    void DemandList(int size, int count);
    void RefuseIf(bool isFault);
    void AddField(const char* name, EFieldKind kind, std::size_t size);

    const std::vector<unsigned char>& m_Image;
    std::size_t m_Pos = 0;
    bool m_IsAccepted = false;
    int m_Version = 0;
    std::vector<SField> m_Fields;
    std::vector<SRecord> m_Records;
    std::vector<std::size_t> m_TextureFlags;
    std::vector<std::size_t> m_ProbeFlags;
    std::vector<std::size_t> m_LightmapFlags;
    std::vector<std::string> m_ProbeNames;
    std::vector<std::string> m_LightmapNames;
};

} // namespace testsupport
