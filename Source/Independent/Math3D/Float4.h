#pragma once

#include <cstring>

/// Four floats in one register, in the form that g++ and clang know on every processor. Each of the
/// four is rounded as a single float is, so the results have the bits of four separate sums.
namespace math3d
{

using Float4 = float __attribute__((vector_size(16)));
using Int4 = int __attribute__((vector_size(16)));

/// The four floats from an address on, which needs no alignment.
inline Float4 LoadFloat4(const float* source)
{
    Float4 value;
    std::memcpy(&value, source, sizeof(value));
    return value;
}

/// Writes the four floats from an address on, which needs no alignment.
inline void StoreFloat4(float* dest, Float4 value)
{
    std::memcpy(dest, &value, sizeof(value));
}

/// (value[I], value[J], value[K], value[L]).
template <int I, int J, int K, int L>
Float4 Shuffle(Float4 value)
{
    // As integers: for these x86 has an instruction that leaves its operand as it was.
    const Int4 bits = reinterpret_cast<Int4>(value);
    return reinterpret_cast<Float4>(__builtin_shufflevector(bits, bits, I, J, K, L));
}

/// Makes the columns of a 4x4 matrix of its rows.
inline void Transpose(Float4& a, Float4& b, Float4& c, Float4& d)
{
    const Float4 abLow = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const Float4 cdLow = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const Float4 abHigh = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const Float4 cdHigh = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    a = __builtin_shufflevector(abLow, cdLow, 0, 1, 4, 5);
    b = __builtin_shufflevector(abLow, cdLow, 2, 3, 6, 7);
    c = __builtin_shufflevector(abHigh, cdHigh, 0, 1, 4, 5);
    d = __builtin_shufflevector(abHigh, cdHigh, 2, 3, 6, 7);
}

/// (value[0], value[1], value[2], -value[3]).
inline Float4 NegateLast(Float4 value)
{
    const Int4 signOfLast = {0, 0, 0, -0x7FFFFFFF - 1};
    return reinterpret_cast<Float4>(reinterpret_cast<Int4>(value) ^ signOfLast);
}

} // namespace math3d
