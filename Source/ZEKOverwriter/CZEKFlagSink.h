#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ZEKFormat/CZEKSink.h"
#include "ZEKOverwriter/FlagQuad.h"
#include "ZEKOverwriter/ReserveRecords.h"

namespace zek
{

/// Keeps of a walk what the overwriter has to change and what its variants are named by. What is
/// walked before a fault stays.
class CZEKFlagSink : public CZEKSink
{
public:
    void BeginRecords(std::string_view kind, int count, std::int64_t left)
    {
        if (kind == "textures")
            ReserveRecords(m_TextureFlagQuadList, count, left, SmallestTextureSize);
        else if (kind == "probes")
        {
            ReserveRecords(m_ProbeFlagQuadList, count, left, SmallestProbeSize);
            ReserveRecords(m_ProbeNameList, count, left, SmallestProbeSize);
        }
        else if (kind == "lightmaps")
        {
            ReserveRecords(m_LightmapFlagQuadList, count, left, SmallestLightmapSize);
            ReserveRecords(m_LightmapNameList, count, left, SmallestLightmapSize);
        }
    }

    void Header(const SZEKHeader& header) { m_ProcessedMarker = header.processedMarker.address; }

    void Texture(const SZEKTexture& texture)
    {
        m_TextureFlagQuadList.push_back(MakeFlagQuad(texture.flags));
    }

    void LightmapName(std::string_view name) { m_LightmapNameList.emplace_back(name); }

    void Lightmap(const SZEKLightmap& lightmap)
    {
        m_LightmapFlagQuadList.push_back(MakeFlagQuad(lightmap.flags));
    }

    void ProbeFlags(const SZEKFlags& flags) { m_ProbeFlagQuadList.push_back(MakeFlagQuad(flags)); }

    void Probe(const SZEKProbe& probe) { m_ProbeNameList.push_back(GetProbeName(probe)); }

    void ProbeCount(int count) { m_ProbeCount = count; }

    /// The first byte of the processed marker, or null when the file has none.
    const unsigned char* GetProcessedMarker() const { return m_ProcessedMarker; }

    const std::vector<FlagQuad>& GetTextureFlagQuadList() const { return m_TextureFlagQuadList; }
    const std::vector<FlagQuad>& GetLightmapFlagQuadList() const { return m_LightmapFlagQuadList; }
    const std::vector<std::string>& GetLightmapNameList() const { return m_LightmapNameList; }
    const std::vector<FlagQuad>& GetProbeFlagQuadList() const { return m_ProbeFlagQuadList; }
    int GetProbeCount() const { return m_ProbeCount; }
    const std::vector<std::string>& GetProbeNameList() const { return m_ProbeNameList; }

private:
    static FlagQuad MakeFlagQuad(const SZEKFlags& flags)
    {
        FlagQuad quad = {};
        for (std::size_t family = 0; flags.place.address != nullptr && family < quad.size();
             ++family)
            quad[family] = flags.place.address + family;
        return quad;
    }

    const unsigned char* m_ProcessedMarker = nullptr;
    std::vector<FlagQuad> m_TextureFlagQuadList;
    std::vector<FlagQuad> m_LightmapFlagQuadList;
    std::vector<std::string> m_LightmapNameList;
    std::vector<FlagQuad> m_ProbeFlagQuadList;
    int m_ProbeCount = 0;
    std::vector<std::string> m_ProbeNameList;
};

} // namespace zek
