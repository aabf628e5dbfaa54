#pragma once

#include <string>

namespace zektool
{

/// How models are marked.
struct SMarkOptions
{
    bool isDryRun = false; ///< only find out what would change; nothing is written
    bool isAlways = false; ///< set the time of modification, whether anything changes or not
    bool isCubemapFolders = false; ///< see `CVariantSearch`
    std::string outputPath;        ///< file to write instead of the model; empty: the model itself
    std::string depfilePath;       ///< depfile to write as well; empty: none
};

} // namespace zektool
