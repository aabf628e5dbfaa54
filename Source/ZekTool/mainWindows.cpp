#include <string>
#include <vector>

#include <windows.h>

#include "Specific/FileSystem/WindowsPath.h"
#include "ZekTool/Command/Zek.h"

// The words are taken from the system, since those that main() is given have lost what the user's
// character code cannot hold.
int main()
{
    int count = 0;
    wchar_t** const wideWords = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i)
        words.push_back(filesystem::MakeNarrowText(wideWords[i]));
    LocalFree(wideWords);
    return static_cast<int>(zektool::RunZek(words));
}
