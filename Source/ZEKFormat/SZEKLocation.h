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
    /// The name is shown as by `MakeExcerpt`.
    std::string GetLocationText() const;
};

/// Returns a text of a file as it can be shown in a line: with control characters written as \x01,
/// and cut after 80 bytes, for which "..." stands.
std::string MakeExcerpt(std::string_view text);

} // namespace zek
