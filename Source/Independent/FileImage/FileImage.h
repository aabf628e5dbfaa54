#pragma once

#include <cstdint>
#include <cstring>

/// Byte images: the encodings that every binary file of the system shares.
///
/// All values are little-endian whatever the host, are assembled byte by byte and may start at any
/// address. The functions below read or write a value at a given address and check nothing: the
/// caller guarantees that the bytes are there.
namespace fileimage
{

static_assert(sizeof(float) == 4 && sizeof(unsigned int) == 4 && sizeof(unsigned short) == 2);

/// Returns the unsigned 16-bit value of p[0..1].
inline unsigned short ReadWord(const unsigned char* p)
{
    return static_cast<unsigned short>(p[0] | p[1] << 8);
}

/// Returns the unsigned 32-bit value of p[0..3].
inline unsigned int ReadDWord(const unsigned char* p)
{
    return static_cast<unsigned int>(p[0]) | static_cast<unsigned int>(p[1]) << 8 |
           static_cast<unsigned int>(p[2]) << 16 | static_cast<unsigned int>(p[3]) << 24;
}

/// Returns the signed 32-bit value of p[0..3], two's complement.
inline int ReadInt(const unsigned char* p)
{
    return static_cast<int>(ReadDWord(p));
}

/// Returns the IEEE 754 single whose bit pattern is p[0..3].
inline float ReadFloat(const unsigned char* p)
{
    const unsigned int bits = ReadDWord(p);
    float value;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

/// Stores an unsigned 16-bit value in p[0..1].
inline void WriteWord(unsigned char* p, unsigned short value)
{
    p[0] = static_cast<unsigned char>(value);
    p[1] = static_cast<unsigned char>(value >> 8);
}

/// Stores an unsigned 32-bit value in p[0..3]. A float is stored as the value of its bit pattern.
inline void WriteDWord(unsigned char* p, unsigned int value)
{
    p[0] = static_cast<unsigned char>(value);
    p[1] = static_cast<unsigned char>(value >> 8);
    p[2] = static_cast<unsigned char>(value >> 16);
    p[3] = static_cast<unsigned char>(value >> 24);
}

/// Stores a signed 32-bit value in p[0..3], two's complement.
inline void WriteInt(unsigned char* p, int value)
{
    WriteDWord(p, static_cast<unsigned int>(value));
}

} // namespace fileimage
