#pragma once

#include <cstring>
#include <type_traits>

/// Of no use to callers: how the matrix and the quaternion compute. Four floats in one register, in
/// the form that g++ and clang know on every processor. Each of the four is rounded as a single
/// float is, so the results have the bits of four separate sums.
namespace math3d::detail
{

using Float4 = float __attribute__((vector_size(16)));
using Int4 = int __attribute__((vector_size(16)));

/// The four floats that an object consists of: a row of a matrix, a quaternion.
template <typename Object>
Float4 LoadFloat4(const Object& source)
{
    static_assert(sizeof(Object) == sizeof(Float4) && std::is_trivially_copyable_v<Object>);
    Float4 value;
    std::memcpy(&value, &source, sizeof(value));
    return value;
}

/// Writes the four floats that an object consists of.
template <typename Object>
void StoreFloat4(Object& dest, Float4 value)
{
    static_assert(sizeof(Object) == sizeof(Float4) && std::is_trivially_copyable_v<Object>);
    std::memcpy(static_cast<void*>(&dest), &value, sizeof(value));
}

/// (value[I], value[J], value[K], value[L]). g++ 11 lacks the builtin.
template <int I, int J, int K, int L>
Float4 Shuffle(Float4 value)
{
#if __has_builtin(__builtin_shufflevector)
    // As integers: for these x86 has an instruction that leaves its operand as it was.
    const Int4 bits = reinterpret_cast<Int4>(value);
    return reinterpret_cast<Float4>(__builtin_shufflevector(bits, bits, I, J, K, L));
#else
    return Float4{value[I], value[J], value[K], value[L]};
#endif
}

/// Four of the eight floats of two values, counted from 0 to 7. Without the builtin compilers do
/// not see that this is one instruction.
template <int I, int J, int K, int L>
Float4 Shuffle(Float4 a, Float4 b)
{
#if __has_builtin(__builtin_shufflevector)
    return __builtin_shufflevector(a, b, I, J, K, L);
#else
    const auto get = [&](int i) { return i < 4 ? a[i] : b[i - 4]; };
    return Float4{get(I), get(J), get(K), get(L)};
#endif
}

/// Makes the columns of a 4x4 matrix of its rows.
inline void Transpose(Float4& a, Float4& b, Float4& c, Float4& d)
{
    const Float4 abLow = Shuffle<0, 4, 1, 5>(a, b);
    const Float4 cdLow = Shuffle<0, 4, 1, 5>(c, d);
    const Float4 abHigh = Shuffle<2, 6, 3, 7>(a, b);
    const Float4 cdHigh = Shuffle<2, 6, 3, 7>(c, d);
    a = Shuffle<0, 1, 4, 5>(abLow, cdLow);
    b = Shuffle<2, 3, 6, 7>(abLow, cdLow);
    c = Shuffle<0, 1, 4, 5>(abHigh, cdHigh);
    d = Shuffle<2, 3, 6, 7>(abHigh, cdHigh);
}

/// (value[0], value[1], value[2], -value[3]).
inline Float4 NegateLast(Float4 value)
{
    const Int4 signOfLast = {0, 0, 0, -0x7FFFFFFF - 1};
    return reinterpret_cast<Float4>(reinterpret_cast<Int4>(value) ^ signOfLast);
}

} // namespace math3d::detail
