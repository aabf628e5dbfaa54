// Writes a folder with 200 models and some of their variants, always the same:
//
//     WriteModels FOLDER
//
// The folder must not exist. Of the models, 160 have a folder each (own/000 to own/159), and 40
// share theirs with three others (shared/0 to shared/9). They are of every version in turn.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Support/CModelBuilder.h"

namespace
{

constexpr int VersionCount = testsupport::UnknownVersion - testsupport::OldestVersion + 1;
constexpr int ModelCountWithOwnFolder = 160;
constexpr int SharedFolderCount = 10;
constexpr int ModelsPerSharedFolder = 4;
constexpr int CubeFaceCount = 6;

bool isWritten = true;

void Write(const std::filesystem::path& path, const char* bytes, std::size_t size)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(bytes, static_cast<std::streamsize>(size));
    isWritten = file.flush().good() && isWritten;
}

void WriteVariant(const std::filesystem::path& path)
{
    Write(path, "variant\n", 8);
}

/// The faces of a cubemap stand under names with backslashes in them.
void WriteCubemap(const std::filesystem::path& folder, const std::string& probe)
{
    for (int face = 0; face < CubeFaceCount; ++face)
        WriteVariant(
            folder / ("tex_reflection_cube_etc\\" + probe + "\\reflection_cube_" +
                      std::to_string(face) + ".pvr"));
}

/// Writes a full model with some flags set already, for the program to take back or to keep.
void WriteModel(const std::filesystem::path& path, int index)
{
    testsupport::SModel model =
        testsupport::MakeFullModel(testsupport::OldestVersion + index % VersionCount);
    model.textures[0].flags = {0, 0, 0, 1};
    model.textures[1].flags = {1, 0, 0, 0};
    model.nodes[0].name += std::to_string(index);
    const testsupport::CModelBuilder builder = testsupport::CModelBuilder::Build(model);
    const std::vector<unsigned char>& image = builder.GetImage();
    Write(path, reinterpret_cast<const char*>(image.data()), image.size());
}

/// Writes variants that the model has, chosen by the folder's index. Probes have their names from
/// version 26 on and are known by their index before.
void WriteVariants(const std::filesystem::path& folder, int index)
{
    if (index % 2 == 0)
        WriteVariant(folder / "tex_dxt/000.dds");
    if (index % 3 == 0)
        WriteVariant(folder / "tex_astc/001.pvr");
    if (index % 4 == 0)
        WriteVariant(folder / "tex_pvrtc/LightMap001.pvr");
    if (index % 5 == 0)
    {
        WriteCubemap(folder, "1");
        WriteCubemap(folder, "Hall");
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2 || std::filesystem::exists(argv[1]))
    {
        std::fprintf(stderr, "usage: WriteModels FOLDER (which must not exist yet)\n");
        return 1;
    }
    const std::filesystem::path root = argv[1];

    int index = 0;
    for (; index < ModelCountWithOwnFolder; ++index)
    {
        char name[16];
        std::snprintf(name, sizeof(name), "%03d", index);
        WriteModel(root / "own" / name / "model.zek", index);
        WriteVariants(root / "own" / name, index);
    }
    for (int folder = 0; folder < SharedFolderCount; ++folder)
    {
        const std::filesystem::path path = root / "shared" / std::to_string(folder);
        for (int i = 0; i < ModelsPerSharedFolder; ++i, ++index)
            WriteModel(path / ("model" + std::to_string(i) + ".zek"), index);
        WriteVariants(path, folder);
    }

    if (!isWritten)
    {
        std::fprintf(stderr, "WriteModels: cannot write below %s\n", argv[1]);
        return 1;
    }
    return 0;
}
