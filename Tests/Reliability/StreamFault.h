#pragma once

#include <string>
#include <vector>

/// Faults of the C library's file streams. The linker leads every call of fopen, fseek, ftell,
/// fread, fwrite and fclose in this test program through StreamFault.cpp (its option --wrap).
namespace streamfault
{

/// Has the n-th call from now on, counted from 1, fail as its function fails; 0 for none. A read or
/// write that fails moves half of the bytes first, and a close closes all the same.
void FailCall(int n);

/// True when the call that was to fail has come.
bool HasFailed();

/// The functions called since `FailCall`, in turn: "fopen to read", "fseek" and so on.
std::vector<std::string> GetCalls();

} // namespace streamfault
