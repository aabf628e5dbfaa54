// Writes the inputs that the fuzzers start from:
//
//     WriteCorpus FOLDER
//
// makes one folder below FOLDER for each fuzzer.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Support/Bytes.h"
#include "Support/CModelBuilder.h"

using testsupport::CModelBuilder;
using testsupport::SModel;
using testsupport::ToText;

namespace
{

void Write(const std::filesystem::path& folder, const std::string& name, const std::string& bytes)
{
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << bytes;
}

void WriteModels(const std::filesystem::path& folder)
{
    for (int version = testsupport::OldestVersion; version <= testsupport::UnknownVersion;
         ++version)
        Write(
            folder, "full-" + std::to_string(version),
            ToText(CModelBuilder::Build(testsupport::MakeFullModel(version)).GetImage()));

    SModel empty;
    empty.version = testsupport::OldestVersion;
    Write(folder, "empty-7", ToText(CModelBuilder::Build(empty).GetImage()));
}

/// The first byte chooses the walker, in the order of the fuzzer's list, the second the version.
void WriteSections(const std::filesystem::path& folder)
{
    for (int version : {0, 7, 14, 18, 22, 25, 26})
    {
        const SModel model = testsupport::MakeFullModel(version);
        const auto write = [&](int walker, const char* name, const CModelBuilder& builder)
        {
            const std::string head = {static_cast<char>(walker), static_cast<char>(version)};
            Write(
                folder, std::string(name) + "-" + std::to_string(version),
                head + ToText(builder.GetImage()));
        };
        CModelBuilder nodes(version);
        nodes.AddNodeList(model.nodes);
        write(0, "nodes", nodes);
        CModelBuilder meshes(version);
        meshes.AddMeshList(model.meshes);
        write(2, "meshes", meshes);
        CModelBuilder simpleMesh(version);
        simpleMesh.AddSimpleMesh(model.nodes.back().mesh);
        write(4, "simple-mesh", simpleMesh);
        CModelBuilder materials(version);
        materials.AddMaterialList(model.materials, model.probes);
        write(5, "materials", materials);
        CModelBuilder textures(version);
        textures.AddTextureList(model.textures);
        write(6, "textures", textures);
        CModelBuilder probes(version);
        probes.AddProbeSection(model.probes);
        write(7, "probes", probes);
        CModelBuilder lightmaps(version);
        lightmaps.AddLightmapList(model.lightmaps);
        write(8, "lightmaps", lightmaps);
        CModelBuilder bones(version);
        bones.AddBoneTable(model.bones);
        write(10, "bones", bones);
    }
}

void WriteTexts(const std::filesystem::path& folder)
{
    const std::string cases[] = {
        "a.b.png", "a/b\\c.x", "C:\\",     "\x95\x5C",          "\x95\x5C/a.B", "abc\x81", "a,b,,c",
        "12abc",   "-7",       "tex_dxt/", "\x83\x5C.\x83\x2E", "..",           ""};
    int index = 0;
    for (const std::string& text : cases)
    {
        // Replace "b" by "\\" and, cut down, the empty text by nothing.
        Write(folder, "text-" + std::to_string(index), std::string("\1b\1\\") + text);
        Write(folder, "plain-" + std::to_string(index++), text);
    }
}

void WriteCharacters(const std::filesystem::path& folder)
{
    const std::string cases[] = {
        "abc",
        "\x82\xA0\x82\xA2",
        "\xB1\xB2",
        "\x82\xF2\x41",
        "A\x88",
        "\x87\x90",
        "\xED\x40",
        "\xE3\x81\x82",
        "\xC2\xA7",
        "\xC2\xA5",
        "\xF0\x9F\x98\x80\x61\x62",
        "\x30\x42\x4E\x00",
        std::string("a\0b", 3)};
    int index = 0;
    for (const std::string& text : cases)
        Write(folder, "text-" + std::to_string(index++), text);
}

void WriteReads(const std::filesystem::path& folder)
{
    // A range of eleven bytes, then each operation in turn with a small argument.
    std::string script = std::string("\x0B") + std::string("ab\0cd\r\n\1\2\0\0", 11);
    for (char operation = 0; operation < 12; ++operation)
        script += {operation, '\2'};
    Write(folder, "each-operation", script);
    Write(folder, "empty-range", std::string("\0\0\1\5\1\11\1\12\1", 9));
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: WriteCorpus FOLDER\n");
        return 1;
    }
    const std::filesystem::path folder = argv[1];
    for (const char* fuzzer : {"ModelFuzz", "ZekFuzz"})
        WriteModels(folder / fuzzer);
    WriteSections(folder / "WalkersFuzz");
    WriteTexts(folder / "TextFuzz");
    WriteCharacters(folder / "CharacterCodeFuzz");
    WriteReads(folder / "FileImageFuzz");
    return 0;
}
