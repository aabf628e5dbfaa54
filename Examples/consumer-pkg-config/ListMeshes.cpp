// Lists the meshes of a model, with their vertices, and its textures:
//
//     ListMeshes MODEL
//
// Names in a model are Shift_JIS by custom, and are converted for the terminal.

#include <cstddef>
#include <cstdio>
#include <string>

#include "Independent/CharacterCode/CharacterCode.h"
#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKOverwriter/CZEKModel.h"

namespace
{

std::size_t CountTriangles(const zek::CZEKMesh& mesh)
{
    std::size_t indexCount = 0;
    for (const zek::CZEKPrimitive& primitive : mesh.GetZEKPrimitiveList())
        indexCount += primitive.GetIndexListUSHORT().size() + primitive.GetIndexListINT().size();
    return indexCount / 3;
}

} // namespace

int main(int argc, char* argv[])
{
    filesystem::CRandomAccessFile file;
    zek::CZEKModel model;
    zek::SZEKRefusal refusal;
    if (argc != 2 || !file.Open(argv[1]) || !model.Load(file, refusal))
    {
        std::fprintf(stderr, "usage: ListMeshes MODEL\n");
        return 1;
    }

    for (const zek::CZEKMesh& mesh : model.GetMeshList())
    {
        std::printf(
            "mesh: vertices %zu, triangles %zu\n", mesh.GetPosList().size(), CountTriangles(mesh));
        for (const S3D& pos : mesh.GetPosList())
            std::printf("%g %g %g\n", pos.x, pos.y, pos.z);
    }
    for (const zek::CZEKTexture& texture : model.GetTextureList())
    {
        std::string name;
        if (!charactercode::SJISToUTF8(name, texture.GetFileName()))
            name = "(not Shift_JIS)";
        std::printf("texture %s\n", name.c_str());
    }
    return 0;
}
