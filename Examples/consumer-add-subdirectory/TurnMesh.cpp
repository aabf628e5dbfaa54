// Prints the vertices of a model's first mesh after a turn to the right about the vertical axis:
//
//     TurnMesh DEGREES MODEL

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "Independent/FormatString/FormatString.h"
#include "Independent/FormatString/LFormat.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Specific/FileSystem/CFile.h"
#include "ZEKOverwriter/CZEKModel.h"

int main(int argc, char* argv[])
{
    float degrees;
    std::vector<unsigned char> image;
    if (argc != 3 || !formatstring::ScanFloat(argv[1], degrees) ||
        !filesystem::CFile::ReadImage(image, argv[2]))
    {
        std::fprintf(stderr, "usage: TurnMesh DEGREES MODEL\n");
        return 1;
    }

    zek::CZEKModel model;
    zek::SZEKRefusal refusal;
    if (!model.Load(image.data(), static_cast<std::int64_t>(image.size()), refusal))
    {
        std::fprintf(stderr, "TurnMesh: %s: %s\n", argv[2], refusal.GetText().c_str());
        return 1;
    }
    if (model.GetMeshList().empty())
        return 0;

    const SMatrix turn = SMatrix::CreateRotH(degrees);
    for (const S3D& pos : model.GetMeshList().front().GetPosList())
    {
        const S3D turned = pos * turn;
        std::puts(LFormat::Make("%.2f %.2f %.2f", turned.x, turned.y, turned.z).c_str());
    }
    return 0;
}
