#include "ZEKOverwriter/CZEKOverwriter.h"

#include "Specific/FileSystem/CFile.h"
#include "ZEKOverwriter/ImageByte.h"

namespace zek
{

bool CZEKOverwriter::Overwrite(const std::string& path)
{
    filesystem::CFileBuffer image;
    return filesystem::CFile::ReadBuffer(image, path) &&
           OverwriteBytes(image.GetData(), image.GetSize(), path) &&
           filesystem::CFile::WriteBuffer(image, path);
}

bool CZEKOverwriter::OverwriteImage(std::vector<unsigned char>& image, const std::string& path)
{
    return OverwriteBytes(image.data(), image.size(), path);
}

bool CZEKOverwriter::OverwriteBytes(
    const unsigned char* image, std::size_t size, const std::string& path)
{
    // The addresses go with the image, also when memory runs out.
    struct CForget
    {
        ~CForget() { flags = CZEKFlagSink(); }
        CZEKFlagSink& flags;
    } forget{m_Flags};

    fileimage::CFileImageAnalyser reader(image, image + size);
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
