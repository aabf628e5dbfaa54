#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Independent/FileImage/CFileImageMaker.h"
#include "Support/SModel.h"

namespace testsupport
{

enum class EFieldKind
{
    Byte,
    Short,
    Int,
    Float,
    Text, ///< with its terminator
    Block ///< bytes without meaning
};

/// Where a field lies in the image.
struct SField
{
    std::string name; ///< such as "texture name"; records of a kind share their fields' names
    EFieldKind kind;
    std::size_t offset;
    std::size_t size; ///< in bytes
};

/// Writes model files of every version, field by field, and remembers where each field starts. It
/// is the counterpart of the walkers and shares no code with them but the byte image's maker.
///
/// The functions that add a section or record can be called alone, for a walker's own section, or
/// all together through `Build`.
class CModelBuilder
{
public:
    explicit CModelBuilder(int version) : m_Version(version) {}

    /// Returns the builder of a whole model file.
    static CModelBuilder Build(const SModel& model);

    void AddHeader(int marker = 0, int zero = 0);
    void AddNodeList(const std::vector<SNode>& nodes);
    void AddNode(const SNode& node);
    void AddSimpleMesh(const SSimpleMesh& mesh);
    void AddMeshList(const std::vector<SMesh>& meshes);
    void AddMesh(const SMesh& mesh);

    /// The probes stand between the count and the records in versions 11 to 25.
    void AddMaterialList(
        const std::vector<SMaterial>& materials, const std::vector<SProbe>& probes = {});
    void AddMaterial(const SMaterial& material);
    void AddBoneTable(const std::vector<SBone>& bones);
    void AddTextureList(const std::vector<STexture>& textures);
    void AddProbeSection(const std::vector<SProbe>& probes);
    void AddLightmapList(
        const std::vector<SLightmap>& lightmaps, int lightmapSwitch = 1, int trailingInt = 2);

    /// Appends one field. A test that needs a malformed record puts it together from these.
    void AddByte(const std::string& name, unsigned char value);
    void AddShort(const std::string& name, int value);
    void AddInt(const std::string& name, int value);
    void AddFloat(const std::string& name, float value);
    void AddText(const std::string& name, const std::string& text);
    void AddBlock(const std::string& name, const std::string& bytes);

    const std::vector<unsigned char>& GetImage() const { return m_Maker.GetImageData(); }

    /// All fields in file order, without gaps.
    const std::vector<SField>& GetFields() const { return m_Fields; }

    /// Offset of the n-th field of a name, from 0; fails the test program when there is none.
    std::size_t GetOffset(const std::string& name, int n = 0) const;

    /// Offset of the four flags of each texture, probe and lightmap in file order.
    const std::vector<std::size_t>& GetTextureFlagOffsets() const { return m_TextureFlags; }
    const std::vector<std::size_t>& GetProbeFlagOffsets() const { return m_ProbeFlags; }
    const std::vector<std::size_t>& GetLightmapFlagOffsets() const { return m_LightmapFlags; }

private:
    void AddField(const std::string& name, EFieldKind kind, std::size_t size);
    void AddFloats(const std::string& name, int count);
    void AddFlags(const std::string& name, const Flags& flags);
    void AddColor(const std::string& name);
    void AddTextureTransform(const std::string& name, float scaleV, float offsetV);
    void AddIndices(const std::string& name, int vertexCount, const std::vector<int>& indices);
    void AddCollider(const SNode& node);
    void AddShaderParameters(const SMaterial& material);

    int m_Version;
    fileimage::CFileImageMaker m_Maker;
    std::vector<SField> m_Fields;
    std::vector<std::size_t> m_TextureFlags;
    std::vector<std::size_t> m_ProbeFlags;
    std::vector<std::size_t> m_LightmapFlags;
};

/// A small model with every kind of record that its version has: all collider shapes with and
/// without a mesh, a mesh without and one with all streams, every shader type, two of everything
/// that carries flags.
SModel MakeFullModel(int version);

} // namespace testsupport
