// Writes a model file of each version from 0 to 40, with every field that it has:
// FOLDER/VERSION.zek, and FOLDER/25-large.zek with so many vertices that indices are larger.
//
//     WriteVersions FOLDER
//
// The oldest are refused by the program, but their sections can be walked.

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "Support/CModelBuilder.h"

namespace
{

constexpr int LastVersion = 40; // far beyond the newest that is known
constexpr int NewestVersionWithMeshes = 25;
constexpr int VertexCountOf32BitIndices = 65537;

/// Adds what the full model has of each record only in one form.
testsupport::SModel MakeModel(int version)
{
    testsupport::SModel model = testsupport::MakeFullModel(version);
    for (std::size_t stream = 0; stream < testsupport::StreamFlags().size(); ++stream)
    {
        testsupport::SMesh mesh;
        mesh.streams[stream] = 2;
        model.meshes.push_back(mesh);
    }
    testsupport::SMaterial withoutSubBlock;
    withoutSubBlock.shaderType = 1;
    model.materials.push_back(withoutSubBlock);

    return model;
}

testsupport::SModel MakeLargeModel()
{
    testsupport::SMesh mesh;
    mesh.vertexCount = VertexCountOf32BitIndices;
    testsupport::SNode node;
    node.colliderShape = 2;
    node.hasMesh = 1;
    node.mesh.vertexCount = VertexCountOf32BitIndices;

    testsupport::SModel model;
    model.version = NewestVersionWithMeshes;
    model.nodes = {node};
    model.meshes = {mesh};
    return model;
}

bool Write(const std::string& path, const testsupport::SModel& model)
{
    const testsupport::CModelBuilder builder = testsupport::CModelBuilder::Build(model);
    const std::vector<unsigned char>& image = builder.GetImage();
    std::ofstream file(path, std::ios::binary);
    file.write(
        reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
    return file.flush().good();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: WriteVersions FOLDER\n");
        return 2;
    }
    const std::string folder = std::string(argv[1]) + '/';
    bool isWritten = true;
    for (int version = 0; version <= LastVersion; ++version)
        isWritten &= Write(folder + std::to_string(version) + ".zek", MakeModel(version));
    isWritten &=
        Write(folder + std::to_string(NewestVersionWithMeshes) + "-large.zek", MakeLargeModel());
    if (!isWritten)
    {
        std::fprintf(stderr, "WriteVersions: cannot write below %s\n", argv[1]);
        return 1;
    }
    return 0;
}
