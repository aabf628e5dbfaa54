#include "ZekTool/Command/Zek.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include <fmt/format.h>

#include "ZekTool/Command/CCheckCommand.h"
#include "ZekTool/Command/CInfoCommand.h"
#include "ZekTool/Command/CMarkCommand.h"
#include "ZekTool/Command/CReportCommand.h"
#include "ZekTool/Command/CRunner.h"
#include "ZekTool/Command/CommandLine.h"
#include "ZekTool/Command/Dump.h"
#include "ZekTool/Models/CModelList.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Output/COutput.h"
#include "ZekTool/Output/CProgress.h"
#include "ZekTool/Output/CReplacementFile.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Descriptor.h"
#include "ZekTool/Output/Interrupt.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

CModelList MakeModelList(const SCommandLine& line)
{
    if (line.files0From.empty())
        return CModelList(line.paths, line.names);
    return CModelList(std::make_unique<CPathReader>(line.files0From), line.names);
}

std::unique_ptr<CModelCommand> MakeCommand(const SCommandLine& line, const CModelList& models)
{
    if (line.command == ECommand::Check)
        return std::make_unique<CCheckCommand>(line);
    if (line.command == ECommand::Mark)
        return std::make_unique<CMarkCommand>(line, models);
    return std::make_unique<CInfoCommand>(line.isJson);
}

/// Returns what came of several models, with those that failed once more.
std::string MakeSummary(const CModelCommand& command, const STally& tally)
{
    std::string text = fmt::format(
        "{}: {}", MakeCount(tally.GetTotal(), "model", "models"), command.MakeSummary(tally));
    if (tally.notDone > 0)
        text += fmt::format(", {} not done", tally.notDone);
    text += '\n';
    for (const std::string& path : tally.failedPaths)
        text += "failed: " + MakeShowable(path) + '\n';
    if (tally.failed > tally.failedPaths.size())
        text += fmt::format("failed: {} more\n", tally.failed - tally.failedPaths.size());
    return text;
}

/// Does a command to all models. Throws when there were none.
STally
RunOnAll(const SCommandLine& line, CModelCommand& command, CModelList& models, COutput& output)
{
    CProgress progress;
    STally tally = CRunner(command, models, output, progress).Run(line.threadCount);
    if (tally.GetTotal() == 0 && !IsInterrupted())
        throw CUsageError(fmt::format(
            "{}: {}; it has to be a file of paths, each ended by a zero byte",
            MakeShowable(line.files0From),
            models.GetError().empty() ? "no paths in it" : models.GetError()));
    if (output.GetError() != 0 && !line.files0From.empty() && !IsInterrupted())
        PrintError(fmt::format("zek: {}: no more of it is read\n", MakeShowable(line.files0From)));
    return tally;
}

/// Prints what came of several models: where programs read JSON, or nothing more can be written, to
/// standard error.
void PrintSummary(const std::string& summary, bool isJson, COutput& output)
{
    if (!isJson)
        output.Write(summary);
    output.Flush();
    if (isJson || output.GetError() != 0)
        PrintError(summary);
}

/// Throws when a list of models could not be read to its end.
void ExpectWholeList(const SCommandLine& line, const CModelList& models)
{
    if (!models.GetError().empty())
        throw std::runtime_error(
            MakeShowable(line.files0From) + ": cannot be read to its end: " + models.GetError());
}

EExitStatus RunOnModels(const SCommandLine& line, COutput& output)
{
    CModelList models = MakeModelList(line);
    const auto command = MakeCommand(line, models);
    const STally tally = RunOnAll(line, *command, models, output);
    if (models.IsSeveral())
        PrintSummary(MakeSummary(*command, tally), line.isJson, output);
    output.Flush();
    ExpectWholeList(line, models);
    if (IsInterrupted())
        return EExitStatus::Interrupted;
    return tally.failed == 0 ? EExitStatus::Success : EExitStatus::Failure;
}

/// Reports on all models to an output. Returns what came of them, in words.
std::string ReportTo(const SCommandLine& line, COutput& output)
{
    CModelList models = MakeModelList(line);
    CReportCommand command(line);
    command.Begin(output);
    const STally tally = RunOnAll(line, command, models, output);
    ExpectWholeList(line, models);
    if (!IsInterrupted())
        command.End(output);
    output.Flush();
    return MakeSummary(command, tally);
}

/// Writes a report to a file, complete or, after Ctrl-C, not at all.
std::string ReportToFile(const SCommandLine& line, const std::string& path)
{
    if (IsModel(path))
        throw CUsageError(
            MakeShowable(path) + ": is a model, or cannot be read; -o names the report");
    CReplacementFile file(path);
    const auto fail = [&](const std::string& error)
    { throw std::runtime_error(MakeShowable(path) + ": " + error); };
    if (!file.Create())
        fail(file.GetError());
    std::int64_t size = 0;
    COutput output(
        [&](std::string_view text)
        {
            const auto length = static_cast<std::int64_t>(text.size());
            const bool isWritten = file.GetFile().Write(size, text.data(), length);
            size += length;
            return isWritten ? 0 : EIO;
        });
    std::string summary = ReportTo(line, output);
    if (output.GetError() != 0)
        fail(file.GetFile().GetError());
    if (IsInterrupted())
        return summary + "not written: " + MakeShowable(path) + '\n';
    if (!file.Replace())
        fail(file.GetError());
    return summary + "written: " + MakeShowable(path) + '\n';
}

/// Reports on models. It is the report that succeeds or fails, not the models in it.
EExitStatus Report(const SCommandLine& line, COutput& output)
{
    const bool isPage = !line.isCsv && !line.isJson;
    if (isPage || !line.outputPath.empty())
        output.Write(ReportToFile(line, line.outputPath.empty() ? "report.html" : line.outputPath));
    else
        PrintError(ReportTo(line, output));
    return IsInterrupted() ? EExitStatus::Interrupted : EExitStatus::Success;
}

EExitStatus RunCommand(const SCommandLine& line, COutput& output)
{
    switch (line.command)
    {
    case ECommand::Print:
        output.Write(line.message);
        return EExitStatus::Success;
    case ECommand::Explain:
        output.Write(ExplainCode(line.explainedCode));
        return EExitStatus::Success;
    case ECommand::Dump:
        return Dump(line, output);
    case ECommand::Report:
        return Report(line, output);
    case ECommand::Info:
    case ECommand::Check:
    case ECommand::Mark:
        break;
    }
    return RunOnModels(line, output);
}

/// Runs a command and sees to it that what it printed is written.
EExitStatus RunAndFlush(const SCommandLine& line)
{
    COutput output(StandardOutput);
    EExitStatus status = RunCommand(line, output);
    output.Flush();
    if (output.GetError() != 0)
    {
        PrintError(fmt::format("zek: standard output: {}\n", std::strerror(output.GetError())));
        status = EExitStatus::Failure;
    }
    return status;
}

} // namespace

EExitStatus RunZek(const std::vector<std::string>& words)
{
    PrepareStandardStreams();
    CatchCtrlC();
    EExitStatus status = EExitStatus::Failure;
    try
    {
        return RunAndFlush(ParseCommandLine(words));
    }
    catch (const CUsageError& error)
    {
        status = EExitStatus::Usage;
        PrintError(fmt::format("zek: {}\n", error.what()));
    }
    catch (const std::bad_alloc&)
    {
        PrintError("zek: not enough memory\n");
    }
    catch (const std::exception& error)
    {
        PrintError(fmt::format("zek: {}\n", error.what()));
    }
    return status;
}

} // namespace zektool
