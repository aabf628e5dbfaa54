#include <gtest/gtest.h>

#include "Support/SModel.h"
#include "Tool.h"

using namespace testsupport;

namespace
{

/// A model of one version with every kind of record that it has, two each of what has flags, and
/// with bytes after its last section.
class EveryVersion : public testing::TestWithParam<int>
{
protected:
    EveryVersion() : m_Model(MakeFullModel(GetParam()))
    {
        m_Model.marker = 0x01020300;
        m_Model.tail = std::string("tail\0\1\xFF\r\n", 9);
    }

    void SetOldFlags(const Flags& flags)
    {
        for (STexture& texture : m_Model.textures)
            texture.flags = flags;
        for (SProbe& probe : m_Model.probes)
            probe.flags = flags;
        for (SLightmap& lightmap : m_Model.lightmaps)
            lightmap.flags = flags;
    }

    bool HasProbeFlags() const { return GetParam() >= 16; }
    bool HasLightmapRecords() const { return GetParam() >= 26; }

    std::string GetProbeName(int index) const
    {
        if (GetParam() < 26)
            return std::to_string(index);
        return m_Model.probes[static_cast<std::size_t>(index)].name;
    }

    /// Takes the flags for those of the items that the version has.
    SItemFlags MakeFlags(
        const std::vector<Flags>& textures,
        const std::vector<Flags>& probes,
        const std::vector<Flags>& lightmaps) const
    {
        SItemFlags flags{textures, {}, {}};
        if (HasProbeFlags())
            flags.probes = probes;
        if (HasLightmapRecords())
            flags.lightmaps = lightmaps;
        return flags;
    }

    SModel m_Model;
    CTemporaryFolder m_Folder;
};

} // namespace

TEST_P(EveryVersion, WithoutVariantsFlagsThatWereSetGoBackToZero)
{
    SetOldFlags(Old);
    ExpectFlags(m_Folder, m_Model, MakeFlags({None, None}, {None, None}, {None, None}));
}

TEST_P(EveryVersion, WithAllVariantsAllFlagsAreSet)
{
    for (const char* name : {"000", "001", "LightMap000", "LightMap001"})
    {
        m_Folder.Write(std::string("tex_pvrtc/") + name + ".pvr", "");
        m_Folder.Write(std::string("tex_etc/") + name + ".pvr", "");
        m_Folder.Write(std::string("tex_astc/") + name + ".pvr", "");
        m_Folder.Write(std::string("tex_dxt/") + name + ".dds", "");
    }
    for (int probe : {0, 1})
    {
        WriteFaces(m_Folder, "tex_reflection_cube_pvrtc\\" + GetProbeName(probe), "pvr");
        WriteFaces(m_Folder, "tex_reflection_cube_etc\\" + GetProbeName(probe), "pvr");
        WriteFaces(m_Folder, "tex_reflection_cube_astc\\" + GetProbeName(probe), "pvr");
        WriteFaces(m_Folder, "tex_reflection_cube_dxt\\" + GetProbeName(probe), "dds");
    }
    ExpectFlags(m_Folder, m_Model, MakeFlags({All, All}, {All, All}, {All, All}));
}

TEST_P(EveryVersion, WithSomeVariantsJustTheirFlagsAreSet)
{
    SetOldFlags({0, 1, 1, 0});
    m_Folder.Write("tex_pvrtc/000.pvr", "");
    m_Folder.Write("tex_etc/001.pvr", "");
    m_Folder.Write("tex_dxt/001.dds", "");
    m_Folder.Write("tex_astc/LightMap000.pvr", "");
    m_Folder.Write("tex_dxt/LightMap001.dds", "");
    WriteFaces(m_Folder, "tex_reflection_cube_etc\\" + GetProbeName(0), "pvr");
    WriteFaces(m_Folder, "tex_reflection_cube_astc\\" + GetProbeName(0), "pvr");
    WriteFaces(m_Folder, "tex_reflection_cube_astc\\" + GetProbeName(1), "pvr");
    ExpectFlags(
        m_Folder, m_Model,
        MakeFlags(
            {{1, 0, 0, 0}, {0, 1, 0, 1}}, {{0, 1, 1, 0}, {0, 0, 1, 0}},
            {{0, 0, 1, 0}, {0, 0, 0, 1}}));
}

INSTANTIATE_TEST_SUITE_P(
    Versions,
    EveryVersion,
    testing::Range(testsupport::OldestVersion, testsupport::UnknownVersion + 1),
    testing::PrintToStringParamName());
