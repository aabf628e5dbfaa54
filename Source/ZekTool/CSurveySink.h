#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Specific/FileSystem/LFileName.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZekTool/CFindingList.h"
#include "ZekTool/SSurvey.h"

namespace zektool
{

/// True for a name that, taken for a file's, leads out of the folder that the file is expected in.
inline bool IsUnsafeName(const std::string& name)
{
    return name == ".." || name.find('/') != std::string::npos ||
           !LFileName::DeleteFileName(name).empty();
}

/// Surveys a model while it is walked, and finds unsafe names on the way.
class CSurveySink : public zek::CZEKRefusalSink
{
public:
    /// Borrows both.
    CSurveySink(SSurvey& survey, CFindingList& findings) : m_Survey(survey), m_Findings(findings) {}

    void BeginSection(const char* name)
    {
        CZEKRefusalSink::BeginSection(name);
        const std::string_view section = name;
        m_IsNamingFiles = section == "textures" || section == "lightmaps" || section == "probes";
    }

    void Text(const char* field, std::int64_t offset, std::string_view value)
    {
        CZEKRefusalSink::Text(field, offset, value);
        if (m_IsNamingFiles && IsUnsafeName(std::string(value)))
            AddUnsafeName(field, offset);
    }

    void Header(const zek::SZEKHeader& header)
    {
        m_Survey.processedMarkerOffset = header.processedMarker.offset;
    }

    void Node(const zek::SZEKNode& node)
    {
        m_Survey.parents.push_back(node.parentNodeIndex);
        m_Survey.parentIndices.Add(node.parentNodeIndex);
        m_Survey.meshIndices.Add(node.meshIndex);
    }

    void BeginMesh(const zek::SZEKMeshHeader&) { ++m_Survey.meshCount; }
    void BeginPrimitive(int materialIndex) { m_Survey.materialIndices.Add(materialIndex); }

    void Material(const zek::SZEKMaterial& material)
    {
        ++m_Survey.materialCount;
        m_Survey.textureIndices.Add(material.mainTextureIndex);
        m_Survey.textureIndices.Add(material.normalTextureIndex);
        m_Survey.textureIndices.Add(material.emissionTextureIndex);
        m_Survey.textureIndices.Add(material.roughnessTextureIndex);
    }

    void Texture(const zek::SZEKTexture& texture)
    {
        m_Survey.textures.push_back(MakeItem(texture.flags));
        m_Survey.textures.back().name = texture.name;
    }

    void Bone(std::string_view) { ++m_Survey.boneCount; }

    void Lightmap(const zek::SZEKLightmap& lightmap)
    {
        m_Survey.lightmaps.push_back(MakeItem(lightmap.flags));
        m_Survey.lightmaps.back().name = lightmap.name;
    }

    void LightmapCount(int count)
    {
        if (m_Survey.lightmaps.empty())
            m_Survey.namelessLightmapCount = count;
    }

    void ProbeFlags(const zek::SZEKPlace& flags) { m_Survey.cubemaps.push_back(MakeItem(flags)); }

    void Probe(const zek::SZEKProbe& probe)
    {
        if (!m_Survey.cubemaps.empty())
            m_Survey.cubemaps.back().name = zek::GetProbeName(probe);
    }

private:
    static SSurveyedItem MakeItem(const zek::SZEKPlace& flags)
    {
        SSurveyedItem item;
        std::copy_n(flags.address, item.flags.size(), item.flags.begin());
        item.flagsOffset = flags.offset;
        return item;
    }

    void AddUnsafeName(const char* field, std::int64_t offset)
    {
        m_Findings.Add(
            EFinding::UnsafeName,
            [&]
            {
                SFinding finding;
                finding.location = Locate(field, offset);
                finding.message = "the name leads to another folder";
                return finding;
            });
    }

    SSurvey& m_Survey;
    CFindingList& m_Findings;
    bool m_IsNamingFiles = false;
};

} // namespace zektool
