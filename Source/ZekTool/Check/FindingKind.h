#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zektool
{

enum class ESeverity
{
    Error,   ///< stops a build
    Warning, ///< says what is probably a mistake
};

/// Everything that a check can find, in the order of the document.
enum class EFinding
{
    CannotOpen,
    EmptyFile,
    NotAModel,
    TooOld,
    WrongHeader,
    WrongSwitch,
    UnterminatedName,
    Truncated,
    Unreadable,
    TooLarge,

    FlagWithoutVariant,
    VariantWithoutFlag,
    WrongFlag,
    NotMarked,

    IncompleteCubemap,
    CubemapInFolders,
    VariantNameCase,
    EmptyVariant,
    VariantNotAFile,
    UnreadableVariant,
    UnusedVariant,
    PartialFamily,
    SharedLightmapVariant,

    TextureIndex,
    MeshIndex,
    ParentIndex,
    MaterialIndex,
    ParentCircle,
    UnsafeName,
    BytesAfterEnd,

    BoneIndex,
    VertexIndex,
    NotFinite,
};

constexpr std::size_t FindingKindCount = static_cast<std::size_t>(EFinding::NotFinite) + 1;

/// What is the same of all findings of a kind.
struct SFindingKind
{
    EFinding finding;
    std::string_view code; ///< names the kind for good, such as "flag-without-variant"
    ESeverity severity;    ///< unless somebody asks for another
    std::string_view text; ///< in a few words
    std::string_view explanation;
    std::string_view remedy; ///< what to do, as it ends a finding's line
};

using FindingKinds = std::array<SFindingKind, FindingKindCount>;

/// Returns all kinds in the order of `EFinding`.
const FindingKinds& GetFindingKinds();

const SFindingKind& GetFindingKind(EFinding finding);

/// Returns the finding that a code names, or nothing.
std::optional<EFinding> FindFinding(std::string_view code);

/// Returns what a code means and the remedy, in lines; nothing for a code that there is not.
std::optional<std::string> Explain(std::string_view code);

std::string_view GetSeverityName(ESeverity severity);

} // namespace zektool
