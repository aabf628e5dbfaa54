#include "ZekTool/Command/CommandLine.h"

#include <algorithm>
#include <array>
#include <thread>

#include <CLI/CLI.hpp>

#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

struct SCommandName
{
    const char* name;
    ECommand command;
    const char* summary;
};

constexpr std::array<SCommandName, 5> Commands = {{
    {"info", ECommand::Info, "Show what is in models: version, counts, items and their flags"},
    {"dump", ECommand::Dump, "Show every field of a model: offset, type, path, value"},
    {"check", ECommand::Check, "Say what is wrong with models and the variants beside them"},
    {"mark", ECommand::Mark, "Set the flags of models to the variants beside them"},
    {"report", ECommand::Report, "Write a page that shows which models lack which variants"},
}};

constexpr std::array<const char*, 8> Sections = {"header", "nodes",    "meshes", "materials",
                                                 "probes", "textures", "bones",  "lightmaps"};

std::string MakeHelp()
{
    std::string text = "See, check and mark whole trees of ZEK models.\n\n"
                       "Usage: zek COMMAND [OPTION...] PATH...\n"
                       "       zek --version\n\n"
                       "Commands:\n";
    for (const SCommandName& command : Commands)
        text += "  " + std::string(command.name) +
                std::string(8 - std::string(command.name).size(), ' ') + command.summary + "\n";
    return text + "  help    Show this, or with a command's name what that takes\n\n"
                  "A PATH is a model, or a folder with models below it.\n"
                  "For a start: zek check FOLDER, then zek mark FOLDER.\n";
}

/// Adds an option that may be given several times, each time with one value.
void AddRepeatable(
    CLI::App& app,
    const char* name,
    const char* valueName,
    std::vector<std::string>& values,
    const char* help)
{
    app.add_option(name, values, help)
        ->type_name(valueName)
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
}

constexpr const char* EmptyValue = "its value is empty";

/// Adds an option with a value. An empty one is an unset variable in somebody's script, and must
/// not be taken for no option: a mark without an output writes to the model.
CLI::Option* AddValue(
    CLI::App& app, const char* name, const char* valueName, std::string& value, const char* help)
{
    const auto refuseEmpty = [](const std::string& text)
    { return std::string(text.empty() ? EmptyValue : ""); };
    return app.add_option(name, value, help)->type_name(valueName)->check(refuseEmpty, "");
}

/// Refuses words such as "--output=", whose value the parser would take from the next word.
void RefuseEmptyValues(const std::vector<std::string>& words)
{
    const auto end = std::find(words.begin(), words.end(), "--");
    const auto isEmpty = [](const std::string& word)
    { return word.compare(0, 2, "--") == 0 && word.find('=') == word.size() - 1; };
    const auto found = std::find_if(words.begin(), end, isEmpty);
    if (found != end)
        throw CLI::ValidationError(found->substr(0, found->size() - 1), EmptyValue);
}

void AddPathOptions(CLI::App& app, SCommandLine& line, std::vector<std::string>& names)
{
    AddRepeatable(
        app, "--name", "PATTERN", names,
        "Files that are models, in folders: a pattern with * ? [] (default *.zek; repeatable)");
    AddValue(
        app, "--files0-from", "FILE", line.files0From,
        "Take the paths from FILE, each ended by a zero byte; - is standard input");
    app.add_option(
           "-j,--jobs", line.threadCount, "Threads, up to 1024 (default: the number of processors)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, std::size_t{1024}).description(""));
}

void AddCubemapFolders(CLI::App& app, SCommandLine& line)
{
    app.add_flag(
        "--cubemap-folders", line.isCubemapFolders,
        "Look for the faces of cubemaps in folders, too, not only under names with backslashes");
}

void AddDumpOptions(CLI::App& app, SCommandLine& line)
{
    app.add_flag("--elements", line.isElements, "Show the elements of arrays, too");
    app.add_option("--section", line.section, "Show one section: header, nodes, ...")
        ->type_name("NAME")
        ->check(CLI::IsMember(std::vector<std::string>(Sections.begin(), Sections.end())));
}

void AddCheckOptions(CLI::App& app, SCommandLine& line)
{
    app.add_flag("--deep", line.isDeep, "Look at vertices and indices, too");
    app.add_option("--max-findings", line.maxFindings, "Findings shown a model (default 100)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{0}, std::size_t{1000000000}).description(""));
    AddRepeatable(app, "--ignore", "CODE", line.ignored, "Leave a finding out (repeatable)");
    AddRepeatable(
        app, "--error", "CODE", line.errorCodes, "Count a finding as an error (repeatable)");
    AddValue(
        app, "--explain", "CODE", line.explainedCode, "Say what a finding means and what to do")
        ->excludes(app.get_option("--json"));
    AddCubemapFolders(app, line);
}

void AddMarkOptions(CLI::App& app, SCommandLine& line)
{
    app.add_flag("-n,--dry-run", line.isDryRun, "Write nothing and say what would change");
    app.add_flag(
        "--always", line.isAlways, "Set when a model was modified, also if it needs no change");
    AddValue(
        app, "-o,--output", "OUT", line.outputPath,
        "Leave the models alone and write to OUT, a folder when there are several");
    AddValue(
        app, "--depfile", "FILE", line.depfilePath,
        "Write what the result depends on, for Ninja and Make");
    AddCubemapFolders(app, line);
}

void AddReportOptions(CLI::App& app, SCommandLine& line)
{
    CLI::Option* csv =
        app.add_flag("--csv", line.isCsv, "Print comma-separated values instead, a line a model");
    csv->excludes(app.get_option("--json"));
    AddValue(
        app, "-o,--output", "OUT", line.outputPath,
        "Write to OUT: without it the page goes to report.html in the working folder, and --csv "
        "and --json to standard output");
    AddCubemapFolders(app, line);
    app.footer("Models that are refused stand in the report and do not make it fail.");
}

/// Adds what a command takes. The names go to a list of their own, so that none of them is added to
/// the default.
void AddOptions(CLI::App& app, SCommandLine& line, std::vector<std::string>& names)
{
    app.add_flag("--json", line.isJson, "Print JSON, an object a line");
    if (line.command == ECommand::Dump)
        return AddDumpOptions(app, line);
    AddPathOptions(app, line, names);
    if (line.command == ECommand::Check)
        AddCheckOptions(app, line);
    if (line.command == ECommand::Mark)
        AddMarkOptions(app, line);
    if (line.command == ECommand::Report)
        AddReportOptions(app, line);
}

/// Writes the help of a command.
class CHelpFormatter : public CLI::Formatter
{
public:
    explicit CHelpFormatter(const SCommandName& command) : m_Command(command) {}

    std::string make_usage(const CLI::App*, std::string) const override
    {
        const bool isDump = m_Command.command == ECommand::Dump;
        const bool isCheck = m_Command.command == ECommand::Check;
        return std::string("\nUsage: zek ") + m_Command.name + " [OPTION...] " +
               (isDump ? "MODEL\n" : "PATH...\n") +
               (isCheck ? "       zek check --explain CODE\n" : "");
    }

    /// What an option does not go with is said when it is tried.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        return option->get_type_size() == 0 ? "" : " " + option->get_type_name();
    }

private:
    const SCommandName& m_Command;
};

std::unique_ptr<CLI::App>
MakeParser(const SCommandName& command, SCommandLine& line, std::vector<std::string>& names)
{
    auto app = std::make_unique<CLI::App>(std::string(command.summary) + ".");
    line.command = command.command;
    AddOptions(*app, line, names);
    app->allow_extras();
    app->formatter(std::make_shared<CHelpFormatter>(command));
    return app;
}

/// Returns what is left of the words when the options are taken: paths, and a "--" before those
/// that may start with a dash.
std::vector<std::string>
TakePaths(const std::vector<std::string>& words, const std::string& commandName)
{
    std::vector<std::string> paths;
    bool isAfterOptions = false;
    for (const std::string& word : words)
    {
        if (!isAfterOptions && word == "--")
            isAfterOptions = true;
        else if (!isAfterOptions && word.size() > 1 && word.front() == '-')
            throw CUsageError(
                "unknown option " + MakeShowable(word) + "; 'zek help " + commandName +
                "' lists the options, and -- ends them");
        else
            paths.push_back(word);
    }
    return paths;
}

void CheckPaths(const SCommandLine& line, const std::string& commandName)
{
    if (line.command == ECommand::Dump && line.paths.size() != 1)
        throw CUsageError("dump takes one model; 'zek help dump' says more");
    if (!line.files0From.empty() && !line.paths.empty())
        throw CUsageError("paths are taken from --files0-from or the command line, not both");
    if (line.command == ECommand::Mark && !line.files0From.empty() && !line.outputPath.empty())
        throw CUsageError("-o takes the paths of its models from the command line");
    if (line.files0From.empty() && line.paths.empty())
        throw CUsageError("no models: name models or folders, such as 'zek " + commandName + " .'");
}

const SCommandName& FindCommand(const std::string& name)
{
    const auto found = std::find_if(
        Commands.begin(), Commands.end(),
        [&](const SCommandName& command) { return command.name == name; });
    if (found == Commands.end())
        throw CUsageError("no command " + MakeShowable(name) + "; 'zek help' lists the commands");
    return *found;
}

SCommandLine MakePrint(const std::string& message)
{
    SCommandLine line;
    line.message = message;
    return line;
}

SCommandLine ParseHelp(const std::vector<std::string>& words)
{
    if (words.size() < 2 || words[1] == "help")
        return MakePrint(MakeHelp());
    SCommandLine line;
    std::vector<std::string> names;
    return MakePrint(MakeParser(FindCommand(words[1]), line, names)->help());
}

SCommandLine ParseCommand(const std::vector<std::string>& words)
{
    const SCommandName& command = FindCommand(words.front());
    SCommandLine line;
    line.threadCount = std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::string> names;
    const auto app = MakeParser(command, line, names);
    try
    {
        RefuseEmptyValues(words);
        std::vector<std::string> reversed(words.rbegin(), words.rend() - 1);
        // The parser would drop this word, and has no way to be told not to.
        std::replace(reversed.begin(), reversed.end(), std::string("++"), std::string("./++"));
        app->parse(std::move(reversed));
    }
    catch (const CLI::CallForHelp&)
    {
        return MakePrint(app->help());
    }
    catch (const CLI::ParseError& error)
    {
        throw CUsageError(
            MakeShowable(error.what()) + "; 'zek help " + command.name + "' lists the options");
    }
    if (!names.empty())
        line.names = names;
    line.paths = TakePaths(app->remaining(), command.name);
    if (!line.explainedCode.empty())
        line.command = ECommand::Explain;
    else
        CheckPaths(line, command.name);
    return line;
}

} // namespace

SCommandLine ParseCommandLine(const std::vector<std::string>& words)
{
    if (words.empty())
        throw CUsageError("no command; 'zek help' lists the commands");
    if (words.front() == "help" || words.front() == "--help" || words.front() == "-h")
        return ParseHelp(words);
    if (words.front() == "--version")
        return MakePrint("zek " ZEK_VERSION "\n");
    return ParseCommand(words);
}

} // namespace zektool
