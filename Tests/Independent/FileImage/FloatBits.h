#pragma once

#include <cstring>

namespace imagetest
{

inline float FloatOfBits(unsigned int bits)
{
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

inline unsigned int BitsOfFloat(float value)
{
    unsigned int bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

} // namespace imagetest
