#pragma once

namespace zek
{

/// Changes a byte of a file image that a walk pointed out. A walk hands out const addresses only;
/// the overwriter owns the image and is the only one to write to it.
inline void SetImageByte(const unsigned char* address, unsigned char value)
{
    *const_cast<unsigned char*>(address) = value;
}

} // namespace zek
