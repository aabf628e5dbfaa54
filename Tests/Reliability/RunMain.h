#pragma once

#include <string>
#include <vector>

/// What is to go wrong in a run: the n-th allocation or the n-th call on a file stream, counted
/// from 1; 0 for none.
struct SFault
{
    int allocation = 0;
    int streamCall = 0;
};

/// What the program's own `main` did, called in this process.
struct SMainResult
{
    int status; ///< as main returned it: 0 or -1
    std::string output;
    bool hasFaultCome;        ///< false when the run ended before
    std::size_t leakedBlocks; ///< of the heap
    bool hasLeakedFile;
    std::vector<std::string> streamCalls; ///< see `CStreamFault::GetCalls`
};

/// Calls the program's `main` with a path as its only argument.
SMainResult RunMain(const std::string& path, const SFault& fault = {});
