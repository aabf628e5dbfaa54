#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zektool
{

enum class ECommand
{
    Info,
    Dump,
    Check,
    Mark,
    Report,
    Explain, ///< `check --explain CODE`
    Print,   ///< print `SCommandLine::message`: a help text, or the version
};

/// What the words of a command line ask for.
struct SCommandLine
{
    ECommand command = ECommand::Print;
    std::string message;

    std::vector<std::string> paths; ///< models and folders, as given
    std::string files0From;         ///< where paths are read from, "-" for standard input; or empty
    std::vector<std::string> names = {"*.zek"}; ///< patterns for the files of a folder
    std::size_t threadCount = 1;
    bool isJson = false;

    bool isElements = false; ///< of dump
    std::string section;     ///< of dump; empty for all

    bool isDeep = false;                 ///< of check
    std::size_t maxFindings = 100;       ///< of check, a model
    std::vector<std::string> ignored;    ///< of check: codes that are not reported
    std::vector<std::string> errorCodes; ///< of check: codes that count as errors
    std::string explainedCode;           ///< of check

    bool isDryRun = false;         ///< of mark
    bool isAlways = false;         ///< of mark
    std::string outputPath;        ///< of mark, empty for in place; of report, empty for its own
    std::string depfilePath;       ///< of mark; empty for none
    bool isCubemapFolders = false; ///< of check, mark and report

    bool isCsv = false; ///< of report
};

} // namespace zektool
