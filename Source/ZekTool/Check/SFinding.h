#pragma once

#include <string>
#include <string_view>

#include "ZEKFormat/SZEKLocation.h"
#include "ZekTool/Check/FindingKind.h"

namespace zektool
{

/// Returns a name or path as a finding tells it: whole, unless it is longer than any path that a
/// system opens. A model may have one of megabytes, and a hundred findings about it.
std::string MakeTold(std::string_view name);

/// Something that a check found.
struct SFinding
{
    EFinding finding = EFinding::CannotOpen;
    ESeverity severity = ESeverity::Error; ///< the one asked for, else that of its kind
    zek::SZEKLocation location; ///< where in the model; the section "model" means the whole of it
    std::string message;        ///< what was found, without the place and without the remedy
    std::string path; ///< of the variant that it concerns, in the system's own form; else empty

    /// Returns it in one line without the model's path: `texture 1 "wall.png": flags[3] at 0x2d:
    /// DXT is 1, and tex_dxt/001.dds is not there; make the variant, or run zek mark
    /// [flag-without-variant]`.
    std::string GetText() const;
};

} // namespace zektool
