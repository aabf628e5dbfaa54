#pragma once

#include <string>
#include <vector>

namespace testsupport
{

/// Makes one call on the C library's file streams fail while the object lives, as its function
/// fails. A read or write that fails moves half of the bytes first, and a close closes all the
/// same. One object at a time, in a program that links the library StreamFault, through which the
/// linker then leads every call of the functions named here (its option --wrap).
class CStreamFault
{
public:
    /// The n-th call from now, counted from 1; 0 for none.
    explicit CStreamFault(int n) : CStreamFault("", n) {}

    /// The n-th call of one function: "fopen to read", "fopen to write", "fseeko", "ftello",
    /// "fread", "fwrite" or "fclose".
    CStreamFault(const char* function, int n);
    ~CStreamFault();
    CStreamFault(const CStreamFault&) = delete;
    CStreamFault& operator=(const CStreamFault&) = delete;

    /// Tells whether the call that was to fail has come.
    bool HasFailed() const;

    /// The names of the functions called so far, in turn; the first 64.
    std::vector<std::string> GetCalls() const;
};

} // namespace testsupport
