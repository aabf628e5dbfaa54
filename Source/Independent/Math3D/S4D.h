#pragma once

#include "Independent/Math3D/SColor.h"

struct S3D;
struct SMatrix;

/// A homogeneous vector of four floats.
struct S4D
{
    float x;
    float y;
    float z;
    float w;

    /// Leaves all four components uninitialised.
    S4D() = default;

    /// (newX, newY, newZ, newW).
    constexpr S4D(float newX, float newY, float newZ, float newW) noexcept
        : x(newX)
        , y(newY)
        , z(newZ)
        , w(newW)
    {
    }

    /// The point (x, y, z, 1).
    constexpr S4D(const S3D& point) noexcept;

    /// The sum, component by component.
    [[nodiscard]] constexpr S4D operator+(const S4D& other) const noexcept
    {
        return S4D(x + other.x, y + other.y, z + other.z, w + other.w);
    }

    /// The row vector (x, y, z, w) times the matrix, without a division.
    [[nodiscard]] constexpr S4D operator*(const SMatrix& matrix) const noexcept;

    /// x, y, z, w for the index 0 to 3. Any other index, a negative one too, gives x.
    [[nodiscard]] constexpr float& operator[](int index) noexcept
    {
        switch (index)
        {
        case 1:
            return y;
        case 2:
            return z;
        case 3:
            return w;
        default:
            return x;
        }
    }

    /// x, y, z, w for the index 0 to 3. Any other index, a negative one too, gives x.
    [[nodiscard]] constexpr const float& operator[](int index) const noexcept
    {
        return const_cast<S4D&>(*this)[index];
    }

    /// Assigns all four components.
    constexpr void Set(float newX, float newY, float newZ, float newW) noexcept
    {
        *this = S4D(newX, newY, newZ, newW);
    }

    /// The point (x, y, z) multiplied by 1 / w, or as it is when w is exactly 0.
    [[nodiscard]] constexpr S3D GetS3D() const noexcept;

    /// (x, y, z) as they are.
    [[nodiscard]] constexpr S3D GetS3DNotDivideW() const noexcept;

    /// The colour (r, g, b, a) = (x, y, z, w).
    [[nodiscard]] constexpr SColor GetSColor() const noexcept { return SColor(x, y, z, w); }
};

// S3D.h leads back here by way of the matrix, so the members that need it stand after the type.
#include "Independent/Math3D/S3D.h"

constexpr S4D::S4D(const S3D& point) noexcept : S4D(point.x, point.y, point.z, 1.0f) {}

constexpr S3D S4D::GetS3D() const noexcept
{
    return w == 0.0f ? GetS3DNotDivideW() : GetS3DNotDivideW() * (1.0f / w);
}

constexpr S3D S4D::GetS3DNotDivideW() const noexcept
{
    return S3D(x, y, z);
}
