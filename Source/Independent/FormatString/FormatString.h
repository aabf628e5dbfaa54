#pragma once

#include <cstdarg>
#include <string>
#include <vector>

/// printf-style formatting, number scanning, replacing and splitting of narrow texts.
///
/// The format language is that of the standard library's printf and scanf families, and the
/// caller's format and arguments must agree.
namespace formatstring
{

/// Size in bytes of the buffer in which every text that is returned as a string is formatted.
constexpr unsigned long FormatBufferSize = 16384;

/// Returns the formatted text up to its first zero byte. A text of `FormatBufferSize` characters
/// or more is cut to one less than that.
///
/// Where va_list is a plain `char*` (32-bit x86), a modifiable `char*` variable as the only
/// argument selects the overload below: pass it as `const char*`.
std::string Format(const char* format, ...);

/// Formats arguments that are already collected. As with vprintf, args cannot be used again.
///
/// Where va_list is an array type (64-bit x86), a function's own va_list parameter has become a
/// pointer and does not bind to this reference: make a copy with va_copy and pass the copy.
std::string Format(const char* format, va_list& args);

/// Formats into dest and returns the number of characters. dest must have room for the text and
/// its terminator: size is part of the signature for the caller's use and is not enforced.
int FormatArgs(char* dest, unsigned long size, const char* format, va_list& args);

/// Formats one int into dest and returns the number of characters; size is not enforced.
int PrintInt(char* dest, unsigned int size, const char* format, int value);

/// Formats one float, widened to double, into dest and returns the number of characters; size is
/// not enforced.
int PrintFloat(char* dest, unsigned int size, const char* format, float value);

/// Formats one text into dest and returns the number of characters; size is not enforced.
int PrintString(char* dest, unsigned int size, const char* format, const char* text);

/// Copies src with its terminator to dest and returns dest; size is not enforced.
char* CopyString(char* dest, unsigned int size, const char* src);

/// Reads a decimal int from the start of text, after white space; what follows the number is
/// ignored. Returns false and leaves value unchanged where there is none.
bool ScanInt(const std::string& text, int& value);

/// Reads an unsigned decimal int as `ScanInt` does.
bool ScanUnsignedInt(const std::string& text, unsigned int& value);

/// Reads a hexadecimal int, with or without a leading 0x, as `ScanInt` does.
bool ScanHexInt(const std::string& text, int& value);

/// Reads a float as `ScanInt` does.
bool ScanFloat(const std::string& text, float& value);

/// Returns the decimal text of an int.
std::string ToString(int value);

/// Returns the text of a float with six decimals.
std::string ToString(float value);

/// Returns a copy of text up to its first zero byte, cut as by `Format`.
std::string ToString(const std::string& text);

/// Returns text with each occurrence of from replaced by to, found from left to right.
///
/// text is Shift_JIS: both bytes of a two-byte character are stepped over together, so that no
/// match starts inside one. The scan ends at the last position where from still fits. What stands
/// after that, up to length(from) - 1 bytes, is missing from the result unless a match covers it or
/// it is the second byte of a character that starts by then, which for a lead byte that ends text
/// is a zero byte. A text shorter than from gives an empty one. An empty from, which must not be
/// passed, gives text back unchanged.
std::string Replace(const std::string& text, const std::string& from, const std::string& to);

/// Returns the pieces of text between the occurrences of separator, empty ones included: always
/// one more than there are separators. The search is by bytes. An empty separator, which must not
/// be passed, gives text as the only piece.
std::vector<std::string> Split(const std::string& text, const std::string& separator);

} // namespace formatstring
