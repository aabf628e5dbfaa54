#pragma once

#include <string>
#include <string_view>

#include "Specific/FileSystem/LFileName.h"
#include "ZEKFormat/CZEKSink.h"
#include "ZekTool/Check/SSurvey.h"

namespace zektool
{

/// Tells whether a name, taken for a file's, leads out of the folder that the file is expected in.
inline bool IsUnsafeName(std::string_view name)
{
    constexpr std::size_t none = std::string_view::npos;
    if (name == ".." || name.find('/') != none)
        return true;
    // A backslash may be the second byte of a character.
    return name.find('\\') != none && !LFileName::DeleteFileName(std::string(name)).empty();
}

/// Surveys a model while it is walked.
class CSurveySink : public zek::CZEKSink
{
public:
    /// Borrows the survey.
    explicit CSurveySink(SSurvey& survey) : m_Survey(survey) {}

    void Header(const zek::SZEKHeader& header)
    {
        m_Survey.processedMarkerOffset = header.processedMarker.offset;
        m_Survey.processedMarker = static_cast<unsigned char>(header.processedMarkerValue);
    }

    void Node(const zek::SZEKNode& node)
    {
        if (node.parentNodeIndex >= m_Survey.nodeCount)
            m_Survey.hasLaterParent = true;
        ++m_Survey.nodeCount;
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
        Name(m_Survey.textures.back(), texture.name);
    }

    void Bone(std::string_view) { ++m_Survey.boneCount; }

    void Lightmap(const zek::SZEKLightmap& lightmap)
    {
        m_Survey.lightmaps.push_back(MakeItem(lightmap.flags));
        Name(m_Survey.lightmaps.back(), lightmap.name);
    }

    void LightmapCount(int count)
    {
        if (m_Survey.lightmaps.empty())
            m_Survey.namelessLightmapCount = count;
    }

    void Probe(const zek::SZEKProbe& probe)
    {
        if (probe.flags.place.offset < 0)
            return;
        m_Survey.cubemaps.push_back(MakeItem(probe.flags));
        Name(m_Survey.cubemaps.back(), zek::GetProbeName(probe));
    }

private:
    static SSurveyedItem MakeItem(const zek::SZEKFlags& flags)
    {
        SSurveyedItem item;
        item.flags = flags.values;
        item.flagsOffset = flags.place.offset;
        return item;
    }

    void Name(SSurveyedItem& item, std::string_view name)
    {
        m_Survey.hasUnsafeName = m_Survey.hasUnsafeName || IsUnsafeName(name);
        item.name = m_Survey.names.Add(name);
    }

    SSurvey& m_Survey;
};

} // namespace zektool
