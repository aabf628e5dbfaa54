#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zek
{

/// A place in a model file, for people.
struct SZEKLocation
{
    std::string section;     ///< such as "materials", or "header"
    int index = -1;          ///< of the record in its section, or -1 outside of one
    std::string name;        ///< of the record, if it has one that has been read
    std::string field;       ///< such as "primitives[0].indices"; also a block of fields, or a list
    std::int64_t offset = 0; ///< where it starts

    /// Returns all that in one line, such as `material 1 "Concrete wall": parameters at 0x13a`.
    /// Names stand as the file has them, but for bytes below 32, which are written as \x01, and for
    /// their length.
    std::string GetLocationText() const;
};

/// Returns a text of a file as it can be shown in a line: with the bytes below 32 written as \x01,
/// and cut when it is long.
std::string MakeShowable(std::string_view text);

} // namespace zek
