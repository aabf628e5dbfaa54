#include <utility>

#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

bool CZEKOverwriter::AnalyseTextureList(fileimage::CFileImageAnalyser& reader, int version)
{
    int count;
    if (!reader.GetInt(count))
        return false;

    ReserveRecords(m_TextureFlagQuadList, reader, ByteSize + IntSize + FlagQuadSize, count);
    for (int i = 0; i < count; ++i)
    {
        std::string name;
        if (!reader.GetZeroTerminatedString(name))
            return false;

        int clamp;
        if (version >= version::TextureClamp && !reader.GetInt(clamp))
            return false;

        FlagQuad flags(CompressionFamilyCount, nullptr);
        if (version >= version::TextureFlags && !ReadFlagQuad(reader, flags))
            return false;
        m_TextureFlagQuadList.push_back(std::move(flags));
    }
    return true;
}

} // namespace zek
