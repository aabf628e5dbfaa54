#include "ZekTool/Check/VariantState.h"

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/SystemFiles.h"

using filesystem::EPathKind;

namespace zektool
{

EVariantState GetVariantState(const std::string& path)
{
    // Most are files: opened, they need not be looked up again.
    filesystem::CRandomAccessFile file;
    if (file.Open(path))
        return file.GetSize() == 0 ? EVariantState::Empty : EVariantState::File;

    // Not following links: one that leads nowhere is something, too.
    const EPathKind kind = filesystem::GetLinkKind(path);
    if (kind == EPathKind::Absent || kind == EPathKind::Unknown)
        return EVariantState::Absent;
    if (kind == EPathKind::Denied || !filesystem::CRandomAccessFile::CanOpen(path))
        return EVariantState::Unreadable;
    const filesystem::SPathStatus status = filesystem::GetPathStatus(path);
    if (status.kind != EPathKind::File)
        return EVariantState::NotAFile;
    return status.size == 0 ? EVariantState::Empty : EVariantState::File;
}

} // namespace zektool
