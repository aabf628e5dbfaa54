#include "ZekTool/Command/CInfoCommand.h"

#include <fmt/format.h>

#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

/// Returns what follows the name of an item: its flags.
std::string MakeFlagText(const SItemInfo& item)
{
    std::string text;
    for (std::size_t family = 0; item.hasFlags && family < item.flags.size(); ++family)
        text += fmt::format(
            "{} {} {}", family == 0 ? ":" : ",", zek::CompressionFamilies[family].name,
            item.flags[family]);
    return text;
}

/// Returns a line for each item: what it is, its name and its flags.
std::string MakeItemLines(std::string_view kind, const std::vector<SItemInfo>& items)
{
    std::string text;
    for (std::size_t i = 0; i < items.size(); ++i)
        text += fmt::format(
            "  {} {:03} {}{}\n", kind, i, MakeQuoted(items[i].name), MakeFlagText(items[i]));
    return text;
}

Json MakeItemJson(std::size_t index, const SItemInfo& item)
{
    Json json = {{"index", index}, {"name", MakeJsonText(item.name)}, {"flags", nullptr}};
    for (std::size_t family = 0; item.hasFlags && family < item.flags.size(); ++family)
        json["flags"][std::string(zek::CompressionFamilies[family].name)] = item.flags[family];
    return json;
}

Json MakeItemListJson(const std::vector<SItemInfo>& items)
{
    Json json = Json::array();
    for (std::size_t i = 0; i < items.size(); ++i)
        json.push_back(MakeItemJson(i, items[i]));
    return json;
}

std::size_t ToCount(int count)
{
    return static_cast<std::size_t>(count);
}

} // namespace

SResult CInfoCommand::Run(const SModelPath& model)
{
    SModelInfo info;
    const std::string error = ReadModelInfo(model.path, info);
    if (!error.empty())
        return MakeFailure(model, EOutcome::Failed, error);
    return {EOutcome::Well, IsJson() ? MakeJson(model, info) : MakeText(model, info)};
}

std::string CInfoCommand::MakeSummary(const STally& tally) const
{
    return fmt::format("{} shown, {} failed", tally.well, tally.failed);
}

std::string CInfoCommand::MakeText(const SModelPath& model, const SModelInfo& info) const
{
    std::string text = fmt::format(
        "{}: version {}, {}", MakeShowable(model.path), info.version,
        MakeCount(static_cast<std::uint64_t>(info.size), "byte", "bytes"));
    if (info.hasGeometry)
        text += fmt::format(
            ", {}, {}, {}, {}", MakeCount(info.nodeCount, "node", "nodes"),
            MakeCount(info.meshCount, "mesh", "meshes"),
            MakeCount(info.materialCount, "material", "materials"),
            MakeCount(info.boneCount, "bone", "bones"));
    text += fmt::format(
        ", {}, {}, {}{}\n", MakeCount(info.textures.size(), "texture", "textures"),
        MakeCount(ToCount(info.cubemapCount), "cubemap", "cubemaps"),
        MakeCount(ToCount(info.lightmapCount), "lightmap", "lightmaps"),
        !info.hasMarker    ? ""
        : info.isProcessed ? ", processed"
                           : ", not processed");
    return text + MakeItemLines("texture", info.textures) +
           MakeItemLines("cubemap", info.cubemaps) + MakeItemLines("lightmap", info.lightmaps);
}

std::string CInfoCommand::MakeJson(const SModelPath& model, const SModelInfo& info) const
{
    Json json = {
        {"model", MakeJsonText(model.path)},
        {"outcome", "shown"},
        {"version", info.version},
        {"size", info.size},
        {"processed", info.hasMarker ? Json(info.isProcessed) : Json(nullptr)}};
    if (info.hasGeometry)
    {
        json["nodes"] = info.nodeCount;
        json["meshes"] = info.meshCount;
        json["materials"] = info.materialCount;
        json["bones"] = info.boneCount;
    }
    json["cubemapCount"] = info.cubemapCount;
    json["lightmapCount"] = info.lightmapCount;
    json["textures"] = MakeItemListJson(info.textures);
    json["cubemaps"] = MakeItemListJson(info.cubemaps);
    json["lightmaps"] = MakeItemListJson(info.lightmaps);
    return MakeJsonLine(json);
}

} // namespace zektool
