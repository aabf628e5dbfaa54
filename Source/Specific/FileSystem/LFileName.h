#pragma once

#include <string>

/// Cuts a path into folder, file name and extension.
///
/// A path is Shift_JIS text with both the backslash and the slash as separators. Both bytes of a
/// two-byte character are stepped over together, so a trail byte is never taken for a separator or
/// a dot. Nothing is looked up on disk.
class LFileName
{
public:
    /// Returns the text after the last dot in lower case; empty when there is no dot. Where the
    /// file name has no dot, one in a folder's name is taken.
    static std::string GetExtension(const std::string& path);

    /// Returns the path before the last dot; the whole path when there is no dot. Where the file
    /// name has no dot, one in a folder's name is taken.
    static std::string DeleteExtension(const std::string& path);

    /// Returns the path with what stands after the last dot replaced by ext, which comes without
    /// a dot; a path without a dot gets one.
    static std::string ChangeExtension(const std::string& path, const std::string& ext);

    /// Returns the path up to its last separator, which is kept; empty when there is none.
    static std::string DeleteFileName(const std::string& path);

    /// Returns the path before its last separator; empty when there is none.
    static std::string DeleteExceptFileName(const std::string& path);

    /// Returns what stands after the last separator; the whole path when there is none.
    static std::string DeleteDir(const std::string& path);

    /// Returns the path before its first separator; empty when there is none.
    static std::string GetFirstDir(const std::string& path);

    /// Returns what stands after the first separator; the whole path when there is none.
    static std::string DeleteFirstDir(const std::string& path);

    /// Returns the path without the separator that ends it; only one is removed.
    static std::string DeletePunct(const std::string& path);

    /// Returns the path with a slash at its end unless a separator ends it. An empty path gives a
    /// lone slash.
    static std::string AddPunct(const std::string& path);

    /// Returns the path before its last separator, of which only that one is left out: "a//b" gives
    /// "a/". Empty when there is none.
    static std::string GetParent(const std::string& path);

    /// Returns the path with A to Z in lower case and everything else, two-byte characters
    /// included, as it is. A lead byte that ends the path is followed by a zero byte in the
    /// result. No locale is consulted.
    static std::string ToLower(const std::string& path);
};
