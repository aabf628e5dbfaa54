#include "ZekTool/Command/Dump.h"

#include <cmath>
#include <memory>
#include <string_view>

#include <fmt/format.h>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "Specific/FileSystem/SystemFiles.h"
#include "ZEKFormat/CZEKVisitor.h"
#include "ZekTool/Models/CModelList.h"
#include "ZekTool/Models/OpenModel.h"
#include "ZekTool/Models/RefusalText.h"
#include "ZekTool/Output/CUsageError.h"
#include "ZekTool/Output/Interrupt.h"
#include "ZekTool/Output/Json.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

/// Ends a walk whose fields nobody gets to see any more.
struct SStopped
{
};

/// Prints the fields of a section, or of all.
class CDumper : public zek::CZEKVisitor
{
public:
    CDumper(const SCommandLine& line, COutput& output) : m_Line(line), m_Output(output) {}

    void OnSection(std::string_view name) override
    {
        m_IsPrinting = m_Line.section.empty() || m_Line.section == name;
    }

    void OnField(const zek::SZEKField& field) override
    {
        if (m_IsPrinting)
            Print(field);
    }

    void OnArray(const zek::SZEKArray& array) override
    {
        if (m_IsPrinting)
            Print(array);
    }

    bool IsElementsWanted(std::string_view) override { return m_Line.isElements && m_IsPrinting; }

    virtual void PrintRefusal(const std::string& reason) = 0;

protected:
    /// Prints whole lines.
    void Write(const std::string& lines)
    {
        m_Output.Write(lines);
        if (m_Output.GetError() != 0 || IsInterrupted())
            throw SStopped();
    }

    const SCommandLine& m_Line;

private:
    virtual void Print(const zek::SZEKField& field) = 0;
    virtual void Print(const zek::SZEKArray& array) = 0;

    COutput& m_Output;
    bool m_IsPrinting = false;
};

class CTextDumper : public CDumper
{
public:
    using CDumper::CDumper;

    void PrintRefusal(const std::string& reason) override
    {
        Write(MakeFailureLine(m_Line.paths.front(), EOutcome::Failed, reason));
    }

private:
    void Print(const zek::SZEKField& field) override
    {
        std::string type(zek::GetName(field.type));
        if (field.count != 1)
            type += fmt::format("[{}]", field.count);
        PrintLine(field.offset, type, fmt::format("{} = {}", field.path, MakeValue(field)));
    }

    void Print(const zek::SZEKArray& array) override
    {
        PrintLine(
            array.offset, "array",
            fmt::format("{}: {} x {} bytes", array.path, array.count, array.elementSize));
    }

    void PrintLine(std::int64_t offset, std::string_view type, std::string_view rest)
    {
        Write(fmt::format("0x{:08x}  {:<9} {}\n", offset, type, rest));
    }

    static std::string MakeValue(const zek::SZEKField& field)
    {
        if (field.type == zek::EZEKFieldType::Text)
            return MakeQuoted(field.GetText());
        std::string text;
        for (int i = 0; i < field.count; ++i)
        {
            text += i == 0 ? "" : " ";
            text += field.type == zek::EZEKFieldType::Float
                        ? fmt::format("{}", static_cast<float>(field.GetNumber(i)))
                        : fmt::format("{}", static_cast<int>(field.GetNumber(i)));
        }
        return text;
    }
};

class CJsonDumper : public CDumper
{
public:
    using CDumper::CDumper;

    void PrintRefusal(const std::string& reason) override
    {
        Write(MakeJsonLine({{"error", MakeJsonText(reason)}}));
    }

private:
    void Print(const zek::SZEKField& field) override
    {
        Write(MakeJsonLine(
            {{"offset", field.offset},
             {"size", field.size},
             {"type", zek::GetName(field.type)},
             {"path", field.path},
             {"value", MakeValue(field)}}));
    }

    void Print(const zek::SZEKArray& array) override
    {
        Write(MakeJsonLine(
            {{"offset", array.offset},
             {"size", array.count * array.elementSize},
             {"type", "array"},
             {"path", array.path},
             {"count", array.count},
             {"elementSize", array.elementSize}}));
    }

    static Json MakeValue(const zek::SZEKField& field)
    {
        if (field.type == zek::EZEKFieldType::Text)
            return MakeJsonText(field.GetText());
        if (field.count == 1)
            return MakeNumber(field, 0);
        Json json = Json::array();
        for (int i = 0; i < field.count; ++i)
            json.push_back(MakeNumber(field, i));
        return json;
    }

    /// JSON has no infinities and no NaN, so these are texts.
    static Json MakeNumber(const zek::SZEKField& field, int index)
    {
        const double number = field.GetNumber(index);
        if (field.type != zek::EZEKFieldType::Float)
            return static_cast<int>(number);
        if (std::isfinite(number))
            return number;
        return std::isnan(number) ? "NaN" : number > 0 ? "Infinity" : "-Infinity";
    }
};

std::unique_ptr<CDumper> MakeDumper(const SCommandLine& line, COutput& output)
{
    if (line.isJson)
        return std::make_unique<CJsonDumper>(line, output);
    return std::make_unique<CTextDumper>(line, output);
}

} // namespace

EExitStatus Dump(const SCommandLine& line, COutput& output)
{
    const std::string& path = line.paths.front();
    const filesystem::SPathStatus status = filesystem::GetPathStatus(path);
    if (status.kind == filesystem::EPathKind::Absent)
        throw CUsageError(MakeNoPathError(path, status.error));
    if (status.kind == filesystem::EPathKind::Folder)
        throw CUsageError(MakeShowable(path) + ": is a folder; name one model");

    const auto dumper = MakeDumper(line, output);
    try
    {
        filesystem::CRandomAccessFile file;
        std::string error = OpenModel(path, file);
        if (error.empty())
        {
            const auto refusal = zek::VisitFields(file, *dumper);
            if (!refusal)
                return EExitStatus::Success;
            error = MakeRefusalText(*refusal, file);
        }
        dumper->PrintRefusal(error);
    }
    catch (const SStopped&)
    {
        if (IsInterrupted())
            return EExitStatus::Interrupted;
    }
    return EExitStatus::Failure;
}

} // namespace zektool
