#include "ZekTool/Output/CProgress.h"

#include <fmt/format.h>

#include "ZekTool/Output/COutput.h"
#include "ZekTool/Output/Descriptor.h"

namespace zektool
{

std::string MakeProgressLine(const STally& tally, std::size_t total, double seconds)
{
    const std::size_t done = tally.GetDone();
    std::string line =
        total == 0 ? fmt::format("{} done", done) : fmt::format("{} of {} done", done, total);
    line += fmt::format(", {} failed", tally.failed);
    if (done == 0 || seconds <= 0)
        return line;
    const double rate = static_cast<double>(done) / seconds;
    line += fmt::format(", {:.0f} a second", rate);
    if (total > done)
        line += fmt::format(", {:.0f} s left", static_cast<double>(total - done) / rate);
    return line;
}

CProgress::CProgress() : m_IsTerminal(IsTerminalWithCursor(StandardError)) {}

void CProgress::Show(const STally& tally, std::size_t total)
{
    if (!m_IsTerminal)
        return;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_Start;
    std::string line = MakeProgressLine(tally, total, elapsed.count());
    // A line that goes on in a second row, as one that fills the first may, cannot be taken back.
    // The terminal may have become narrower.
    const std::size_t columns = GetColumnCount(StandardError);
    if (columns != 0 && line.size() >= columns)
        line.resize(columns - 1);
    PrintError("\r" + line + "\033[K");
    m_IsShown = true;
}

void CProgress::Clear()
{
    if (m_IsShown)
        PrintError("\r\033[K");
    m_IsShown = false;
}

} // namespace zektool
