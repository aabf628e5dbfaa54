// Marks models, as `zek mark` does, and says of each what came of it:
//
//     MarkModels [-o OUTPUT] [--always] [--depfile FILE] MODEL...
//
// for tests that run a program which does nothing else.

#include <cstdio>
#include <string>

#include "ZekTool/Mark/CMarker.h"

int main(int argc, char* argv[])
{
    zektool::SMarkOptions options;
    bool hasFailed = false;
    for (int i = 1; i < argc; ++i)
    {
        const std::string word = argv[i];
        if (word == "-o" && i + 1 < argc)
            options.outputPath = argv[++i];
        else if (word == "--depfile" && i + 1 < argc)
            options.depfilePath = argv[++i];
        else if (word == "--always")
            options.isAlways = true;
        if (word[0] == '-')
            continue;
        const zektool::SMarkResult result = zektool::Mark(argv[i], options);
        const bool isFailed = result.outcome == zektool::SMarkResult::Failed;
        hasFailed = hasFailed || isFailed;
        std::printf("%s: %s\n", argv[i], isFailed ? result.reason.c_str() : "done");
    }
    return hasFailed ? 1 : 0;
}
