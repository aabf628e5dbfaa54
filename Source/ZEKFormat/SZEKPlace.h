#pragma once

#include <cstdint>

namespace zek
{

/// Where bytes of a model file lie.
struct SZEKPlace
{
    const unsigned char* address = nullptr; ///< of the first byte, while the source holds it
    std::int64_t offset = -1;               ///< from the start of the file; -1 for nowhere
};

} // namespace zek
