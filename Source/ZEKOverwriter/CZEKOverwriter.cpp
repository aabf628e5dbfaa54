#include "ZEKOverwriter/CZEKOverwriter.h"

#include "Specific/FileSystem/CFile.h"
#include "ZEKOverwriter/ImageByte.h"

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
    if (!AnalyseHeader(reader, version) || !AnalyseSections(reader, version))
        return false;

    SetProcessedMarker();
    return AnalyseTextureCompression(version, path) &&
           AnalyseReflectionProbeCompression(version, path) &&
           AnalyseLightmapCompression(version, path);
}

void CZEKOverwriter::SetProcessedMarker()
{
    if (m_Flags.GetProcessedMarker() != nullptr)
        SetImageByte(m_Flags.GetProcessedMarker(), 1);
}

} // namespace zek
