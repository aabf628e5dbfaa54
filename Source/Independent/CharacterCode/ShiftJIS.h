#pragma once

namespace charactercode
{

/// Tells whether a byte starts a two-byte character of Shift_JIS text: 0x81..0x9F and 0xE0..0xEF.
///
/// Every scan of a path or text for a separator, a dot or a match steps over such a byte together
/// with the byte after it, so that a trail byte of 0x5C is never taken for a backslash. The
/// parameter is unsigned because plain char is signed on some processors and unsigned on others.
constexpr bool IsShiftJISLeadByte(unsigned char byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF);
}

} // namespace charactercode
