#include "ZekTool/Models/RefusalText.h"

#include "ZekTool/Models/FileKind.h"

namespace zektool
{

std::string MakeCauseText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file)
{
    if (file.GetSize() == 0)
        return "the file is empty";
    if (refusal.field != "magic" || refusal.kind == zek::SZEKFault::Unreadable)
        return refusal.GetCauseText();
    const std::string start = ReadStart(file);
    if (IsCutMagic(start))
        return "the file ends within the first " + std::to_string(ModelMagic.size()) + " bytes";
    return "it looks like " + DescribeFileKind(start);
}

std::string MakeRefusalText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file)
{
    return refusal.GetLocationText() + ": " + MakeCauseText(refusal, file);
}

} // namespace zektool
