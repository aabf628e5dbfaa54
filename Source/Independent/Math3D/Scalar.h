#pragma once

#include <cstdint>
#include <limits>

/// What the value types of this library share on single numbers.
namespace math3d
{

/// The circle constant in single precision.
inline constexpr float Pi = 3.1415927f;

/// Radians to degrees: (radians * 180) / pi, multiplied before it is divided.
[[nodiscard]] constexpr float RadToDeg(float radians) noexcept
{
    return radians * 180.0f / Pi;
}

/// Degrees to radians: (degrees * pi) / 180, multiplied before it is divided.
[[nodiscard]] constexpr float DegToRad(float degrees) noexcept
{
    return degrees * Pi / 180.0f;
}

/// The value truncated toward zero. Out of the range of int it gives the nearest int, for NaN 0.
[[nodiscard]] constexpr int TruncateToInt(float value) noexcept
{
    // 2^31 is the first float above every int; -2^31 is an int itself.
    constexpr float limit = 2147483648.0f;
    if (value >= limit)
        return std::numeric_limits<int>::max();
    if (value < -limit)
        return std::numeric_limits<int>::min();
    return value == value ? static_cast<int>(value) : 0;
}

/// a + b in 32 bits; a sum that does not fit wraps around.
[[nodiscard]] constexpr int WrappingAdd(int a, int b) noexcept
{
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// a - b in 32 bits; a difference that does not fit wraps around.
[[nodiscard]] constexpr int WrappingSubtract(int a, int b) noexcept
{
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

/// a * b in 32 bits; a product that does not fit wraps around.
[[nodiscard]] constexpr int WrappingMultiply(int a, int b) noexcept
{
    return static_cast<int>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

/// a / b truncated toward zero. The one quotient that does not fit, the smallest int over -1,
/// wraps around to the smallest int. b must not be 0.
[[nodiscard]] constexpr int WrappingDivide(int a, int b) noexcept
{
    return b == -1 ? WrappingSubtract(0, a) : a / b;
}

} // namespace math3d
