#include "ZekTool/Check/Checker.h"

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/CZEKFileSource.h"
#include "ZEKFormat/CZEKWalk.h"
#include "ZEKFormat/ZEKFile.h"
#include "ZekTool/Check/CReferenceSink.h"
#include "ZekTool/Check/CSurveySink.h"
#include "ZekTool/Check/CVariantCheck.h"
#include "ZekTool/Check/CVariantFolderCheck.h"
#include "ZekTool/Models/CVariantSearch.h"
#include "ZekTool/Models/FileKind.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Models/RefusalText.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

constexpr std::int64_t LargestSize = std::numeric_limits<std::uint32_t>::max();

SFinding MakeModelFinding(const std::string& message)
{
    SFinding finding;
    finding.location.section = "model";
    finding.message = message;
    return finding;
}

EFinding GetRefusalFinding(const zek::SZEKRefusal& refusal, filesystem::CRandomAccessFile& file)
{
    if (file.GetSize() == 0)
        return EFinding::EmptyFile;
    if (refusal.kind == zek::SZEKFault::Unreadable)
        return EFinding::Unreadable;
    if (refusal.field == "magic")
        return IsCutMagic(ReadStart(file)) ? EFinding::Truncated : EFinding::NotAModel;
    if (refusal.kind == zek::SZEKFault::TooShort)
        return EFinding::Truncated;
    if (refusal.kind == zek::SZEKFault::Unterminated)
        return EFinding::UnterminatedName;
    if (refusal.section != "header")
        return EFinding::WrongSwitch;
    return refusal.field == "version" ? EFinding::TooOld : EFinding::WrongHeader;
}

/// Says why a walk did not come to the end of a file. A file that another walk accepts has changed
/// meanwhile.
void AddRefusal(filesystem::CRandomAccessFile& file, CFindingList& findings)
{
    const std::optional<zek::SZEKRefusal> refusal = zek::WhyRefused(file);
    const EFinding finding = refusal ? GetRefusalFinding(*refusal, file) : EFinding::Unreadable;
    findings.Add(
        finding,
        [&]
        {
            if (!refusal)
                return MakeModelFinding("it has changed while it was read");
            SFinding made;
            made.location = *refusal;
            made.message = MakeCauseText(*refusal, file);
            return made;
        });
}

void CheckProcessedMarker(const SSurvey& survey, CFindingList& findings)
{
    if (survey.processedMarkerOffset < 0 || survey.processedMarker == 1)
        return;
    findings.Add(
        EFinding::NotMarked,
        [&]
        {
            SFinding finding;
            finding.location.section = "header";
            finding.location.field = "processedMarker";
            finding.location.offset = survey.processedMarkerOffset;
            finding.message =
                "its first byte is " + std::to_string(survey.processedMarker) + " instead of 1";
            return finding;
        });
}

/// Keeps the parents of the nodes.
struct CParentSink : zek::CZEKSink
{
    void Node(const zek::SZEKNode& node) { parents.push_back(node.parentNodeIndex); }

    std::vector<int> parents;
};

std::vector<int> ReadParents(filesystem::CRandomAccessFile& file)
{
    zek::CZEKFileSource source(file);
    CParentSink sink;
    zek::CZEKWalk<zek::CZEKFileSource, CParentSink> walk(source, sink);
    WalkFile(walk); // of what cannot be walked the next walk says why
    return std::move(sink.parents);
}

void CheckReferences(
    const SSurvey& survey, bool isDeep, filesystem::CRandomAccessFile& file, CFindingList& findings)
{
    if (!isDeep && !CReferenceSink::IsNeeded(survey))
        return;
    zek::CZEKFileSource source(file);
    // Circles have a parent that does not stand before its child, which is rare: parents are kept
    // only then.
    std::vector<int> parents;
    if (survey.hasLaterParent)
        parents = ReadParents(file);
    CReferenceSink sink(survey, std::move(parents), isDeep, findings);
    zek::CZEKWalk<zek::CZEKFileSource, CReferenceSink> walk(source, sink);
    if (!WalkFile(walk))
        AddRefusal(file, findings);
}

void CheckVariants(
    const std::string& path,
    const SSurvey& survey,
    const SCheckOptions& options,
    CFindingList& findings)
{
    const std::string folder = GetModelFolder(path);
    CVariantCheck check(folder, options, findings);
    check.CheckItems(zek::EZEKItemKind::Texture, survey.textures);
    check.CheckItems(zek::EZEKItemKind::Cubemap, survey.cubemaps);
    check.CheckItems(zek::EZEKItemKind::Lightmap, survey.lightmaps);
    const CLightmapStems stems(survey.lightmaps);
    CheckSharedLightmaps(survey.lightmaps, stems, findings);
    CVariantFolderCheck(path, folder, survey, stems, findings).Check();
}

void AddTooLarge(std::int64_t size, CFindingList& findings)
{
    findings.Add(
        EFinding::TooLarge,
        [&] { return MakeModelFinding("it has " + std::to_string(size) + " bytes"); });
}

void AddBytesAfterEnd(std::int64_t end, std::int64_t count, CFindingList& findings)
{
    findings.Add(
        EFinding::BytesAfterEnd,
        [&]
        {
            SFinding finding = MakeModelFinding(
                MakeCount(static_cast<std::uint64_t>(count), "byte is", "bytes are") +
                " never read");
            finding.location.field = "end";
            finding.location.offset = end;
            return finding;
        });
}

/// Surveys a file. What is held of the file itself is gone at the end.
bool Survey(filesystem::CRandomAccessFile& file, SSurvey& survey)
{
    zek::CZEKFileSource source(file);
    CSurveySink sink(survey);
    zek::CZEKWalk<zek::CZEKFileSource, CSurveySink> walk(source, sink);
    const bool isWhole = WalkFile(walk);
    survey.end = source.GetPos();
    return isWhole;
}

void CheckFile(
    const std::string& path,
    filesystem::CRandomAccessFile& file,
    const SCheckOptions& options,
    CFindingList& findings)
{
    if (file.GetSize() > LargestSize)
        AddTooLarge(file.GetSize(), findings);

    SSurvey survey;
    if (!Survey(file, survey))
    {
        AddRefusal(file, findings);
        return;
    }
    CheckProcessedMarker(survey, findings);
    CheckVariants(path, survey, options, findings);
    CheckReferences(survey, options.isDeep, file, findings);
    if (survey.end < file.GetSize())
        AddBytesAfterEnd(survey.end, file.GetSize() - survey.end, findings);
}

} // namespace

SCheckResult Check(const std::string& path, const SCheckOptions& options)
{
    filesystem::CRandomAccessFile file;
    const std::string whyNot = OpenModel(path, file);
    if (!whyNot.empty())
        return MakeFailedCheck(whyNot, options);
    CFindingList findings(options);
    CheckFile(path, file, options, findings);
    return findings.TakeResult();
}

SCheckResult MakeFailedCheck(const std::string& reason, const SCheckOptions& options)
{
    CFindingList findings(options);
    findings.Add(EFinding::CannotOpen, [&] { return MakeModelFinding(reason); });
    return findings.TakeResult();
}

} // namespace zektool
