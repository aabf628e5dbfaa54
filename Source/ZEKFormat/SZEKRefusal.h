#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/SZEKFault.h"

namespace zek
{

/// Why a model file is refused, and where.
struct SZEKRefusal
{
    SZEKFault::EKind kind = SZEKFault::TooShort;
    std::string section;     ///< such as "materials", or "header"
    int index = -1;          ///< of the record in its section, or -1 outside of one
    std::string name;        ///< of the record, if it has one that has been read
    std::string field;       ///< such as "primitives[0].indices"; also a block of fields, or a list
    std::int64_t offset = 0; ///< where it starts
    std::int64_t demanded = 0; ///< bytes that the format demands; for `TooShort`
    std::int64_t left = 0;     ///< bytes from offset to the end
    std::string value;         ///< the wrong value; for `WrongValue`
    std::string expected;      ///< the right ones, in words; for `WrongValue`

    /// Returns all that in one line, such as `material 1 "Concrete wall": parameters at 0x13a: 60
    /// bytes needed, 54 left`. Names stand as the file has them, but for bytes below 32, which are
    /// written as \x01, and for their length.
    std::string GetText() const;
};

/// Returns why the walkers refuse an image of size bytes, or nothing when they accept it.
std::optional<SZEKRefusal> WhyRefused(const unsigned char* image, std::int64_t size);

/// The same of an open file.
std::optional<SZEKRefusal> WhyRefused(filesystem::CRandomAccessFile& file);

} // namespace zek
