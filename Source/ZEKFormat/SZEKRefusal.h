#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Specific/FileSystem/CRandomAccessFile.h"
#include "ZEKFormat/SZEKFault.h"
#include "ZEKFormat/SZEKLocation.h"

namespace zek
{

/// Why a model file is refused, and where. A text without an end demands all the bytes left.
struct SZEKRefusal : SZEKLocation
{
    SZEKFault::EKind kind = SZEKFault::TooShort;
    std::int64_t demanded = 0; ///< bytes that the format demands; 0 for `WrongValue`
    std::int64_t left = 0;     ///< bytes from the place to the end; 0 for `WrongValue`
    std::string value;         ///< the wrong value; for `WrongValue`
    std::string expected;      ///< the right ones, in words; for `WrongValue`

    /// Returns all that in one line, such as `material 1 "Concrete wall": parameters at 0x13a: 60
    /// bytes needed, 54 left`.
    std::string GetText() const;

    /// Returns why alone: `60 bytes needed, 54 left`.
    std::string GetCauseText() const;
};

/// Returns why the walkers refuse an image of size bytes, or nothing when they accept it.
std::optional<SZEKRefusal> WhyRefused(const unsigned char* image, std::int64_t size);

/// The same of an open file.
std::optional<SZEKRefusal> WhyRefused(filesystem::CRandomAccessFile& file);

} // namespace zek
