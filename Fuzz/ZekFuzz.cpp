// Checks and dumps a model file beside a folder with some variants, as zek does. The walkers say
// whether it is accepted, and marking what is wrong with its flags.

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "FuzzTarget.h"
#include "Support/Variants.h"
#include "VariantFolder.h"
#include "ZEKFormat/SZEKRefusal.h"
#include "ZekTool/Check/Checker.h"
#include "ZekTool/Command/CCheckCommand.h"
#include "ZekTool/Command/Dump.h"
#include "ZekTool/Mark/CMarker.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

using fuzz::GetVariantFolder;
using fuzz::Require;
using zektool::EFinding;
using zektool::Json;
using zektool::SCheckResult;

namespace
{

using Bytes = std::vector<unsigned char>;
using Refusal = std::optional<zek::SZEKRefusal>;

constexpr std::size_t FewFindings = 3;
constexpr std::size_t ManyFindings = 1000000; // more than an input has bytes to be wrong in

constexpr EFinding Refusals[] = {
    EFinding::EmptyFile,   EFinding::NotAModel,        EFinding::TooOld,    EFinding::WrongHeader,
    EFinding::WrongSwitch, EFinding::UnterminatedName, EFinding::Truncated, EFinding::Unreadable};
constexpr EFinding StaleBytes[] = {
    EFinding::FlagWithoutVariant, EFinding::VariantWithoutFlag, EFinding::WrongFlag,
    EFinding::NotMarked};

/// Adds what only a check looks at to the variants.
void WriteOddVariants()
{
    GetVariantFolder().Write("tex_dxt/002.DDS", std::string("capitals"));
    GetVariantFolder().Write("tex_etc/017.pvr", std::string("of no texture"));
    GetVariantFolder().Write("tex_astc/notes.txt", std::string("no variant"));
    GetVariantFolder().MakeFolder("tex_pvrtc/002.pvr");
    testsupport::WriteFaces(GetVariantFolder(), "tex_reflection_cube_dxt/Probe", "dds", "/");
}

std::string GetPath()
{
    return GetVariantFolder().GetPath("model.zek");
}

template <std::size_t Count>
std::size_t CountOf(const SCheckResult& result, const EFinding (&kinds)[Count])
{
    const auto isOfKinds = [&](const zektool::SFinding& finding)
    { return std::find(std::begin(kinds), std::end(kinds), finding.finding) != std::end(kinds); };
    return static_cast<std::size_t>(
        std::count_if(result.findings.begin(), result.findings.end(), isOfKinds));
}

/// Checks that a text is one line that can be shown anywhere.
void CheckLine(const std::string& line)
{
    Require(zektool::IsUTF8(line), "a line is UTF-8");
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    Require(std::none_of(line.begin(), line.end(), isControl), "a line has no control characters");
}

/// Takes whole lines apart.
std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
    {
        lines.push_back(text.substr(begin, end - begin));
        CheckLine(lines.back());
    }
    Require(begin == text.size(), "the last line is ended");
    return lines;
}

Json Parse(const std::string& line)
{
    Json json = Json::parse(line, nullptr, false);
    Require(json.is_object(), "a line is a JSON object");
    return json;
}

SCheckResult Check(bool isThorough, std::size_t maxFindings)
{
    zektool::SCheckOptions options;
    options.isDeep = isThorough;
    options.isCubemapFolders = isThorough;
    options.maxFindings = maxFindings;
    return zektool::Check(GetPath(), options);
}

void CheckFindings(const SCheckResult& result, std::size_t size)
{
    const auto isError = [](const zektool::SFinding& finding)
    { return finding.severity == zektool::ESeverity::Error; };
    const auto& findings = result.findings;
    Require(std::is_partitioned(findings.begin(), findings.end(), isError), "errors come first");
    Require(
        result.errorCount + result.warningCount == findings.size() + result.suppressedCount,
        "every finding is counted");
    for (const zektool::SFinding& finding : findings)
        Require(
            finding.location.offset >= 0 &&
                finding.location.offset <= static_cast<std::int64_t>(size),
            "a finding is within the file");
}

void CheckFewFindings(const SCheckResult& few, const SCheckResult& all)
{
    Require(
        few.findings.size() == std::min(FewFindings, all.findings.size()),
        "as many findings as are wanted");
    Require(
        few.errorCount == all.errorCount && few.warningCount == all.warningCount,
        "findings above the limit are counted");
    for (std::size_t i = 0; i < few.findings.size(); ++i)
        Require(
            few.findings[i].GetText() == all.findings[i].GetText(), "the first findings are kept");
}

/// Checks that the findings about flags are what marking the model would change.
void CheckStaleBytes(const SCheckResult& result, bool isThorough)
{
    zektool::SMarkOptions options;
    options.isDryRun = true;
    options.isCubemapFolders = isThorough;
    const zektool::SMarkResult mark = zektool::Mark(GetPath(), options);
    std::size_t changeCount = mark.isMarkerSet ? 1 : 0;
    for (const zektool::SMarkItem& item : mark.items)
    {
        for (std::size_t family = 0; family < item.from.size(); ++family)
            changeCount += item.from[family] != item.to[family] ? 1 : 0;
    }
    Require(CountOf(result, StaleBytes) == changeCount, "what marking would change is found");
}

void CheckModel(std::size_t size, const Refusal& refusal, bool isThorough)
{
    const SCheckResult all = Check(isThorough, ManyFindings);
    CheckFindings(all, size);
    Require(all.suppressedCount == 0, "so many findings are not left out");
    Require(CountOf(all, Refusals) == (refusal ? 1 : 0), "what the walkers refuse has a finding");
    if (refusal)
        Require(
            all.findings[0].location.GetLocationText() == refusal->GetLocationText(),
            "the finding is where the walkers stop");
    CheckStaleBytes(all, isThorough);

    const SCheckResult few = Check(isThorough, FewFindings);
    CheckFindings(few, size);
    CheckFewFindings(few, all);
}

/// Checks what zek check prints, as text or as JSON.
void CheckPrintedFindings(bool isJson)
{
    zektool::SCommandLine line;
    line.isJson = isJson;
    line.isDeep = true;
    zektool::CCheckCommand command(line);
    const zektool::SModelPath model = {GetPath()};
    const std::vector<std::string> lines = SplitLines(command.Run(model).output);
    Require(!lines.empty(), "every model has a line");
    if (!isJson)
        return;
    const Json json = Parse(lines.front());
    Require(lines.size() == 1, "a model is one line of JSON");
    Require(
        json["errors"].get<std::size_t>() + json["warnings"].get<std::size_t>() ==
            json["findings"].size() + json["leftOut"].get<std::size_t>(),
        "every finding is printed or counted");
}

std::vector<std::string> Dump(bool isJson, bool isElements, bool isRefused)
{
    zektool::SCommandLine line;
    line.paths = {GetPath()};
    line.isJson = isJson;
    line.isElements = isElements;
    const std::string path = GetVariantFolder().GetPath("dump");
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    zektool::COutput output(descriptor);
    const zektool::EExitStatus status = zektool::Dump(line, output);
    output.Flush();
    close(descriptor);
    Require(output.GetError() == 0, "the dump can be written");
    Require(
        (status == zektool::EExitStatus::Success) != isRefused,
        "a dump fails for what the walkers refuse");
    const Bytes bytes = GetVariantFolder().Read("dump");
    return SplitLines(std::string(bytes.begin(), bytes.end()));
}

void CheckDump(std::size_t size, const Refusal& refusal, bool isElements)
{
    const std::vector<std::string> lines = Dump(true, isElements, refusal.has_value());
    std::size_t end = 0;
    bool isError = false;
    for (const std::string& line : lines)
    {
        const Json json = Parse(line);
        Require(!isError, "nothing follows the reason");
        isError = json.contains("error");
        if (isError)
            continue;
        Require(json["offset"].get<std::size_t>() == end, "fields follow each other");
        end += json["size"].get<std::size_t>();
    }
    Require(isError == refusal.has_value(), "a dump tells what the walkers refuse");
    Require(end <= size, "fields are within the file");
    Require(
        Dump(false, isElements, refusal.has_value()).size() == lines.size(),
        "text and JSON have the same lines");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    WriteOddVariants();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Bytes image(data, data + size);
    GetVariantFolder().Write("model.zek", image);
    const Refusal refusal = zek::WhyRefused(image.data(), static_cast<std::int64_t>(image.size()));
    for (bool isElements : {false, true})
        CheckDump(size, refusal, isElements);
    // One of the two ways, for twice as many inputs. A changed input often changes its size.
    const bool isOdd = size % 2 != 0;
    CheckModel(size, refusal, isOdd);
    CheckPrintedFindings(isOdd);
    Require(GetVariantFolder().Read("model.zek") == image, "the model is left alone");
    return 0;
}
