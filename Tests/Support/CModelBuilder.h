#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Independent/FileImage/CFileImageMaker.h"
#include "Support/CModelFields.h"
#include "Support/SModel.h"

namespace testsupport
{

/// Writes model files of every version by the description in ModelDescription.h. Floats that a
/// model does not set are their own offset and a half, so that no two are the same.
///
/// The functions that add a section or record can be called alone, for a walker's own section, or
/// all together through `Build`.
class CModelBuilder : public CModelFields
{
public:
    explicit CModelBuilder(int version) : CModelFields(version) {}

    /// Returns the builder of a whole model file.
    static CModelBuilder Build(SModel model);

    void AddHeader(int marker = 0, int zero = 0);
    void AddNodeList(std::vector<SNode> nodes);
    void AddNode(SNode node);
    void AddSimpleMesh(SSimpleMesh mesh);
    void AddMeshList(std::vector<SMesh> meshes);
    void AddMesh(SMesh mesh);

    /// The probes stand between the count and the records in versions 11 to 25.
    void AddMaterialList(std::vector<SMaterial> materials, std::vector<SProbe> probes = {});
    void AddMaterial(SMaterial material);
    void AddBoneTable(std::vector<SBone> bones);
    void AddTextureList(std::vector<STexture> textures);
    void AddProbeSection(std::vector<SProbe> probes);
    void
    AddLightmapList(std::vector<SLightmap> lightmaps, int lightmapSwitch = 1, int trailingInt = 2);

    /// Appends one field. A test that needs a malformed record puts it together from these.
    void AddInt(const std::string& name, int value) { Int(name, value); }
    void AddBytes(const std::string& name, const std::string& bytes);

    const std::vector<unsigned char>& GetImage() const { return m_Maker.GetImageData(); }

    // What the description calls. Every value is appended; nothing is demanded or expected.

    static void SetVersion(int) {}
    static void Demand(const std::string&, int) {}
    template <typename Value>
    static void Expect(bool, const std::string&, const Value&, const std::string&)
    {
    }
    static bool IsThere(bool isThere) { return isThere; }

    void Int(const std::string& name, int value);
    void Switch(const std::string& name, int value) { Int(name, value); }
    void Word(const std::string& name, int value);
    void Text(const std::string& name, const std::string& text);
    void Floats(const std::string& name, const float* values, int count);
    void Bytes(const std::string& name, const unsigned char* values, int count);

    // Values that a model does not hold.
    void Floats(const std::string& name, int count);
    void Shorts(const std::string& name, int count);
    void Filler(const std::string& name, int count);

    template <typename Item>
    SCount Count(const std::string& name, const std::vector<Item>& items)
    {
        const SCount count = {static_cast<int>(items.size()), m_Pos};
        Int(name, count.value);
        return count;
    }

    template <typename Describe>
    void Array(const std::string& name, int size, int count, Describe describe)
    {
        Elements(name, static_cast<std::size_t>(size), count, describe);
    }

    template <typename Describe>
    void ArrayOneByOne(const std::string& name, int size, int count, Describe describe)
    {
        Array(name, size, count, describe);
    }

private:
    fileimage::CFileImageMaker m_Maker;
};

/// Returns the builder of a whole model file without any record.
CModelBuilder BuildEmpty(int version, int marker = 0, int headerZero = 0);

} // namespace testsupport
