#include "ZekTool/Models/SModelInfo.h"

#include <algorithm>
#include <string_view>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKRefusalSink.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Models/RefusalText.h"

namespace zektool
{

namespace
{

/// Keeps what is to be told of a model.
class CInfoSink : public zek::CZEKRefusalSink
{
public:
    explicit CInfoSink(SModelInfo& info) : m_Info(info) {}

    void Header(const zek::SZEKHeader& header)
    {
        m_Info.version = header.version;
        m_Info.hasGeometry = header.version < zek::version::TexturesOnly;
        m_Info.hasMarker = header.processedMarker.offset >= 0;
        m_Info.isProcessed = m_Info.hasMarker && (header.processedMarkerValue & 0xff) == 1;
    }

    void Node(const zek::SZEKNode&) { ++m_Info.nodeCount; }
    void EndMesh() { ++m_Info.meshCount; }
    void Material(const zek::SZEKMaterial&) { ++m_Info.materialCount; }
    void Bone(std::string_view) { ++m_Info.boneCount; }

    void Texture(const zek::SZEKTexture& texture)
    {
        m_Info.textures.push_back(MakeItem(texture.flags));
        m_Info.textures.back().name = texture.name;
    }

    void Probe(const zek::SZEKProbe& probe)
    {
        m_Info.cubemaps.push_back(MakeItem(probe.flags));
        m_Info.cubemaps.back().name = zek::GetProbeName(probe);
    }

    void ProbeCount(int count) { m_Info.cubemapCount = std::max(count, 0); }

    void Lightmap(const zek::SZEKLightmap& lightmap)
    {
        m_Info.lightmaps.push_back(MakeItem(lightmap.flags));
        m_Info.lightmaps.back().name = lightmap.name;
    }

    void LightmapCount(int count) { m_Info.lightmapCount = std::max(count, 0); }

private:
    static SItemInfo MakeItem(const zek::SZEKFlags& flags)
    {
        SItemInfo item;
        item.hasFlags = flags.place.offset >= 0;
        item.flags = flags.values;
        return item;
    }

    SModelInfo& m_Info;
};

} // namespace

std::string ReadModelInfo(const std::string& path, SModelInfo& info)
{
    filesystem::CRandomAccessFile file;
    std::string error = OpenModel(path, file);
    if (!error.empty())
        return error;
    info.size = file.GetSize();
    zek::CZEKFileSource source(file);
    CInfoSink sink(info);
    zek::CZEKWalk<zek::CZEKFileSource, CInfoSink> walk(source, sink);
    return zek::WalkFile(walk) ? "" : MakeRefusalText(sink.GetRefusal(), file);
}

} // namespace zektool
