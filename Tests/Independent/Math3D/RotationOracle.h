#pragma once

#include <algorithm>
#include <cmath>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"

/// The same mathematics in double precision by another library, to compare single-precision results
/// with. Matrices keep this library's convention: rows are the images of the axes, vectors stand on
/// the left.

/// Passes when no element of two Eigen matrices differs by more than the tolerance.
#define EXPECT_CLOSE(expected, actual, tolerance) \
    EXPECT_PRED_FORMAT3(mathtest::IsClose, expected, actual, tolerance)
#define ASSERT_CLOSE(expected, actual, tolerance) \
    ASSERT_PRED_FORMAT3(mathtest::IsClose, expected, actual, tolerance)

namespace mathtest
{

/// The circle constant in double precision.
inline constexpr double PiDouble = 3.14159265358979323846;

/// The largest relative error of one rounding to a float.
inline constexpr double UnitRoundoff = 0x1p-24;

template <typename Expected, typename Actual>
testing::AssertionResult IsClose(
    const char* expectedText,
    const char* actualText,
    const char*,
    const Eigen::MatrixBase<Expected>& expected,
    const Eigen::MatrixBase<Actual>& actual,
    double tolerance)
{
    const double difference = (expected - actual).cwiseAbs().maxCoeff();
    if (actual.allFinite() && difference <= tolerance)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << actualText << " is\n"
           << actual << "\nbut " << expectedText << " is\n"
           << expected << "\nThey differ by " << difference << ", more than " << tolerance << "\n";
}

inline Eigen::RowVector3d ToDouble(const S3D& vector)
{
    return Eigen::RowVector3f(vector.x, vector.y, vector.z).cast<double>();
}

inline Eigen::Matrix4d ToDouble(const SMatrix& matrix)
{
    return Eigen::Map<const Eigen::Matrix<float, 4, 4, Eigen::RowMajor>>(&matrix.m[0][0])
        .cast<double>();
}

inline Eigen::Quaterniond ToDouble(const SQuaternion& quaternion)
{
    return Eigen::Quaternionf(quaternion.w, quaternion.x, quaternion.y, quaternion.z)
        .cast<double>();
}

/// The rotation part.
inline Eigen::Matrix3d ToRotation(const SMatrix& matrix)
{
    return ToDouble(matrix).topLeftCorner<3, 3>();
}

inline Eigen::Matrix3d ToRotation(const SQuaternion& quaternion)
{
    return ToDouble(quaternion).normalized().toRotationMatrix().transpose();
}

/// The rotation about an axis of length 1.
inline Eigen::Matrix3d RotateAbout(const Eigen::Vector3d& axis, double radians)
{
    return Eigen::AngleAxisd(radians, axis).toRotationMatrix().transpose();
}

inline Eigen::Matrix3d Pitch(double radians)
{
    return RotateAbout(Eigen::Vector3d::UnitX(), radians);
}

inline Eigen::Matrix3d Heading(double radians)
{
    return RotateAbout(Eigen::Vector3d::UnitY(), radians);
}

inline Eigen::Matrix3d Bank(double radians)
{
    return RotateAbout(Eigen::Vector3d::UnitZ(), radians);
}

/// A rotation and a translation as a matrix.
inline Eigen::Matrix4d ToRigid(const Eigen::Matrix3d& rotation, const S3D& translation)
{
    Eigen::Matrix4d matrix = Eigen::Matrix4d::Identity();
    matrix.topLeftCorner<3, 3>() = rotation;
    matrix.block<1, 3>(3, 0) = ToDouble(translation);
    return matrix;
}

/// The angle of the rotation that leads from one rotation to the other, in radians.
inline double AngleBetween(const SQuaternion& a, const SQuaternion& b)
{
    const Eigen::Quaterniond difference =
        ToDouble(a).normalized().conjugate() * ToDouble(b).normalized();
    return 2.0 * std::atan2(difference.vec().norm(), std::abs(difference.w()));
}

/// The angle of the rotation that leads from one rotation matrix to the other, in radians: for a
/// small angle a the elements differ by sqrt(2) * 2 * sin(a / 2) in the Frobenius norm.
inline double AngleBetween(const Eigen::Matrix3d& a, const Eigen::Matrix3d& b)
{
    return 2.0 * std::asin(std::min(1.0, (a - b).norm() / std::sqrt(8.0)));
}

/// A random rotation, every one as likely as another, rounded to floats of length 1.
inline SQuaternion CreateUnitQuaternion(CRandom& random)
{
    Eigen::Vector4d q;
    do
    {
        for (double& component : q)
            component = random.BetweenDouble(-1.0, 1.0);
    } while (q.norm() > 1.0 || q.norm() < 0.1);
    const Eigen::Vector4f rounded = q.normalized().cast<float>();
    return SQuaternion(rounded[0], rounded[1], rounded[2], rounded[3]);
}

/// A random direction, rounded to floats of length 1.
inline S3D CreateDirection(CRandom& random)
{
    Eigen::Vector3d direction;
    do
    {
        for (double& component : direction)
            component = random.BetweenDouble(-1.0, 1.0);
    } while (direction.norm() > 1.0 || direction.norm() < 0.1);
    const Eigen::Vector3f rounded = direction.normalized().cast<float>();
    return S3D(rounded[0], rounded[1], rounded[2]);
}

} // namespace mathtest
