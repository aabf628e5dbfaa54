#include <string>
#include <vector>

#include "ZekTool/Command/Zek.h"

int main(int argc, char* argv[])
{
    const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    return static_cast<int>(zektool::RunZek(words));
}
