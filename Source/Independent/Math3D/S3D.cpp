// The range check of S3D::operator[] is documented behaviour and stays in every build type.
#undef NDEBUG

#include "Independent/Math3D/S3D.h"

#include <cassert>

// The assertion's text is a negated string literal, which clang takes for a mistake.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wstring-conversion"
#endif

float S3D::operator[](unsigned long index) const noexcept
{
    switch (index)
    {
    case 0:
        return x;
    case 1:
        return y;
    case 2:
        return z;
    default:
        assert(!"S3D[] out of range");
        return x;
    }
}

bool S3D::CalcRotateAxisAndAngle(S3D& axis, float& angle, const S3D& from, const S3D& to) noexcept
{
    constexpr float smallestAngle = 1e-6f;

    // Taken first, so that the axis may be written over one of the inputs.
    const float dot = DotProduct(from, to);
    axis = CrossProduct(from, to).GetNormalize();
    if (dot >= 1.0f)
        return false;
    angle = std::acos(dot);
    return !(angle < smallestAngle);
}
