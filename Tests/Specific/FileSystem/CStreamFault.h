#pragma once

namespace testsupport
{

/// The functions of a file stream that can be made to fail.
enum class EStreamCall
{
    None,
    Seek,
    Tell,
    Close
};

/// Makes one call of a function of file streams fail: the n-th from now, from 1. A stream whose
/// closing fails is closed all the same, as by the runtime library. One object at a time, in a
/// program that is linked with --wrap for these functions.
class CStreamFault
{
public:
    CStreamFault(EStreamCall call, int n);
    ~CStreamFault();
    CStreamFault(const CStreamFault&) = delete;
    CStreamFault& operator=(const CStreamFault&) = delete;
};

} // namespace testsupport
