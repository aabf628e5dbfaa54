#pragma once

#include <string>

#include "ZekTool/Report/SModelReport.h"
#include "ZekTool/Report/SReportTotal.h"

namespace zektool
{

/// Returns a model's line of JSON.
std::string
MakeReportJson(const std::string& path, const SModelReport& report, bool isCubemapFolders);

/// Returns the line of JSON that ends a report.
std::string MakeTotalJson(const SReportTotal& total);

/// Returns the line of comma-separated values that names the columns.
std::string MakeCsvHeader();

/// Returns a model's line of comma-separated values. What is no text is written as in other lines
/// of text, `\x1b`.
std::string MakeCsvLine(const std::string& path, const SModelReport& report);

} // namespace zektool
