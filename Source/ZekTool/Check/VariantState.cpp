#include "ZekTool/Check/VariantState.h"

#include <filesystem>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace fs = std::filesystem;

namespace zektool
{

EVariantState GetVariantState(const std::string& path)
{
    // Not following links: one that leads nowhere is something, too.
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path, error)))
        return EVariantState::Absent;
    if (!filesystem::CRandomAccessFile::CanOpen(path))
        return EVariantState::Unreadable;
    if (!fs::is_regular_file(path, error))
        return EVariantState::NotAFile;
    return fs::file_size(path, error) == 0 ? EVariantState::Empty : EVariantState::File;
}

} // namespace zektool
