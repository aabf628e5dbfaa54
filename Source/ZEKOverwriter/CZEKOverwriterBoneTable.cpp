#include "ZEKOverwriter/CZEKOverwriter.h"

namespace zek
{

bool CZEKOverwriter::AnalyseBoneTable(fileimage::CFileImageAnalyser& reader)
{
    // A file may end before the table.
    int count;
    if (!reader.GetInt(count))
        return true;

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
