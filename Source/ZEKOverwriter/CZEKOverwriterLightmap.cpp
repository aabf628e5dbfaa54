#include <utility>

#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

bool CZEKOverwriter::AnalyseLightmapList(fileimage::CFileImageAnalyser& reader, int version)
{
    int count;
    if (!reader.GetInt(count))
        return false;

    if (version >= version::LightmapRecords)
    {
        ReserveRecords(m_LightmapNameList, reader, ByteSize + FlagQuadSize, count);
        ReserveRecords(m_LightmapFlagQuadList, reader, ByteSize + FlagQuadSize, count);
        for (int i = 0; i < count; ++i)
        {
            std::string name;
            if (!reader.GetZeroTerminatedString(name))
                return false;
            m_LightmapNameList.push_back(std::move(name));

            FlagQuad flags(CompressionFamilyCount, nullptr);
            if (!ReadFlagQuad(reader, flags))
                return false;
            m_LightmapFlagQuadList.push_back(std::move(flags));
        }
    }

    int lightmapSwitch;
    if (version >= version::LightmapSwitch && !reader.GetInt(lightmapSwitch))
        return false;

    int trailingInt;
    return version < version::LightmapTrailingInt || reader.GetInt(trailingInt);
}

} // namespace zek
