#pragma once

namespace charactercode
{

/// Tells whether a byte starts a two-byte character of Shift_JIS text: 0x81..0x9F and 0xE0..0xEF.
///
/// Whoever looks in a path or text for separators, dots or matches passes such a byte and its
/// successor at once; else a second byte of 0x5C would count as a backslash. The parameter is
/// unsigned because plain char is signed on some processors and unsigned on others.
constexpr bool IsShiftJISLeadByte(unsigned char byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF);
}

} // namespace charactercode
