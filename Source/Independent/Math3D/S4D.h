#pragma once

#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SColor.h"

struct SMatrix;

/// A homogeneous vector of four floats. The product with a matrix needs SMatrix.h.
struct S4D
{
    float x;
    float y;
    float z;
    float w;

    /// Leaves all four components uninitialised.
    S4D() = default;

    /// (newX, newY, newZ, newW).
    constexpr S4D(float newX, float newY, float newZ, float newW)
        : x(newX)
        , y(newY)
        , z(newZ)
        , w(newW)
    {
    }

    /// The point (x, y, z, 1).
    constexpr S4D(const S3D& point) : S4D(point.x, point.y, point.z, 1.0f) {}

    /// The sum, component by component.
    constexpr S4D operator+(const S4D& other) const
    {
        return S4D(x + other.x, y + other.y, z + other.z, w + other.w);
    }

    /// The row vector (x, y, z, w) times the matrix, without a division.
    S4D operator*(const SMatrix& matrix) const;

    /// x, y, z, w for the index 0 to 3. Any other index, a negative one too, gives x.
    float& operator[](int index)
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
    const float& operator[](int index) const { return const_cast<S4D&>(*this)[index]; }

    /// Assigns all four components.
    void Set(float newX, float newY, float newZ, float newW)
    {
        *this = S4D(newX, newY, newZ, newW);
    }

    /// The point (x, y, z) multiplied by 1 / w, or as it is when w is exactly 0.
    constexpr S3D GetS3D() const
    {
        return w == 0.0f ? GetS3DNotDivideW() : GetS3DNotDivideW() * (1.0f / w);
    }

    /// (x, y, z) as they are.
    constexpr S3D GetS3DNotDivideW() const { return S3D(x, y, z); }

    /// The colour (r, g, b, a) = (x, y, z, w).
    constexpr SColor GetSColor() const { return SColor(x, y, z, w); }
};
