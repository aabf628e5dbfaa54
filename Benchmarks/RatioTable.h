#pragma once

namespace benchmarks
{

/// The library under measurement; every other name is that of a rival.
inline constexpr char Ours[] = "ours";

/// Runs all registered benchmarks, each named "work/library" and with its items counted
/// (SetItemsProcessed), and prints for each work the time that an item takes, ours and the fastest
/// rival's, their ratio, and the times of the other rivals:
///
///     work | ours ns | rival | rival ns | ratio | other rivals ns
///
/// The repetitions of all benchmarks are interleaved at random and each time is their median of
/// processor time, so that a change of the machine's speed meets all of them alike. The arguments
/// are those of Google Benchmark. Returns main's exit status.
int PrintRatioTable(int argc, char* argv[]);

} // namespace benchmarks
