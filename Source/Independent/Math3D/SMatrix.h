#pragma once

#include <cmath>

#include "Independent/Math3D/Float4.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/S4D.h"
#include "Independent/Math3D/SQuaternion.h"

/// A 4x4 matrix of floats for affine and projective transforms.
///
/// The conventions of the whole library:
/// - Vectors are rows, written on the left: a point is (x, y, z, 1) * M.
/// - A * B applies A first and B second. Scale, rotation and position combine as S * R * T.
/// - m[row][column], stored row by row. Row 3 holds the translation; rows 0, 1 and 2 hold the
///   images of the X, Y and Z axis, that is rotation and scale.
/// - The axes are left-handed: X right, Y up, Z forward.
/// - Heading H turns about Y, pitch P about X, bank B about Z. By 90 degrees heading takes +Z to
///   +X, pitch +Y to +Z, bank +X to +Y.
///
/// A point turned by 90 degrees of heading, then moved up by 2:
///
///     const SMatrix world = SMatrix::CreateRotH(90.0f) * SMatrix::CreateMove(S3D(0, 2, 0));
///     const S3D moved = S3D(0, 0, 1) * world; // about (1, 2, 0)
struct SMatrix
{
    float m[4][4];

    /// The identity.
    constexpr SMatrix() noexcept
        : SMatrix(
              1.0f,
              0.0f,
              0.0f,
              0.0f, //
              0.0f,
              1.0f,
              0.0f,
              0.0f, //
              0.0f,
              0.0f,
              1.0f,
              0.0f, //
              0.0f,
              0.0f,
              0.0f,
              1.0f)
    {
    }

    /// Leaves all elements uninitialised, whatever the argument: for results filled at once.
    explicit SMatrix(int) noexcept {}

    /// Copies 16 floats, row by row.
    constexpr explicit SMatrix(const float* elements) noexcept
        : m{{elements[0], elements[1], elements[2], elements[3]},
            {elements[4], elements[5], elements[6], elements[7]},
            {elements[8], elements[9], elements[10], elements[11]},
            {elements[12], elements[13], elements[14], elements[15]}}
    {
    }

    /// The 16 elements, row by row.
    constexpr SMatrix(
        float m00,
        float m01,
        float m02,
        float m03,
        float m10,
        float m11,
        float m12,
        float m13,
        float m20,
        float m21,
        float m22,
        float m23,
        float m30,
        float m31,
        float m32,
        float m33) noexcept
        : m{{m00, m01, m02, m03}, {m10, m11, m12, m13}, {m20, m21, m22, m23}, {m30, m31, m32, m33}}
    {
    }

    /// Assigns the 16 elements, row by row.
    constexpr void
    Set(float m00,
        float m01,
        float m02,
        float m03,
        float m10,
        float m11,
        float m12,
        float m13,
        float m20,
        float m21,
        float m22,
        float m23,
        float m30,
        float m31,
        float m32,
        float m33) noexcept
    {
        *this =
            SMatrix(m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33);
    }

    /// True when all 16 elements are equal (exact comparison).
    [[nodiscard]] constexpr bool operator==(const SMatrix& other) const noexcept
    {
        for (int row = 0; row < 4; ++row)
        {
            for (int column = 0; column < 4; ++column)
                if (m[row][column] != other.m[row][column])
                    return false;
        }
        return true;
    }

    /// True when any element differs (exact comparison).
    [[nodiscard]] constexpr bool operator!=(const SMatrix& other) const noexcept
    {
        return !(*this == other);
    }

    /// Becomes this * other: this transform first, then the other.
    SMatrix& operator*=(const SMatrix& other) noexcept;

    /// Becomes this * other: this transform first, then the other.
    void MulMatrix(const SMatrix& other) noexcept { *this *= other; }

    /// Sets the identity.
    constexpr void Identity() noexcept { *this = SMatrix(); }

    /// Transposes in place: rows become columns.
    constexpr void Trans() noexcept
    {
        Set(m[0][0], m[1][0], m[2][0], m[3][0], //
            m[0][1], m[1][1], m[2][1], m[3][1], //
            m[0][2], m[1][2], m[2][2], m[3][2], //
            m[0][3], m[1][3], m[2][3], m[3][3]);
    }

    /// Becomes GetInverse().
    void Inverse() noexcept { *this = GetInverse(); }

    /// The inverse: the adjugate (the transposed matrix of cofactors) times 1 / determinant. A
    /// singular matrix is not detected. Where its determinant comes out as exactly 0, as it does
    /// with a row of zeros, every element is infinite or NaN. Where rounding leaves another number,
    /// as it mostly does with two equal rows, the elements are finite and mean nothing.
    [[nodiscard]] SMatrix GetInverse() const noexcept;

    /// The determinant a * d - c * b of the matrix ((a, b), (c, d)).
    [[nodiscard]] static constexpr float det2x2(float a, float b, float c, float d) noexcept
    {
        return a * d - c * b;
    }

    /// The determinant of the matrix ((a1, a2, a3), (b1, b2, b3), (c1, c2, c3)), expanded along its
    /// first column.
    [[nodiscard]] static constexpr float det3x3(
        float a1,
        float a2,
        float a3,
        float b1,
        float b2,
        float b3,
        float c1,
        float c2,
        float c3) noexcept
    {
        return a1 * det2x2(b2, b3, c2, c3) - b1 * det2x2(a2, a3, c2, c3) +
               c1 * det2x2(a2, a3, b2, b3);
    }

    /// The translation: the first three elements of row 3.
    [[nodiscard]] constexpr S3D GetMove() const noexcept { return S3D(m[3][0], m[3][1], m[3][2]); }

    /// The image of the X axis: the first three elements of row 0.
    [[nodiscard]] constexpr S3D GetXVector() const noexcept
    {
        return S3D(m[0][0], m[0][1], m[0][2]);
    }

    /// The image of the Y axis: the first three elements of row 1.
    [[nodiscard]] constexpr S3D GetYVector() const noexcept
    {
        return S3D(m[1][0], m[1][1], m[1][2]);
    }

    /// The image of the Z axis: the first three elements of row 2.
    [[nodiscard]] constexpr S3D GetZVector() const noexcept
    {
        return S3D(m[2][0], m[2][1], m[2][2]);
    }

    /// The whole row 0.
    [[nodiscard]] constexpr S4D GetXVector4() const noexcept
    {
        return S4D(m[0][0], m[0][1], m[0][2], m[0][3]);
    }

    /// The whole row 1.
    [[nodiscard]] constexpr S4D GetYVector4() const noexcept
    {
        return S4D(m[1][0], m[1][1], m[1][2], m[1][3]);
    }

    /// The whole row 2.
    [[nodiscard]] constexpr S4D GetZVector4() const noexcept
    {
        return S4D(m[2][0], m[2][1], m[2][2], m[2][3]);
    }

    /// The scale along X: the length of GetXVector(), never negative.
    [[nodiscard]] float GetScaleX() const noexcept { return GetXVector().Length(); }

    /// The translation by a vector.
    [[nodiscard]] static constexpr SMatrix CreateMove(const S3D& translation) noexcept
    {
        return SMatrix(
            1.0f, 0.0f, 0.0f, 0.0f, //
            0.0f, 1.0f, 0.0f, 0.0f, //
            0.0f, 0.0f, 1.0f, 0.0f, //
            translation.x, translation.y, translation.z, 1.0f);
    }

    /// The scale by a factor per axis.
    [[nodiscard]] static constexpr SMatrix CreateScale(const S3D& scale) noexcept
    {
        return SMatrix(
            scale.x, 0.0f, 0.0f, 0.0f, //
            0.0f, scale.y, 0.0f, 0.0f, //
            0.0f, 0.0f, scale.z, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f);
    }

    /// Overwrites the whole matrix with the heading (a rotation about Y) of an angle in radians.
    void SetRotHRad(float radians) noexcept
    {
        const float c = std::cos(radians);
        const float s = std::sin(radians);
        Set(c, 0.0f, -s, 0.0f,      //
            0.0f, 1.0f, 0.0f, 0.0f, //
            s, 0.0f, c, 0.0f,       //
            0.0f, 0.0f, 0.0f, 1.0f);
    }

    /// Overwrites the whole matrix with the pitch (a rotation about X) of an angle in radians.
    void SetRotPRad(float radians) noexcept
    {
        const float c = std::cos(radians);
        const float s = std::sin(radians);
        Set(1.0f, 0.0f, 0.0f, 0.0f, //
            0.0f, c, s, 0.0f,       //
            0.0f, -s, c, 0.0f,      //
            0.0f, 0.0f, 0.0f, 1.0f);
    }

    /// Overwrites the whole matrix with the bank (a rotation about Z) of an angle in radians.
    void SetRotBRad(float radians) noexcept
    {
        const float c = std::cos(radians);
        const float s = std::sin(radians);
        Set(c, s, 0.0f, 0.0f,       //
            -s, c, 0.0f, 0.0f,      //
            0.0f, 0.0f, 1.0f, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f);
    }

    /// As SetRotHRad with an angle in degrees.
    void SetRotH(float degrees) noexcept { SetRotHRad(math3d::DegToRad(degrees)); }

    /// As SetRotPRad with an angle in degrees.
    void SetRotP(float degrees) noexcept { SetRotPRad(math3d::DegToRad(degrees)); }

    /// As SetRotBRad with an angle in degrees.
    void SetRotB(float degrees) noexcept { SetRotBRad(math3d::DegToRad(degrees)); }

    /// The heading (a rotation about Y) of an angle in degrees.
    [[nodiscard]] static SMatrix CreateRotH(float degrees) noexcept
    {
        return CreateRotHRad(math3d::DegToRad(degrees));
    }

    /// The pitch (a rotation about X) of an angle in degrees.
    [[nodiscard]] static SMatrix CreateRotP(float degrees) noexcept
    {
        return CreateRotPRad(math3d::DegToRad(degrees));
    }

    /// The bank (a rotation about Z) of an angle in degrees.
    [[nodiscard]] static SMatrix CreateRotB(float degrees) noexcept
    {
        return CreateRotBRad(math3d::DegToRad(degrees));
    }

    /// The heading (a rotation about Y) of an angle in radians.
    [[nodiscard]] static SMatrix CreateRotHRad(float radians) noexcept
    {
        SMatrix rotation(0);
        rotation.SetRotHRad(radians);
        return rotation;
    }

    /// The pitch (a rotation about X) of an angle in radians.
    [[nodiscard]] static SMatrix CreateRotPRad(float radians) noexcept
    {
        SMatrix rotation(0);
        rotation.SetRotPRad(radians);
        return rotation;
    }

    /// The bank (a rotation about Z) of an angle in radians.
    [[nodiscard]] static SMatrix CreateRotBRad(float radians) noexcept
    {
        SMatrix rotation(0);
        rotation.SetRotBRad(radians);
        return rotation;
    }

    /// The rotation about an axis through the origin by an angle in radians (Rodrigues' formula).
    /// The axis must have length 1; it is not normalised here.
    [[nodiscard]] static SMatrix CreateRotAxis(const S3D& axis, float radians) noexcept;

    /// The look-at matrix of a viewer at eye who looks at another point, with up (of any length)
    /// upward: rows 0, 1 and 2 are the viewer's unit axes x (right), y (up) and z (forward), row 3
    /// is (-x.eye, -y.eye, -z.eye, 1).
    ///
    /// The axes stand in the rows, so the rotation part is the transpose of the one that takes the
    /// world into view space with row vectors; only the translation is that of a view matrix.
    /// math3d::CCamera::GetMatrix gives a true view matrix. When eye and at are equal, or up is
    /// parallel to the view, the axes that cannot be formed are zero.
    [[nodiscard]] static SMatrix
    CreateLookAt(const S3D& eye, const S3D& at, const S3D& up) noexcept;

    /// The matrix of three axes in the rows 0, 1 and 2, without translation.
    [[nodiscard]] static constexpr SMatrix
    CreateXYZVector(const S3D& x, const S3D& y, const S3D& z) noexcept
    {
        return SMatrix(
            x.x, x.y, x.z, 0.0f, //
            y.x, y.y, y.z, 0.0f, //
            z.x, z.y, z.z, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f);
    }

    /// The rotation part as a quaternion, the inverse of SQuaternion::GetMatrix up to the sign of
    /// the whole. The upper-left 3x3 must be orthonormal (no scale) and m33 1; the result is not
    /// normalised.
    [[nodiscard]] SQuaternion GetQuaternion() const noexcept;

    /// Angles (x, y, z) in radians that make P(x) * H(y) * B(z) the rotation part of this matrix;
    /// y is within -pi/2..pi/2. The upper-left 3x3 must be orthonormal.
    ///
    /// Where y is 90 degrees exactly (m02 = -1), x is 0 and z alone gives the rotation back. Where
    /// y is -90 degrees exactly (m02 = 1), x is 0 too, but z is that of a matrix with m11 negated:
    /// the angles do not give the rotation back. Close to either pole x and z come from elements
    /// that are mostly rounding error, and neither need the angles give the rotation back there.
    ///
    /// Where rounding took m02 beyond -1..1, y is NaN, and x and z are those of any other place. A
    /// caller who wants the pole instead clamps m02 to -1..1 first. This holds for the other three
    /// orders with their element as well.
    [[nodiscard]] S3D GetEulerRadXYZ() const noexcept;

    /// Angles (x, y, z) in radians that make H(y) * P(x) * B(z) the rotation part of this matrix; x
    /// is within -pi/2..pi/2. The upper-left 3x3 must be orthonormal; the middle angle comes from
    /// m12. Where x is 90 or -90 degrees exactly, z is 0. The angles give the rotation back
    /// wherever m12 is within -1..1 (beyond, x is NaN), within 0.001 close to the poles, where asin
    /// is steep.
    [[nodiscard]] S3D GetEulerRadYXZ() const noexcept;

    /// Angles (x, y, z) in radians that make B(z) * P(x) * H(y) the rotation part of this matrix; x
    /// is within -pi/2..pi/2. The upper-left 3x3 must be orthonormal; the middle angle comes from
    /// m21. Where x is 90 or -90 degrees exactly, z is 0. The angles give the rotation back
    /// wherever m21 is within -1..1 (beyond, x is NaN), within 0.001 close to the poles, where asin
    /// is steep.
    [[nodiscard]] S3D GetEulerRadZXY() const noexcept;

    /// Angles (x, y, z) in radians that make B(z) * H(y) * P(x) the rotation part of this matrix;
    /// y is within -pi/2..pi/2. The upper-left 3x3 must be orthonormal; the middle angle
    /// comes from m20. There is no special case at the poles: where y is near 90 or -90
    /// degrees, x and z come from elements that are mostly rounding error, and the angles need not
    /// give the rotation back.
    [[nodiscard]] S3D GetEulerRadZYX() const noexcept;

    /// A copy with m02, m12, m20, m21 and m32 negated and all else unchanged. For an affine matrix
    /// this is F * M * F with F = diag(1, 1, -1, 1): the same transform under OpenGL's right-handed
    /// axes.
    [[nodiscard]] constexpr SMatrix GetOpenGLMatrix() const noexcept
    {
        SMatrix result = *this;
        result.m[0][2] = -m[0][2];
        result.m[1][2] = -m[1][2];
        result.m[2][0] = -m[2][0];
        result.m[2][1] = -m[2][1];
        result.m[3][2] = -m[3][2];
        return result;
    }
};

/// The product: the transform a first, then b. Each element is
/// a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j] + a[i][3] * b[3][j], summed in this
/// order.
[[nodiscard]] inline SMatrix operator*(const SMatrix& a, const SMatrix& b) noexcept
{
    using math3d::detail::Float4;
    using math3d::detail::LoadFloat4;
    using math3d::detail::Shuffle;
    const Float4 b0 = LoadFloat4(b.m[0]);
    const Float4 b1 = LoadFloat4(b.m[1]);
    const Float4 b2 = LoadFloat4(b.m[2]);
    const Float4 b3 = LoadFloat4(b.m[3]);
    SMatrix product(0);
    for (int row = 0; row < 4; ++row)
    {
        const Float4 factors = LoadFloat4(a.m[row]);
        const Float4 sum = Shuffle<0, 0, 0, 0>(factors) * b0 + Shuffle<1, 1, 1, 1>(factors) * b1 +
                           Shuffle<2, 2, 2, 2>(factors) * b2 + Shuffle<3, 3, 3, 3>(factors) * b3;
        math3d::detail::StoreFloat4(product.m[row], sum);
    }
    return product;
}

inline SMatrix& SMatrix::operator*=(const SMatrix& other) noexcept
{
    return *this = *this * other;
}

inline SQuaternion SMatrix::GetQuaternion() const noexcept
{
    // Four times the square of w, and further down of the largest of x, y and z: the division is
    // never by a small number.
    const float trace = m[0][0] + m[1][1] + m[2][2] + m[3][3];
    if (trace >= 1.0f)
    {
        const float r = 2.0f * std::sqrt(trace);
        return SQuaternion(
            (m[1][2] - m[2][1]) / r, (m[2][0] - m[0][2]) / r, (m[0][1] - m[1][0]) / r, r / 4.0f);
    }
    if (m[2][2] > (m[0][0] > m[1][1] ? m[0][0] : m[1][1]))
    {
        const float r = 2.0f * std::sqrt(m[2][2] - m[0][0] - m[1][1] + 1.0f);
        return SQuaternion(
            (m[2][0] + m[0][2]) / r, (m[2][1] + m[1][2]) / r, r / 4.0f, (m[0][1] - m[1][0]) / r);
    }
    if (m[0][0] > m[1][1])
    {
        const float r = 2.0f * std::sqrt(m[0][0] - m[1][1] - m[2][2] + 1.0f);
        return SQuaternion(
            r / 4.0f, (m[0][1] + m[1][0]) / r, (m[0][2] + m[2][0]) / r, (m[1][2] - m[2][1]) / r);
    }
    const float r = 2.0f * std::sqrt(m[1][1] - m[2][2] - m[0][0] + 1.0f);
    return SQuaternion(
        (m[1][0] + m[0][1]) / r, r / 4.0f, (m[1][2] + m[2][1]) / r, (m[2][0] - m[0][2]) / r);
}

// The members of the vectors and of the quaternion that need the matrix.

constexpr S4D S4D::operator*(const SMatrix& matrix) const noexcept
{
    const float(&m)[4][4] = matrix.m;
    return S4D(
        x * m[0][0] + y * m[1][0] + z * m[2][0] + w * m[3][0],
        x * m[0][1] + y * m[1][1] + z * m[2][1] + w * m[3][1],
        x * m[0][2] + y * m[1][2] + z * m[2][2] + w * m[3][2],
        x * m[0][3] + y * m[1][3] + z * m[2][3] + w * m[3][3]);
}

inline S3D S3D::operator*(const SMatrix& matrix) const noexcept
{
    // Element by element, so that over an array the rows are loaded once: the compiler sees that
    // writing a point changes no element of a matrix.
    const auto row = [&matrix](int i) {
        return math3d::detail::Float4{
            matrix.m[i][0], matrix.m[i][1], matrix.m[i][2], matrix.m[i][3]};
    };
    math3d::detail::Float4 product = x * row(0) + y * row(1) + z * row(2) + row(3);

    const float w = product[3];
    if (__builtin_expect(w != 1.0f, false))
        product = product * (1.0f / (w != 0.0f ? w : 1.0f));
    return S3D(product[0], product[1], product[2]);
}

constexpr S3D& S3D::operator*=(const SMatrix& matrix) noexcept
{
    const S4D product = S4D(*this) * matrix;
    if (product.w != 0.0f)
        *this = product.GetS3D();
    return *this;
}

constexpr S3D S3D::MulMatrixRot(const SMatrix& matrix) const noexcept
{
    const float(&m)[4][4] = matrix.m;
    return S3D(
        x * m[0][0] + y * m[1][0] + z * m[2][0], x * m[0][1] + y * m[1][1] + z * m[2][1],
        x * m[0][2] + y * m[1][2] + z * m[2][2]);
}

constexpr SMatrix SQuaternion::GetMatrix() const noexcept
{
    return SMatrix(
        1.0f - 2.0f * (y * y + z * z), 2.0f * (x * y + w * z), 2.0f * (x * z - w * y), 0.0f,
        2.0f * (x * y - w * z), 1.0f - 2.0f * (x * x + z * z), 2.0f * (y * z + w * x), 0.0f,
        2.0f * (x * z + w * y), 2.0f * (y * z - w * x), 1.0f - 2.0f * (x * x + y * y), 0.0f, //
        0.0f, 0.0f, 0.0f, 1.0f);
}
