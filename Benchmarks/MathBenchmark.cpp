// Measures the 3D math library against GLM and Eigen, each compiled with the same flags and fed
// with the same numbers. Before anything is measured, the three must agree on every result.

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <Eigen/Dense>
#include <Eigen/Geometry>
#include <benchmark/benchmark.h>
#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtx/dual_quaternion.hpp>

#include "Independent/Math3D/CDualQuaternion.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"
#include "Independent/Math3D/SQuaternion.h"
#include "RatioTable.h"

namespace
{

/// Small enough for the first cache, operands and results together.
constexpr std::size_t ItemCount = 64;

using Floats = std::vector<float>;

/// A dual quaternion out of the quaternions that Eigen has.
struct SEigenDualQuaternion
{
    Eigen::Quaternionf real;
    Eigen::Quaternionf dual;
};

SEigenDualQuaternion operator*(const SEigenDualQuaternion& a, const SEigenDualQuaternion& b)
{
    SEigenDualQuaternion product;
    product.real = a.real * b.real;
    product.dual.coeffs() = (a.real * b.dual).coeffs() + (a.dual * b.real).coeffs();
    return product;
}

/// The names of one library's types.
struct SOurTypes
{
    using Matrix = SMatrix;
    using Point = S3D;
    using Quaternion = SQuaternion;
    using DualQuaternion = math3d::CDualQuaternion;
};

struct SGLMTypes
{
    using Matrix = glm::mat4;
    using Point = glm::vec3;
    using Quaternion = glm::quat;
    using DualQuaternion = glm::dualquat;
};

struct SEigenTypes
{
    using Matrix = Eigen::Matrix4f;
    using Point = Eigen::Vector3f;
    using Quaternion = Eigen::Quaternionf;
    using DualQuaternion = SEigenDualQuaternion;
};

/// The operands. A matrix has its sixteen floats in the same order in all libraries: ours stores
/// rows and multiplies row vectors, the others store columns and multiply column vectors, so that
/// our A * B is their B * A.
template <typename Types>
struct SOperands
{
    std::vector<typename Types::Matrix> matricesA;
    std::vector<typename Types::Matrix> matricesB;
    std::vector<typename Types::Point> points;
    std::vector<typename Types::Point> angles;
    std::vector<typename Types::Quaternion> quaternionsA;
    std::vector<typename Types::Quaternion> quaternionsB;
    std::vector<typename Types::DualQuaternion> dualQuaternionsA;
    std::vector<typename Types::DualQuaternion> dualQuaternionsB;
    std::vector<float> weights;
};

S3D Convert(const S3D& value, SOurTypes)
{
    return value;
}

glm::vec3 Convert(const S3D& value, SGLMTypes)
{
    return glm::vec3(value.x, value.y, value.z);
}

Eigen::Vector3f Convert(const S3D& value, SEigenTypes)
{
    return Eigen::Vector3f(value.x, value.y, value.z);
}

SQuaternion Convert(const SQuaternion& value, SOurTypes)
{
    return value;
}

glm::quat Convert(const SQuaternion& value, SGLMTypes)
{
    return glm::quat(value.w, value.x, value.y, value.z);
}

Eigen::Quaternionf Convert(const SQuaternion& value, SEigenTypes)
{
    return Eigen::Quaternionf(value.w, value.x, value.y, value.z);
}

SMatrix Convert(const SMatrix& value, SOurTypes)
{
    return value;
}

glm::mat4 Convert(const SMatrix& value, SGLMTypes)
{
    glm::mat4 matrix;
    for (int row = 0; row < 4; ++row)
        matrix[row] = glm::vec4(value.m[row][0], value.m[row][1], value.m[row][2], value.m[row][3]);
    return matrix;
}

Eigen::Matrix4f Convert(const SMatrix& value, SEigenTypes)
{
    return Eigen::Matrix4f(&value.m[0][0]);
}

template <typename Types>
typename Types::DualQuaternion Convert(const math3d::CDualQuaternion& value, Types types)
{
    return {Convert(value.GetRealPart(), types), Convert(value.GetDualPart(), types)};
}

class CRandom
{
public:
    float Get(float from, float to)
    {
        return std::uniform_real_distribution<float>(from, to)(m_Engine);
    }

    S3D GetVector(float limit)
    {
        const float x = Get(-limit, limit);
        const float y = Get(-limit, limit);
        const float z = Get(-limit, limit);
        return S3D(x, y, z);
    }

    SQuaternion GetQuaternion()
    {
        const S3D vector = GetVector(1.0f);
        return SQuaternion(vector.x, vector.y, vector.z, Get(-1.0f, 1.0f)).GetNormalize();
    }

    /// A node's transform: scale, rotation, position.
    SMatrix GetMatrix()
    {
        const S3D scale = GetVector(0.5f) + S3D(1.0f, 1.0f, 1.0f);
        const SQuaternion rotation = GetQuaternion();
        return SMatrix::CreateScale(scale) * rotation.GetMatrix() *
               SMatrix::CreateMove(GetVector(10.0f));
    }

private:
    std::mt19937 m_Engine{20240607}; // any number, the same in every run
};

template <typename Types>
SOperands<Types> MakeOperands()
{
    constexpr float BelowRightAngle = 1.5f;
    const Types types;
    CRandom random;
    SOperands<Types> operands;
    for (std::size_t i = 0; i < ItemCount; ++i)
    {
        const SQuaternion quaternionA = random.GetQuaternion();
        const SQuaternion quaternionB = random.GetQuaternion();
        operands.matricesA.push_back(Convert(random.GetMatrix(), types));
        operands.matricesB.push_back(Convert(random.GetMatrix(), types));
        operands.points.push_back(Convert(random.GetVector(10.0f), types));
        operands.angles.push_back(Convert(random.GetVector(BelowRightAngle), types));
        operands.quaternionsA.push_back(Convert(quaternionA, types));
        operands.quaternionsB.push_back(Convert(quaternionB, types));
        operands.dualQuaternionsA.push_back(
            Convert(math3d::CDualQuaternion(quaternionA, random.GetVector(10.0f)), types));
        operands.dualQuaternionsB.push_back(
            Convert(math3d::CDualQuaternion(quaternionB, random.GetVector(10.0f)), types));
        operands.weights.push_back(random.Get(0.0f, 1.0f));
    }
    return operands;
}

const SOperands<SOurTypes> OurOperands = MakeOperands<SOurTypes>();
const SOperands<SGLMTypes> GLMOperands = MakeOperands<SGLMTypes>();
const SOperands<SEigenTypes> EigenOperands = MakeOperands<SEigenTypes>();

Floats GetFloats(const S3D& value)
{
    return {value.x, value.y, value.z};
}

Floats GetFloats(const glm::vec3& value)
{
    return {value.x, value.y, value.z};
}

Floats GetFloats(const Eigen::Vector3f& value)
{
    return {value.x(), value.y(), value.z()};
}

template <typename Quaternion>
Floats GetQuaternionFloats(const Quaternion& value)
{
    return {value.x, value.y, value.z, value.w};
}

Floats GetFloats(const SQuaternion& value)
{
    return GetQuaternionFloats(value);
}

Floats GetFloats(const glm::quat& value)
{
    return GetQuaternionFloats(value);
}

Floats GetFloats(const Eigen::Quaternionf& value)
{
    return {value.x(), value.y(), value.z(), value.w()};
}

Floats GetFloats(const SMatrix& value)
{
    return Floats(&value.m[0][0], &value.m[0][0] + 16);
}

Floats GetFloats(const glm::mat4& value)
{
    return Floats(&value[0][0], &value[0][0] + 16);
}

Floats GetFloats(const Eigen::Matrix4f& value)
{
    return Floats(value.data(), value.data() + 16);
}

Floats Join(Floats a, const Floats& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Floats GetFloats(const math3d::CDualQuaternion& value)
{
    return Join(GetFloats(value.GetRealPart()), GetFloats(value.GetDualPart()));
}

template <typename DualQuaternion>
Floats GetFloats(const DualQuaternion& value)
{
    return Join(GetFloats(value.real), GetFloats(value.dual));
}

/// One rotation has two triples of angles and two quaternions. This is the quaternion of w >= 0.
Floats GetRotation(const Floats& angles)
{
    SQuaternion rotation;
    rotation.SetEulerRadXYZ(S3D(angles[0], angles[1], angles[2]));
    return GetFloats(rotation.w < 0.0f ? rotation * -1.0f : rotation);
}

/// Ends the program unless two results agree within rounding.
void CheckAgreement(const char* work, const char* library, const Floats& ours, const Floats& rival)
{
    constexpr float Tolerance = 0.001f;
    bool agrees = ours.size() == rival.size();
    for (std::size_t i = 0; agrees && i < ours.size(); ++i)
        agrees = std::abs(ours[i] - rival[i]) <= Tolerance * (1.0f + std::abs(ours[i]));
    if (!agrees)
    {
        std::fprintf(stderr, "%s: %s gives another result\n", work, library);
        std::exit(1);
    }
}

/// Registers the benchmark of a function that gives the result of an item.
template <typename Function>
void AddOne(const char* work, const char* library, Function function)
{
    benchmark::RegisterBenchmark(
        (std::string(work) + "/" + library).c_str(),
        [function](benchmark::State& state)
        {
            std::vector<decltype(function(0))> results(ItemCount);
            for ([[maybe_unused]] auto iteration : state)
            {
                for (std::size_t i = 0; i < ItemCount; ++i)
                    results[i] = function(i);
                benchmark::DoNotOptimize(results.data());
                benchmark::ClobberMemory();
            }
            state.SetItemsProcessed(state.iterations() * static_cast<long>(ItemCount));
        });
}

/// Registers a work in all three libraries.
template <typename Our, typename GLM, typename EigenFunction, typename Compared>
void Add(const char* work, Our our, GLM glm, EigenFunction eigen, Compared getCompared)
{
    for (std::size_t i = 0; i < ItemCount; ++i)
    {
        const Floats expected = getCompared(GetFloats(our(i)));
        CheckAgreement(work, "GLM", expected, getCompared(GetFloats(glm(i))));
        CheckAgreement(work, "Eigen", expected, getCompared(GetFloats(eigen(i))));
    }
    AddOne(work, benchmarks::Ours, our);
    AddOne(work, "GLM", glm);
    AddOne(work, "Eigen", eigen);
}

template <typename Our, typename GLM, typename EigenFunction>
void Add(const char* work, Our our, GLM glm, EigenFunction eigen)
{
    Add(work, our, glm, eigen, [](const Floats& result) { return result; });
}

void AddMatrixWorks()
{
    const auto& ours = OurOperands;
    const auto& glms = GLMOperands;
    const auto& eigens = EigenOperands;

    Add(
        "matrix product", //
        [a = ours.matricesA.data(), b = ours.matricesB.data()](std::size_t i)
        { return a[i] * b[i]; },
        [a = glms.matricesA.data(), b = glms.matricesB.data()](std::size_t i)
        { return b[i] * a[i]; },
        [a = eigens.matricesA.data(), b = eigens.matricesB.data()](std::size_t i) -> Eigen::Matrix4f
        { return b[i] * a[i]; });

    Add(
        "matrix inverse", //
        [a = ours.matricesA.data()](std::size_t i) { return a[i].GetInverse(); },
        [a = glms.matricesA.data()](std::size_t i) { return glm::inverse(a[i]); },
        [a = eigens.matricesA.data()](std::size_t i) -> Eigen::Matrix4f { return a[i].inverse(); });

    // The rivals divide by w as ours does, so that any matrix may be given.
    Add(
        "points through one matrix", //
        [p = ours.points.data(), m = ours.matricesA.data()](std::size_t i) { return p[i] * *m; },
        [p = glms.points.data(), m = glms.matricesA.data()](std::size_t i)
        {
            const glm::vec4 product = *m * glm::vec4(p[i], 1.0f);
            return glm::vec3(product) / product.w;
        },
        [p = eigens.points.data(), m = eigens.matricesA.data()](std::size_t i) -> Eigen::Vector3f
        { return (*m * p[i].homogeneous()).hnormalized(); });

    // What is enough when the matrix is known to be affine. Ours has no function that relies on it.
    Add(
        "points, rivals without division", //
        [p = ours.points.data(), m = ours.matricesA.data()](std::size_t i) { return p[i] * *m; },
        [p = glms.points.data(), m = glms.matricesA.data()](std::size_t i)
        { return glm::vec3(*m * glm::vec4(p[i], 1.0f)); },
        [p = eigens.points.data(), m = eigens.matricesA.data()](std::size_t i) -> Eigen::Vector3f
        { return (*m * p[i].homogeneous()).head<3>(); });
}

void AddQuaternionWorks()
{
    const auto& ours = OurOperands;
    const auto& glms = GLMOperands;
    const auto& eigens = EigenOperands;

    Add(
        "quaternion product", //
        [a = ours.quaternionsA.data(), b = ours.quaternionsB.data()](std::size_t i)
        { return a[i] * b[i]; },
        [a = glms.quaternionsA.data(), b = glms.quaternionsB.data()](std::size_t i)
        { return a[i] * b[i]; },
        [a = eigens.quaternionsA.data(), b = eigens.quaternionsB.data()](std::size_t i)
        { return a[i] * b[i]; });

    Add(
        "slerp",
        [a = ours.quaternionsA.data(), b = ours.quaternionsB.data(),
         t = ours.weights.data()](std::size_t i) { return a[i].Slerp(b[i], t[i]); },
        [a = glms.quaternionsA.data(), b = glms.quaternionsB.data(),
         t = glms.weights.data()](std::size_t i) { return glm::slerp(a[i], b[i], t[i]); },
        [a = eigens.quaternionsA.data(), b = eigens.quaternionsB.data(),
         t = eigens.weights.data()](std::size_t i) { return a[i].slerp(t[i], b[i]); });

    Add(
        "Euler round trip",
        [angles = ours.angles.data()](std::size_t i)
        {
            SQuaternion rotation;
            rotation.SetEulerRadXYZ(angles[i]);
            return rotation.GetEulerRadXYZ();
        },
        [angles = glms.angles.data()](std::size_t i)
        { return glm::eulerAngles(glm::quat(angles[i])); },
        [angles = eigens.angles.data()](std::size_t i) -> Eigen::Vector3f
        {
            const Eigen::Quaternionf rotation =
                Eigen::AngleAxisf(angles[i].z(), Eigen::Vector3f::UnitZ()) *
                Eigen::AngleAxisf(angles[i].y(), Eigen::Vector3f::UnitY()) *
                Eigen::AngleAxisf(angles[i].x(), Eigen::Vector3f::UnitX());
            return rotation.toRotationMatrix().eulerAngles(2, 1, 0).reverse();
        },
        GetRotation);

    Add(
        "dual quaternion product", //
        [a = ours.dualQuaternionsA.data(), b = ours.dualQuaternionsB.data()](std::size_t i)
        { return a[i] * b[i]; },
        [a = glms.dualQuaternionsA.data(), b = glms.dualQuaternionsB.data()](std::size_t i)
        { return b[i] * a[i]; },
        [a = eigens.dualQuaternionsA.data(), b = eigens.dualQuaternionsB.data()](std::size_t i)
        { return b[i] * a[i]; });
}

} // namespace

int main(int argc, char* argv[])
{
    AddMatrixWorks();
    AddQuaternionWorks();
    return benchmarks::PrintRatioTable(argc, argv);
}
