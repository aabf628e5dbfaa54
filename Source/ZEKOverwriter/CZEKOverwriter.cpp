#include "ZEKOverwriter/CZEKOverwriter.h"

#include "Specific/FileSystem/CFile.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

bool CZEKOverwriter::Overwrite(const std::string& path)
{
    std::vector<unsigned char> image;
    return filesystem::CFile::ReadImage(image, path) && OverwriteImage(image, path) &&
           filesystem::CFile::WriteImage(image, path);
}

bool CZEKOverwriter::OverwriteImage(std::vector<unsigned char>& image, const std::string& path)
{
    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());

    std::string magic;
    if (!reader.GetZeroTerminatedString(magic) || magic != "ZEK")
        return false;

    int version;
    if (!reader.GetInt(version) || version < version::Oldest)
        return false;

    if (version >= version::ProcessedMarker)
    {
        const std::int64_t markerPos = reader.GetPos();
        int marker;
        if (!reader.GetInt(marker))
            return false;
        image[static_cast<std::size_t>(markerPos)] = 1;
    }

    if (version >= version::HeaderZero)
    {
        int zero;
        if (!reader.GetInt(zero) || zero != 0)
            return false;
    }

    const bool isWalked =
        version < version::TexturesOnly
            ? AnalyseNodeList(reader, version) && AnalyseMeshList(reader, version) &&
                  AnalyseMaterialList(reader, version) && AnalyseTextureList(reader, version) &&
                  AnalyseBoneTable(reader) && AnalyseLightmapList(reader, version)
            : AnalyseTextureList(reader, version) && AnalyseReflectionProbe(reader, version) &&
                  AnalyseLightmapList(reader, version);

    return isWalked && AnalyseTextureCompression(version, path) &&
           AnalyseReflectionProbeCompression(version, path) &&
           AnalyseLightmapCompression(version, path);
}

} // namespace zek
