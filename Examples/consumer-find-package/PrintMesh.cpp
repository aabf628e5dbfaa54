// Prints the version of a model file and the vertices of its first mesh:
//
//     PrintMesh MODEL

#include <cstdio>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKOverwriter/CZEKModel.h"

int main(int argc, char* argv[])
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: PrintMesh MODEL\n");
        return 1;
    }

    filesystem::CRandomAccessFile file;
    if (!file.Open(argv[1]))
    {
        std::fprintf(stderr, "PrintMesh: %s: %s\n", argv[1], file.GetError().c_str());
        return 1;
    }
    zek::CZEKModel model;
    zek::SZEKRefusal refusal;
    if (!model.Load(file, refusal))
    {
        std::fprintf(stderr, "PrintMesh: %s: %s\n", argv[1], refusal.GetText().c_str());
        return 1;
    }

    std::printf("version %d\n", model.GetVersion());
    if (model.GetMeshList().empty())
        return 0;
    for (const S3D& pos : model.GetMeshList().front().GetPosList())
        std::printf("%g %g %g\n", pos.x, pos.y, pos.z);
    return 0;
}
