#pragma once

#include <cmath>

#include "Independent/Math3D/Scalar.h"

struct SMatrix;

/// A vector, point or scale of three floats. Comparisons are exact; no function uses an epsilon
/// unless it says so. The conventions of matrices stand in SMatrix.h.
struct S3D
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    /// (0, 0, 0).
    constexpr S3D() = default;

    /// (newX, newY, newZ).
    constexpr S3D(float newX, float newY, float newZ) noexcept : x(newX), y(newY), z(newZ) {}

    /// True when all three components are equal.
    [[nodiscard]] constexpr bool operator==(const S3D& other) const noexcept
    {
        return x == other.x && y == other.y && z == other.z;
    }

    /// True when any component differs.
    [[nodiscard]] constexpr bool operator!=(const S3D& other) const noexcept
    {
        return !(*this == other);
    }

    /// Strict lexicographic order: x decides unless equal, then y, then z.
    [[nodiscard]] constexpr bool operator<(const S3D& other) const noexcept
    {
        if (x != other.x)
            return x < other.x;
        if (y != other.y)
            return y < other.y;
        return z < other.z;
    }

    /// Strict lexicographic order: x decides unless equal, then y, then z.
    [[nodiscard]] constexpr bool operator>(const S3D& other) const noexcept
    {
        return other < *this;
    }

    /// Adds component by component.
    constexpr S3D& operator+=(const S3D& other) noexcept
    {
        x += other.x;
        y += other.y;
        z += other.z;
        return *this;
    }

    /// Subtracts component by component.
    constexpr S3D& operator-=(const S3D& other) noexcept
    {
        x -= other.x;
        y -= other.y;
        z -= other.z;
        return *this;
    }

    /// Multiplies component by component.
    constexpr S3D& operator*=(const S3D& other) noexcept
    {
        x *= other.x;
        y *= other.y;
        z *= other.z;
        return *this;
    }

    /// Multiplies each component by the factor.
    constexpr S3D& operator*=(float factor) noexcept
    {
        x *= factor;
        y *= factor;
        z *= factor;
        return *this;
    }

    /// Multiplies each component by 1 / divisor, which is formed once. The last bit may differ from
    /// that of operator/. A divisor of 0 gives infinities or NaN.
    constexpr S3D& operator/=(float divisor) noexcept { return *this *= 1.0f / divisor; }

    /// The sum, component by component.
    [[nodiscard]] constexpr S3D operator+(const S3D& other) const noexcept
    {
        return S3D(x + other.x, y + other.y, z + other.z);
    }

    /// The difference, component by component.
    [[nodiscard]] constexpr S3D operator-(const S3D& other) const noexcept
    {
        return S3D(x - other.x, y - other.y, z - other.z);
    }

    /// The product, component by component.
    [[nodiscard]] constexpr S3D operator*(const S3D& other) const noexcept
    {
        return S3D(x * other.x, y * other.y, z * other.z);
    }

    /// Each component times the factor.
    [[nodiscard]] constexpr S3D operator*(float factor) const noexcept
    {
        return S3D(x * factor, y * factor, z * factor);
    }

    /// Each component divided by the divisor. A divisor of 0 gives infinities or NaN.
    [[nodiscard]] constexpr S3D operator/(float divisor) const noexcept
    {
        return S3D(x / divisor, y / divisor, z / divisor);
    }

    /// (-x, -y, -z).
    [[nodiscard]] constexpr S3D operator-() const noexcept { return S3D(-x, -y, -z); }

    /// Transforms the point (x, y, z, 1) in place and divides by the resulting w as operator* does,
    /// except that a w of exactly 0 leaves the vector as it was.
    constexpr S3D& operator*=(const SMatrix& matrix) noexcept;

    /// The point (x, y, z, 1) times the matrix. The first three components of the result are
    /// multiplied by 1 / w, unless w is exactly 1 or exactly 0.
    [[nodiscard]] inline S3D operator*(const SMatrix& matrix) const noexcept;

    /// The direction rotated and scaled by the matrix's first three rows and columns; it is neither
    /// moved nor divided.
    [[nodiscard]] constexpr S3D MulMatrixRot(const SMatrix& matrix) const noexcept;

    /// x, y, z for the index 0, 1, 2. Any other index fails an assertion in every build type and
    /// ends the program.
    [[nodiscard]] float operator[](unsigned long index) const noexcept;

    /// Assigns all three components.
    constexpr void Set(float newX, float newY, float newZ) noexcept
    {
        *this = S3D(newX, newY, newZ);
    }

    /// (x, 0, z): the projection onto the ground plane.
    [[nodiscard]] constexpr S3D GetXZOnly() const noexcept { return S3D(x, 0.0f, z); }

    /// The Euclidean length, sqrt(x*x + y*y + z*z).
    [[nodiscard]] float Length() const noexcept { return std::sqrt(Length2()); }

    /// The squared length, x*x + y*y + z*z.
    [[nodiscard]] constexpr float Length2() const noexcept { return x * x + y * y + z * z; }

    /// The Euclidean distance of two points.
    [[nodiscard]] static float Distance(const S3D& a, const S3D& b) noexcept
    {
        return (a - b).Length();
    }

    /// The squared distance of two points.
    [[nodiscard]] static constexpr float Distance2(const S3D& a, const S3D& b) noexcept
    {
        return (a - b).Length2();
    }

    /// a - b.
    [[nodiscard]] static constexpr S3D Sub(const S3D& a, const S3D& b) noexcept { return a - b; }

    /// The cross product a x b.
    [[nodiscard]] static constexpr S3D CrossProduct(const S3D& a, const S3D& b) noexcept
    {
        return S3D(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }

    /// The dot product a . b.
    [[nodiscard]] static constexpr float DotProduct(const S3D& a, const S3D& b) noexcept
    {
        return a.x * b.x + a.y * b.y + a.z * b.z;
    }

    /// (x, y, -z): this position under OpenGL's right-handed axes.
    [[nodiscard]] constexpr S3D GetOpenGLPos() const noexcept { return S3D(x, y, -z); }

    /// (x, y, -z): this direction under OpenGL's right-handed axes.
    [[nodiscard]] constexpr S3D GetOpenGL() const noexcept { return GetOpenGLPos(); }

    /// A copy of length 1. A vector whose length is exactly 0 is returned as it is. Squares are
    /// floats: a component beyond about 1.8e19 gives the zero vector, and one below about 1e-23
    /// counts as 0.
    [[nodiscard]] S3D GetNormalize() const noexcept
    {
        const float length = Length();
        return length == 0.0f ? *this : *this * (1.0f / length);
    }

    /// Scales to length 1 in place and returns itself. A vector whose length is exactly 0 stays.
    S3D& Normalize() noexcept { return *this = GetNormalize(); }

    /// The axis (of length 1) and the angle (radians, 0 to pi) that turn one unit vector into
    /// another; neither input is normalised here. The axis is always written. False when the two
    /// point the same way: their dot product is 1 or more, as it is by rounding for less than about
    /// 3e-4 radians, and the angle is unwritten. For opposite vectors the result is true with the
    /// angle pi, but the axis is (0, 0, 0), since every perpendicular would do: the caller picks
    /// one. A dot product that rounding took below -1 gives true and a NaN angle.
    [[nodiscard]] static bool
    CalcRotateAxisAndAngle(S3D& axis, float& angle, const S3D& from, const S3D& to) noexcept;

    /// Each component from radians to degrees: (c * 180) / pi.
    [[nodiscard]] constexpr S3D GetRadToDeg() const noexcept
    {
        return S3D(math3d::RadToDeg(x), math3d::RadToDeg(y), math3d::RadToDeg(z));
    }

    /// Each component from degrees to radians: (c * pi) / 180.
    [[nodiscard]] constexpr S3D GetDegToRad() const noexcept
    {
        return S3D(math3d::DegToRad(x), math3d::DegToRad(y), math3d::DegToRad(z));
    }
};

/// Each component of the vector times the factor.
[[nodiscard]] constexpr S3D operator*(float factor, const S3D& vector) noexcept
{
    return vector * factor;
}

// SMatrix.h defines the members that take a matrix, for which it needs both types.
#include "Independent/Math3D/SMatrix.h"
