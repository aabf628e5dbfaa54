#pragma once

#include <ctime>
#include <string>
#include <vector>

#include "ZekTool/Output/COutput.h"
#include "ZekTool/Report/SModelReport.h"

namespace zektool
{

/// A page of HTML that shows models, complete in one file: style, program and data.
///
/// The data is JSON. Every name in it is text that can be shown, and the page takes it for nothing
/// else. Rows are arrays, whose places have their names in report.js.
class CReportPage
{
public:
    /// The time is the one that the page names as that of what it shows.
    CReportPage(bool isCubemapFolders, std::time_t time)
        : m_IsCubemapFolders(isCubemapFolders)
        , m_Time(time)
    {
    }

    /// Returns what the page holds of a model.
    static std::string MakeRow(const std::string& path, const SModelReport& report);

    /// Adds the row of a model.
    void Add(const std::string& path, std::string row);

    /// Writes the page, with the folders, and the models of each, in byte order.
    void Write(COutput& output);

private:
    struct SRow
    {
        std::string folder;
        std::string path;
        std::string json;
    };

    std::string MakeStart() const;
    void WriteRows(COutput& output);

    bool m_IsCubemapFolders;
    std::time_t m_Time;
    std::vector<SRow> m_Rows;
};

} // namespace zektool
