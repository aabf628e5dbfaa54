#pragma once

#include <string_view>

namespace zektool
{

/// The page before and after its data: report.html, with report.css and report.js in it.
extern const std::string_view ReportTemplateStart;
extern const std::string_view ReportTemplateEnd;

} // namespace zektool
