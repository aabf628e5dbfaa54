// Writes a folder with a sample model and some of its compressed variants:
//
//     WriteSample FOLDER
//
// The folder must not exist. It then holds model.zek, a version 26 file with three textures, two
// reflection probes and two lightmaps, and the folders with what a compression step would have
// left there. Contents do not matter to ZEKTexComp, so the variants hold a word of text each.

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Independent/FileImage/CFileImageMaker.h"

namespace
{

// The second is set although its variant does not exist, for ZEKTexComp to take back.
constexpr std::array<unsigned char, 4> NoFlags = {0, 0, 0, 0};
constexpr std::array<unsigned char, 4> StaleDXTFlag = {0, 0, 0, 1};

void AddFlags(fileimage::CFileImageMaker& model, const std::array<unsigned char, 4>& flags)
{
    model.AddMemoryBlock(flags.data(), static_cast<int>(flags.size()));
}

void AddTexture(
    fileimage::CFileImageMaker& model,
    const std::string& name,
    const std::array<unsigned char, 4>& flags)
{
    model.AddZeroTerminatedString(name);
    model.AddInt(1); // clamp
    AddFlags(model, flags);
}

void AddProbe(fileimage::CFileImageMaker& model, const std::string& name)
{
    model.AddInt(128); // probe value
    for (float value : {0.0f, 2.0f, 0.0f, 8.0f, 4.0f, 8.0f})
        model.AddFloat(value);
    model.AddInt(0); // second probe value
    AddFlags(model, NoFlags);
    model.AddZeroTerminatedString(name);
}

void AddLightmap(fileimage::CFileImageMaker& model, const std::string& name)
{
    model.AddZeroTerminatedString(name);
    AddFlags(model, NoFlags);
}

std::vector<unsigned char> MakeModel()
{
    fileimage::CFileImageMaker model;
    model.AddZeroTerminatedString("ZEK");
    model.AddInt(26); // version
    model.AddInt(0);  // processed marker
    model.AddInt(0);

    model.AddInt(3); // textures
    AddTexture(model, "floor.png", NoFlags);
    AddTexture(model, "wall.png", StaleDXTFlag);
    AddTexture(model, "sky.png", NoFlags);

    model.AddInt(2); // reflection probes
    AddProbe(model, "Hall");
    AddProbe(model, "Tower");

    model.AddInt(2); // lightmaps
    AddLightmap(model, "LightMap000.png");
    AddLightmap(model, "LightMap001.png");
    model.AddInt(1); // lightmap switch
    model.AddInt(0);
    return model.GetImageData();
}

void WriteVariant(const std::filesystem::path& path)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "sample\n";
}

/// The faces of a cubemap stand under names with backslashes in them.
void WriteCubemap(const std::filesystem::path& folder, const std::string& probe, int faceCount)
{
    for (int face = 0; face < faceCount; ++face)
        WriteVariant(
            folder.string() + "/tex_reflection_cube_pvrtc\\" + probe + "\\reflection_cube_" +
            std::to_string(face) + ".pvr");
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2 || std::filesystem::exists(argv[1]))
    {
        std::fprintf(stderr, "usage: WriteSample FOLDER (which must not exist yet)\n");
        return 1;
    }
    const std::filesystem::path folder = argv[1];

    WriteVariant(folder / "tex_pvrtc/000.pvr");
    WriteVariant(folder / "tex_etc/000.pvr");
    WriteVariant(folder / "tex_astc/000.pvr");
    WriteVariant(folder / "tex_dxt/000.dds");
    WriteVariant(folder / "tex_astc/001.pvr");
    WriteVariant(folder / "tex_dxt/LightMap000.dds");
    WriteCubemap(folder, "Hall", 6);
    WriteCubemap(folder, "Tower", 5); // one face is missing, so the cubemap does not count

    const std::vector<unsigned char> model = MakeModel();
    std::ofstream file(folder / "model.zek", std::ios::binary);
    file.write(reinterpret_cast<const char*>(model.data()), static_cast<long>(model.size()));
    if (!file.flush())
    {
        std::fprintf(stderr, "WriteSample: cannot write below %s\n", argv[1]);
        return 1;
    }
    return 0;
}
