#pragma once

#include <string>

namespace zektool
{

/// What lies at the path of a variant.
enum class EVariantState
{
    Absent,
    Unreadable, ///< something that cannot be opened, so that it does not count as there
    NotAFile,   ///< counts as there, as do the next two
    Empty,
    File,
};

/// Returns what lies at the path of a variant. What is there is what `CRandomAccessFile::CanOpen`
/// says.
EVariantState GetVariantState(const std::string& path);

inline bool IsThere(EVariantState state)
{
    return state != EVariantState::Absent && state != EVariantState::Unreadable;
}

} // namespace zektool
