#include "ZekTool/Command/CMarkCommand.h"

#include <set>
#include <utility>

#include <fmt/format.h>

#include "Specific/FileSystem/SystemFiles.h"
#include "ZekTool/Mark/CMarker.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

using filesystem::EPathKind;

namespace
{

/// Calls a function with each family whose flag changes: its name, the old and the new value.
template <typename Use>
void ForEachChange(const SMarkItem& item, Use use)
{
    for (std::size_t family = 0; family < item.from.size(); ++family)
    {
        if (item.from[family] != item.to[family])
            use(zek::CompressionFamilies[family].name, item.from[family], item.to[family]);
    }
}

std::string MakeChangeLines(const SMarkItem& item)
{
    std::string text;
    ForEachChange(
        item,
        [&](std::string_view family, unsigned char from, unsigned char to)
        {
            text += fmt::format(
                "  {} {:03} {}: {} {} -> {}\n", GetKindName(item.kind), item.index,
                MakeQuoted(item.name), family, from, to);
        });
    return text;
}

/// Returns what changes in a model: "3 flags and the processed marker".
std::string MakeChangeCount(const SMarkResult& result)
{
    std::size_t flagCount = 0;
    for (const SMarkItem& item : result.items)
        ForEachChange(item, [&](auto&&...) { ++flagCount; });
    if (flagCount == 0)
        return "the processed marker";
    return MakeCount(flagCount, "flag", "flags") +
           (result.isMarkerSet ? " and the processed marker" : "");
}

std::string MakeOutputPath(std::string folder, const SModelPath& model)
{
    if (!filesystem::IsSystemSeparator(folder.back()))
        folder += filesystem::SystemSeparator;
    return folder.append(model.GetName());
}

/// Tells whether a model, or the file that its name is a link to, has one of the places.
bool IsAtOneOf(const std::set<filesystem::SPlace>& places, const std::string& modelPath)
{
    if (places.count(filesystem::GetPlace(modelPath)) != 0)
        return true;
    std::string target = modelPath;
    return filesystem::GetLinkKind(modelPath) == EPathKind::Link &&
           filesystem::ResolveLinks(target).empty() &&
           places.count(filesystem::GetPlace(target)) != 0;
}

/// Refuses outputs that would go over each other or over a model of the list, whatever way they
/// lead there.
void CheckOutputPlaces(const std::string& folder, const std::vector<SModelPath>& models)
{
    std::set<filesystem::SPlace> places;
    for (const SModelPath& model : models)
    {
        const std::string path = MakeOutputPath(folder, model);
        if (filesystem::GetLinkKind(path) == EPathKind::Link)
            throw CUsageError(
                MakeShowable(path) +
                " is a link, which may lead to a model or to another output; remove it");
        if (!places.insert(filesystem::GetPlace(path)).second)
            throw CUsageError(
                "several models would be written to " + MakeShowable(path) +
                "; mark them with an output folder each");
    }
    for (const SModelPath& model : models)
    {
        if (IsAtOneOf(places, model.path))
            throw CUsageError(
                "an output would go over " + MakeShowable(model.path) +
                ", which is to be marked, too; name another folder");
    }
}

/// Refuses an output path that goes through a folder that does not exist and out of it again: it
/// leads nowhere now, and elsewhere as soon as that folder has been made.
void CheckParents(const std::string& outputPath)
{
    std::string part = outputPath;
    while (!part.empty())
    {
        if (part.substr(filesystem::GetNameStart(part)) == ".." && !filesystem::IsFolder(part))
            throw CUsageError(
                MakeShowable(outputPath) +
                " leads out of a folder that does not exist; name it without that \"..\"");
        std::string folder = filesystem::GetFolder(part);
        if (folder == part)
            return;
        part = std::move(folder);
    }
}

/// Refuses outputs that cannot all be written, or that would be models themselves the next time.
void CheckOutputFolder(const SCommandLine& line, const CModelList& models)
{
    if (models.IsSeveral() && filesystem::GetPathStatus(line.outputPath).kind == EPathKind::File)
        throw CUsageError(
            MakeShowable(line.outputPath) +
            " is a file, and there may be several models; name a folder");
    for (const std::string& path : line.paths)
    {
        if (filesystem::IsFolder(path) && filesystem::IsInFolder(line.outputPath, path))
            throw CUsageError(
                "the output would lie in " + MakeShowable(path) +
                ", where the next run takes it for models; name a folder outside");
    }
    if (models.IsSeveral())
        CheckOutputPlaces(line.outputPath, models.GetModels());
}

/// Creates the folder of an output unless nothing is to be written. Returns why it cannot be
/// written there, or nothing.
std::string
PrepareOutput(const std::string& modelPath, const std::string& outputPath, bool isDryRun)
{
    if (filesystem::IsSameFile(modelPath, outputPath))
        return "the output is the model itself; without -o it is marked in place";
    if (isDryRun)
        return "";
    const std::string folder = filesystem::GetFolder(outputPath);
    if (folder.empty() || filesystem::IsFolder(folder))
        return "";
    const std::string error = filesystem::CreateFolders(folder);
    return error.empty() ? "" : MakeShowable(folder) + ": " + error;
}

Json MakeChangesJson(const SMarkResult& result)
{
    Json changes = Json::array();
    for (const SMarkItem& item : result.items)
        ForEachChange(
            item,
            [&](std::string_view family, unsigned char from, unsigned char to)
            {
                changes.push_back(
                    {{"kind", GetKindName(item.kind)},
                     {"index", item.index},
                     {"name", MakeJsonText(item.name)},
                     {"family", family},
                     {"from", from},
                     {"to", to}});
            });
    return changes;
}

} // namespace

CMarkCommand::CMarkCommand(const SCommandLine& line, const CModelList& models)
    : CModelCommand(line.isJson)
{
    if (!line.depfilePath.empty() && models.IsSeveral())
        throw CUsageError("--depfile is for one model; mark each with a depfile of its own");
    m_Options.isDryRun = line.isDryRun;
    m_Options.isAlways = line.isAlways;
    m_Options.isCubemapFolders = line.isCubemapFolders;
    m_Options.outputPath = line.outputPath;
    m_Options.depfilePath = line.depfilePath;
    m_IsOutputFolder =
        !line.outputPath.empty() &&
        (models.IsSeveral() || filesystem::IsSystemSeparator(line.outputPath.back()) ||
         filesystem::IsFolder(line.outputPath));
    CheckParents(line.outputPath);
    if (m_IsOutputFolder)
        CheckOutputFolder(line, models);
}

SResult CMarkCommand::Run(const SModelPath& model)
{
    SMarkOptions options = m_Options;
    if (m_IsOutputFolder)
        options.outputPath = MakeOutputPath(m_Options.outputPath, model);
    if (!options.outputPath.empty())
    {
        const std::string error = PrepareOutput(model.path, options.outputPath, options.isDryRun);
        if (!error.empty())
            return MakeFailure(model, EOutcome::Failed, error);
    }
    const SMarkResult result = Mark(model.path, options);
    if (result.outcome == SMarkResult::Failed)
        return MakeFailure(model, EOutcome::Failed, result.reason);
    return {
        result.outcome == SMarkResult::Changed ? EOutcome::Changed : EOutcome::Well,
        IsJson() ? MakeJson(model, options.outputPath, result) : MakeText(model, result)};
}

std::string CMarkCommand::MakeSummary(const STally& tally) const
{
    return fmt::format(
        "{} {}, {} as {}, {} failed", tally.changed,
        m_Options.isDryRun ? "would change" : "changed", tally.well,
        tally.well == 1 ? "it was" : "they were", tally.failed);
}

std::string CMarkCommand::MakeText(const SModelPath& model, const SMarkResult& result) const
{
    const std::string path = MakeShowable(model.path);
    if (result.outcome == SMarkResult::Unchanged)
        return path + ": as it was\n";
    if (!m_Options.isDryRun)
        return fmt::format("{}: changed {}\n", path, MakeChangeCount(result));
    std::string text = fmt::format("{}: would change {}\n", path, MakeChangeCount(result));
    for (const SMarkItem& item : result.items)
        text += MakeChangeLines(item);
    if (result.isMarkerSet)
        text += fmt::format("  processed marker: {} -> 1\n", result.markerFrom);
    return text;
}

std::string CMarkCommand::MakeJson(
    const SModelPath& model, const std::string& outputPath, const SMarkResult& result) const
{
    Json json = {
        {"model", MakeJsonText(model.path)},
        {"outcome", result.outcome == SMarkResult::Changed ? "changed" : "unchanged"},
        {"dryRun", m_Options.isDryRun},
        {"version", result.version}};
    if (!outputPath.empty())
        json["output"] = MakeJsonText(outputPath);
    json["marker"] = result.isMarkerSet ? Json({{"from", result.markerFrom}, {"to", 1}}) : nullptr;
    json["changes"] = MakeChangesJson(result);
    json["counts"] = MakeCountsJson(result.counts);
    return MakeJsonLine(json);
}

} // namespace zektool
