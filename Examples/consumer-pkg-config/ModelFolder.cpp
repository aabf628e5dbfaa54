// Prints the folder of a model. The library takes paths as Shift_JIS, so a path that comes as UTF-8
// is converted on the way in and out:
//
//     ModelFolder PATH

#include <cstdio>
#include <string>

#include "Independent/CharacterCode/CharacterCode.h"
#include "Specific/FileSystem/LFileName.h"

int main(int argc, char* argv[])
{
    std::string path;
    std::string folder;
    if (argc != 2 || !charactercode::UTF8ToSJIS(path, argv[1]) ||
        !charactercode::SJISToUTF8(folder, LFileName::DeleteFileName(path)))
    {
        std::fprintf(stderr, "usage: ModelFolder PATH (of characters that Shift_JIS has)\n");
        return 1;
    }
    std::puts(folder.c_str());
    return 0;
}
