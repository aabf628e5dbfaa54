#pragma once

namespace testsupport
{

/// Whether a byte is the first of two in Shift_JIS, as paths and texts are taken apart.
inline bool IsLeadByte(char character)
{
    const int byte = static_cast<unsigned char>(character);
    return (0x81 <= byte && byte <= 0x9F) || (0xE0 <= byte && byte <= 0xEF);
}

} // namespace testsupport
