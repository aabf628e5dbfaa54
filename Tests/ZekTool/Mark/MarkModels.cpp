// Marks models, as `zek mark` does, and says of each what came of it:
//
//     MarkModels [-o OUTPUT] MODEL...
//
// for tests that run a program which does nothing else.

#include <cstdio>
#include <string>

#include "ZekTool/Mark/CMarker.h"

int main(int argc, char* argv[])
{
    zektool::SMarkOptions options;
    int first = 1;
    if (argc > 2 && std::string(argv[1]) == "-o")
    {
        options.outputPath = argv[2];
        first = 3;
    }
    bool hasFailed = false;
    for (int i = first; i < argc; ++i)
    {
        const zektool::SMarkResult result = zektool::Mark(argv[i], options);
        const bool isFailed = result.outcome == zektool::SMarkResult::Failed;
        hasFailed = hasFailed || isFailed;
        std::printf("%s: %s\n", argv[i], isFailed ? result.reason.c_str() : "done");
    }
    return hasFailed ? 1 : 0;
}
