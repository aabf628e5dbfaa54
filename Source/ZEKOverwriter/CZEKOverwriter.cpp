#include "ZEKOverwriter/CZEKOverwriter.h"

#include "Specific/FileSystem/CFile.h"
#include "ZEKOverwriter/ZEKRecord.h"
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
    int version;
    return AnalyseHeader(reader, version) && AnalyseSections(reader, version) &&
           AnalyseTextureCompression(version, path) &&
           AnalyseReflectionProbeCompression(version, path) &&
           AnalyseLightmapCompression(version, path);
}

bool CZEKOverwriter::AnalyseHeader(fileimage::CFileImageAnalyser& reader, int& version)
{
    std::string magic;
    if (!reader.GetZeroTerminatedString(magic) || magic != "ZEK")
        return false;

    if (!reader.GetInt(version) || version < version::Oldest)
        return false;

    if (version >= version::ProcessedMarker)
    {
        const unsigned char* markerByte = reader.GetReadPointer();
        int marker;
        if (!reader.GetInt(marker))
            return false;
        SetImageByte(markerByte, 1);
    }

    if (version >= version::HeaderZero)
    {
        int zero;
        if (!reader.GetInt(zero) || zero != 0)
            return false;
    }
    return true;
}

bool CZEKOverwriter::AnalyseSections(fileimage::CFileImageAnalyser& reader, int version)
{
    if (version < version::TexturesOnly)
    {
        return AnalyseNodeList(reader, version) && AnalyseMeshList(reader, version) &&
               AnalyseMaterialList(reader, version) && AnalyseTextureList(reader, version) &&
               AnalyseBoneTable(reader) && AnalyseLightmapList(reader, version);
    }
    return AnalyseTextureList(reader, version) && AnalyseReflectionProbe(reader, version) &&
           AnalyseLightmapList(reader, version);
}

} // namespace zek
