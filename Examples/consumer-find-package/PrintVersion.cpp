// Prints the version of a model file:
//
//     PrintVersion MODEL

#include <cstdio>
#include <string>
#include <vector>

#include "Independent/FileImage/CFileImageAnalyser.h"
#include "Specific/FileSystem/CFile.h"

int main(int argc, char* argv[])
{
    std::vector<unsigned char> image;
    if (argc != 2 || !filesystem::CFile::ReadImage(image, argv[1]))
    {
        std::fprintf(stderr, "usage: PrintVersion MODEL\n");
        return 1;
    }

    fileimage::CFileImageAnalyser reader(image.data(), image.data() + image.size());
    std::string magic;
    int version;
    if (!reader.GetZeroTerminatedString(magic) || magic != "ZEK" || !reader.GetInt(version))
    {
        std::fprintf(stderr, "PrintVersion: %s is not a ZEK model\n", argv[1]);
        return 1;
    }
    std::printf("version %d\n", version);
    return 0;
}
