#include "ZEKOverwriter/CZEKOverwriter.h"
#include "ZEKOverwriter/ZEKRecord.h"

namespace zek
{

bool CZEKOverwriter::AnalyseBoneTable(fileimage::CFileImageAnalyser& reader)
{
    if (!reader.IsCanRead(IntSize))
        return true;

    int count;
    if (!reader.GetInt(count))
        return false;

    for (int i = 0; i < count; ++i)
    {
        std::string name;
        if (!reader.GetZeroTerminatedString(name))
            return false;

        int value;
        if (!reader.GetInt(value))
            return false;
    }
    return true;
}

} // namespace zek
