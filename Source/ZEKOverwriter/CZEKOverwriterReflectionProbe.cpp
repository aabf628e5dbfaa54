#include <utility>

#include "Independent/FormatString/LFormat.h"
#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/ZEKRecord.h"
#include "ZEKOverwriter/ZEKVersion.h"

namespace zek
{

namespace
{

constexpr int ProbeFloatCount = 6;
constexpr int ProbeMinimumSize = IntSize + ProbeFloatCount * FloatSize;

} // namespace

bool CZEKOverwriter::AnalyseReflectionProbe(fileimage::CFileImageAnalyser& reader, int version)
{
    int count = 0;
    if (version >= version::ReflectionProbeCount && !reader.GetInt(count))
        return false;

    const int recordCount = version >= version::ReflectionProbeRecords ? count : 0;
    ReserveRecords(m_ProbeFlagQuadList, reader, ProbeMinimumSize, recordCount);
    ReserveRecords(m_ProbeNameList, reader, ProbeMinimumSize, recordCount);
    for (int i = 0; i < recordCount; ++i)
    {
        int probeValue;
        if (!reader.GetInt(probeValue))
            return false;

        if (!reader.IsCanRead(ProbeFloatCount * FloatSize))
            return false;
        for (int j = 0; j < ProbeFloatCount; ++j)
            reader.GetFloatNoCheck();

        if (version >= version::ReflectionProbeFlags)
        {
            int secondValue;
            if (!reader.GetInt(secondValue))
                return false;

            FlagQuad flags(CompressionFamilyCount, nullptr);
            if (!ReadFlagQuad(reader, flags))
                return false;
            m_ProbeFlagQuadList.push_back(std::move(flags));
        }

        std::string name;
        if (version < version::ReflectionProbeName)
            name = LFormat::Make("%d", i);
        else if (!reader.GetZeroTerminatedString(name))
            return false;
        m_ProbeNameList.push_back(std::move(name));
    }
    m_ProbeCount = count;
    return true;
}

} // namespace zek
