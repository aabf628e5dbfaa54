#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "ZekTool/Output/STally.h"

namespace zektool
{

/// Returns what stands in the line of progress after some seconds; a total of 0 is not known.
std::string MakeProgressLine(const STally& tally, std::size_t total, double seconds);

/// A line on standard error that tells how far the work is, when that is a terminal.
class CProgress
{
public:
    CProgress();

    /// Shows the line, or as much of it as a row of the terminal has room for, in place of the one
    /// before. A total of 0 is not known.
    void Show(const STally& tally, std::size_t total);

    /// Takes the line away, so that other output can stand there.
    void Clear();

private:
    bool m_IsTerminal;
    bool m_IsShown = false;
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};

} // namespace zektool
