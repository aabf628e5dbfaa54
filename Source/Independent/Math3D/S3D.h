#pragma once

#include "Independent/Math3D/Scalar.h"

#include <cmath>

struct SMatrix;

/// A vector, point or scale of three floats. Comparisons are exact; no function uses an epsilon
/// unless it says so. The members that take a matrix need SMatrix.h, where the conventions of
/// matrices stand.
struct S3D
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    /// (0, 0, 0).
    constexpr S3D() = default;

    /// (newX, newY, newZ).
    constexpr S3D(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}

    /// True when all three components are equal.
    constexpr bool operator==(const S3D& other) const
    {
        return x == other.x && y == other.y && z == other.z;
    }

    /// True when any component differs.
    constexpr bool operator!=(const S3D& other) const { return !(*this == other); }

    /// Strict lexicographic order: x decides unless equal, then y, then z.
    constexpr bool operator<(const S3D& other) const
    {
        if (x != other.x)
            return x < other.x;
        if (y != other.y)
            return y < other.y;
        return z < other.z;
    }

    /// Strict lexicographic order: x decides unless equal, then y, then z.
    constexpr bool operator>(const S3D& other) const { return other < *this; }

    /// Adds component by component.
    S3D& operator+=(const S3D& other)
    {
        x += other.x;
        y += other.y;
        z += other.z;
        return *this;
    }

    /// Subtracts component by component.
    S3D& operator-=(const S3D& other)
    {
        x -= other.x;
        y -= other.y;
        z -= other.z;
        return *this;
    }

    /// Multiplies component by component.
    S3D& operator*=(const S3D& other)
    {
        x *= other.x;
        y *= other.y;
        z *= other.z;
        return *this;
    }

    /// Multiplies each component by the factor.
    S3D& operator*=(float factor)
    {
        x *= factor;
        y *= factor;
        z *= factor;
        return *this;
    }

    /// Multiplies each component by 1 / divisor, which is formed once. The last bit may differ from
    /// that of operator/. A divisor of 0 gives infinities or NaN.
    S3D& operator/=(float divisor) { return *this *= 1.0f / divisor; }

    /// The sum, component by component.
    constexpr S3D operator+(const S3D& other) const
    {
        return S3D(x + other.x, y + other.y, z + other.z);
    }

    /// The difference, component by component.
    constexpr S3D operator-(const S3D& other) const
    {
        return S3D(x - other.x, y - other.y, z - other.z);
    }

    /// The product, component by component.
    constexpr S3D operator*(const S3D& other) const
    {
        return S3D(x * other.x, y * other.y, z * other.z);
    }

    /// Each component times the factor.
    constexpr S3D operator*(float factor) const { return S3D(x * factor, y * factor, z * factor); }

    /// Each component divided by the divisor. A divisor of 0 gives infinities or NaN.
    constexpr S3D operator/(float divisor) const
    {
        return S3D(x / divisor, y / divisor, z / divisor);
    }

    /// (-x, -y, -z).
    constexpr S3D operator-() const { return S3D(-x, -y, -z); }

    /// Transforms the point (x, y, z, 1) in place and divides by the resulting w as operator* does,
    /// except that a w of exactly 0 leaves the vector as it was.
    S3D& operator*=(const SMatrix& matrix);

    /// The point (x, y, z, 1) times the matrix. The first three components of the result are
    /// multiplied by 1 / w, unless w is exactly 1 or exactly 0.
    S3D operator*(const SMatrix& matrix) const;

    /// The direction (x, y, z) times the upper-left 3x3 of the matrix: rotated and scaled, neither
    /// moved nor divided.
    S3D MulMatrixRot(const SMatrix& matrix) const;

    /// x, y, z for the index 0, 1, 2. Any other index fails an assertion in every build type and
    /// ends the program.
    float operator[](unsigned long index) const;

    /// Assigns all three components.
    void Set(float newX, float newY, float newZ) { *this = S3D(newX, newY, newZ); }

    /// (x, 0, z): the projection onto the ground plane.
    constexpr S3D GetXZOnly() const { return S3D(x, 0.0f, z); }

    /// The Euclidean length, sqrt(x*x + y*y + z*z).
    float Length() const { return std::sqrt(Length2()); }

    /// The squared length, x*x + y*y + z*z.
    constexpr float Length2() const { return x * x + y * y + z * z; }

    /// The Euclidean distance of two points.
    static float Distance(const S3D& a, const S3D& b) { return (a - b).Length(); }

    /// The squared distance of two points.
    static constexpr float Distance2(const S3D& a, const S3D& b) { return (a - b).Length2(); }

    /// a - b.
    static constexpr S3D Sub(const S3D& a, const S3D& b) { return a - b; }

    /// The cross product a x b.
    static constexpr S3D CrossProduct(const S3D& a, const S3D& b)
    {
        return S3D(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }

    /// The dot product a . b.
    static constexpr float DotProduct(const S3D& a, const S3D& b)
    {
        return a.x * b.x + a.y * b.y + a.z * b.z;
    }

    /// (x, y, -z): this position under OpenGL's right-handed axes.
    constexpr S3D GetOpenGLPos() const { return S3D(x, y, -z); }

    /// (x, y, -z): this direction under OpenGL's right-handed axes.
    constexpr S3D GetOpenGL() const { return GetOpenGLPos(); }

    /// A copy of length 1. A vector whose length is exactly 0 is returned as it is.
    S3D GetNormalize() const
    {
        const float length = Length();
        return length == 0.0f ? *this : *this * (1.0f / length);
    }

    /// Scales to length 1 in place and returns itself. A vector whose length is exactly 0 stays.
    S3D& Normalize() { return *this = GetNormalize(); }

    /// The axis (of length 1) and the angle (radians, 0 to pi) that turn one unit vector into
    /// another; neither input is normalised here. The axis is always written. False when the two
    /// point the same way: the angle is then unwritten (dot product of 1 or more) or written and
    /// below 1e-6. For opposite vectors the result is true with the angle pi, but the axis is
    /// (0, 0, 0), since every perpendicular would do: the caller picks one. A dot product that
    /// rounding took below -1 gives true and a NaN angle.
    static bool CalcRotateAxisAndAngle(S3D& axis, float& angle, const S3D& from, const S3D& to);

    /// Each component from radians to degrees: (c * 180) / pi.
    constexpr S3D GetRadToDeg() const
    {
        return S3D(math3d::RadToDeg(x), math3d::RadToDeg(y), math3d::RadToDeg(z));
    }

    /// Each component from degrees to radians: (c * pi) / 180.
    constexpr S3D GetDegToRad() const
    {
        return S3D(math3d::DegToRad(x), math3d::DegToRad(y), math3d::DegToRad(z));
    }
};

/// Each component of the vector times the factor.
constexpr S3D operator*(float factor, const S3D& vector)
{
    return vector * factor;
}
