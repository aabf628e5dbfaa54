#include "ZekTool/VariantState.h"

#include <filesystem>

#include "Specific/FileSystem/CRandomAccessFile.h"

namespace fs = std::filesystem;

namespace zektool
{

EVariantState GetVariantState(const std::string& path)
{
    std::error_code error;
    if (!filesystem::CRandomAccessFile::CanOpen(path))
    {
        // Not following links: one that leads nowhere is something, too.
        return fs::exists(fs::symlink_status(path, error)) ? EVariantState::Unreadable
                                                           : EVariantState::Absent;
    }
    if (!fs::is_regular_file(path, error))
        return EVariantState::NotAFile;
    return fs::file_size(path, error) == 0 ? EVariantState::Empty : EVariantState::File;
}

} // namespace zektool
