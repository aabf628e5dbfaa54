#include "ZekTool/Models/RefusalText.h"

#include <cstddef>
#include <cstdint>

#include "ZekTool/Models/FileKind.h"

namespace zektool
{

namespace
{

std::string ReadStart(filesystem::CRandomAccessFile& file)
{
    constexpr std::size_t size = 64; // enough to tell the kinds apart
    std::string start(size, '\0');
    const std::int64_t count = file.Read(0, start.data(), static_cast<std::int64_t>(size));
    start.resize(static_cast<std::size_t>(count));
    return start;
}

} // namespace

std::string MakeCauseText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file)
{
    if (file.GetSize() == 0)
        return "the file is empty";
    if (refusal.field == "magic" && refusal.kind != zek::SZEKFault::Unreadable)
        return "it looks like " + DescribeFileKind(ReadStart(file));
    return refusal.GetCauseText();
}

std::string MakeRefusalText(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file)
{
    return refusal.GetLocationText() + ": " + MakeCauseText(refusal, file);
}

} // namespace zektool
