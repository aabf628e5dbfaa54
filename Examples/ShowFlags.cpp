// Prints the compression flags of a model, or those of two states of it side by side:
//
//     ShowFlags MODEL
//     ShowFlags BEFORE AFTER
//
// A row an item; texture 007 is the eighth of the texture list.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Specific/FileSystem/CFile.h"
#include "ZEKFormat/SZEKRefusal.h"
#include "ZEKOverwriter/CZEKOverwriter.h"

namespace
{

/// A model's file image and the places of its flags, which are addresses in that image.
struct SFlaggedModel
{
    std::vector<unsigned char> image;
    zek::CZEKOverwriter sections;
};

/// Reads a model and finds its flags. Returns what is wrong with it, or nothing.
std::string Read(SFlaggedModel& model, const char* path)
{
    if (!filesystem::CFile::ReadImage(model.image, path))
    {
        std::error_code ignored;
        if (std::filesystem::is_directory(path, ignored))
            return "is a folder";
        return std::filesystem::exists(path, ignored) ? "cannot be read" : "cannot be found";
    }

    const unsigned char* begin = model.image.data();
    const std::size_t size = model.image.size();
    if (const auto refusal = zek::WhyRefused(begin, static_cast<std::int64_t>(size)))
        return refusal->field == "magic" ? "is not a ZEK model"
                                         : "is refused: " + refusal->GetText();

    fileimage::CFileImageAnalyser reader(begin, begin + size);
    int version;
    model.sections.AnalyseHeader(reader, version);
    model.sections.AnalyseSections(reader, version);
    return "";
}

bool IsSameItems(const zek::CZEKOverwriter& before, const zek::CZEKOverwriter& after)
{
    return before.GetTextureFlagQuadList().size() == after.GetTextureFlagQuadList().size() &&
           before.GetProbeFlagQuadList().size() == after.GetProbeFlagQuadList().size() &&
           before.GetLightmapFlagQuadList().size() == after.GetLightmapFlagQuadList().size();
}

/// Prints a row for each item of a kind. Textures have no names and are shown by index.
void PrintRows(
    const char* kind,
    const std::vector<std::string>& names,
    const std::vector<zek::FlagQuad>& before,
    const std::vector<zek::FlagQuad>& after,
    bool isCompared)
{
    for (std::size_t i = 0; i < before.size(); ++i)
    {
        char index[24];
        std::snprintf(index, sizeof(index), "%03zu", i);
        const std::string item = std::string(kind) + " " + (i < names.size() ? names[i] : index);
        std::printf("%-24s", item.c_str());
        for (std::size_t family = 0; family < before[i].size(); ++family)
        {
            if (isCompared)
                std::printf("  %d -> %d", *before[i][family], *after[i][family]);
            else
                std::printf("  %6d", *before[i][family]);
        }
        std::printf("\n");
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2 && argc != 3)
    {
        std::fprintf(stderr, "usage: ShowFlags MODEL\n       ShowFlags BEFORE AFTER\n");
        return 1;
    }

    std::vector<SFlaggedModel> models(static_cast<std::size_t>(argc - 1));
    for (std::size_t i = 0; i < models.size(); ++i)
    {
        const std::string fault = Read(models[i], argv[i + 1]);
        if (!fault.empty())
        {
            std::fprintf(stderr, "ShowFlags: %s %s\n", argv[i + 1], fault.c_str());
            return 1;
        }
    }

    const zek::CZEKOverwriter& before = models.front().sections;
    const zek::CZEKOverwriter& after = models.back().sections;
    const bool isCompared = argc == 3;
    if (!IsSameItems(before, after))
    {
        std::fprintf(stderr, "ShowFlags: the two files are not states of one model\n");
        return 1;
    }

    std::printf("%-24s  %-6s  %-6s  %-6s  %s\n", "item", "PVRTC", "ETC", "ASTC", "DXT");
    PrintRows(
        "texture", {}, before.GetTextureFlagQuadList(), after.GetTextureFlagQuadList(), isCompared);
    PrintRows(
        "probe", before.GetProbeNameList(), before.GetProbeFlagQuadList(),
        after.GetProbeFlagQuadList(), isCompared);
    PrintRows(
        "lightmap", before.GetLightmapNameList(), before.GetLightmapFlagQuadList(),
        after.GetLightmapFlagQuadList(), isCompared);
    return 0;
}
