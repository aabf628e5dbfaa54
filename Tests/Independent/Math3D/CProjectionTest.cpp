#include "Independent/Math3D/CProjection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <Eigen/Dense>
#include <gtest/gtest.h>

#include "Independent/Math3D/ExactFloats.h"
#include "Independent/Math3D/RotationOracle.h"
#include "Independent/Math3D/S2DI.h"
#include "Independent/Math3D/S4D.h"

using math3d::CCamera;
using math3d::CProjection;
using namespace mathtest;

namespace
{

double TanOfDegrees(double degrees)
{
    return std::tan(degrees * PiDouble / 180.0);
}

SMatrix CreateZeroMatrix()
{
    return SMatrix(std::array<float, 16>{}.data());
}

/// Passes when two vectors or matrices are equal, a zero of either sign being zero.
template <typename Value>
testing::AssertionResult AreEqual(const Value& expected, const Value& actual)
{
    if (actual == expected)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << Print(actual) << " instead of " << Print(expected);
}

/// The arguments of CProjection::Set.
struct SScreen
{
    int width;
    int height;
    float near;
    float far;
    float deg;

    CProjection Project() const
    {
        CProjection projection;
        projection.Set(width, height, near, far, deg);
        return projection;
    }

    std::string Print() const
    {
        return "\nscreen " + std::to_string(width) + " x " + std::to_string(height) + ", " +
               PrintInput(near, far, deg);
    }
};

// The field of view of 90 degrees on a screen of 4 to 3.
const SScreen Sample = {800, 600, 1.0f, 100.0f, 90.0f};

SScreen CreatePerspective(CRandom& random)
{
    SScreen screen = {};
    screen.width = random.Whole(1, 4096);
    screen.height = random.Whole(1, 4096);
    screen.near = random.Between(0.1f, 10.0f);
    screen.far = screen.near + random.Between(1.0f, 1000.0f);
    screen.deg = random.Between(1.0f, 170.0f);
    return screen;
}

SScreen CreateOrthographic(CRandom& random)
{
    SScreen screen = CreatePerspective(random);
    screen.deg = -random.Between(0.01f, 4.0f);
    return screen;
}

SMatrix PerspectiveMatrix(const SScreen& screen)
{
    float deg = screen.deg;
    if (screen.height > screen.width)
        deg = deg * static_cast<float>(screen.width) / static_cast<float>(screen.height);
    const double t = std::tan((deg * 0.5) * PiDouble / 180.0);
    const double near = screen.near;
    const double far = screen.far;
    SMatrix matrix = CreateZeroMatrix();
    matrix.m[0][0] = static_cast<float>(1.0 / t);
    matrix.m[1][1] = static_cast<float>(screen.width / (t * screen.height));
    matrix.m[2][2] = static_cast<float>(far / (far - near));
    matrix.m[2][3] = 1.0f;
    matrix.m[3][2] = static_cast<float>(-far * near / (far - near));
    return matrix;
}

std::vector<S3D> NormalListOf(const SMatrix& matrix)
{
    const float m00 = matrix.m[0][0];
    const float m11 = matrix.m[1][1];
    return {
        S3D(-m00, 0.0f, -1.0f).GetNormalize(),
        S3D(m00, 0.0f, -1.0f).GetNormalize(),
        S3D(0.0f, m11, -1.0f).GetNormalize(),
        S3D(0.0f, -m11, -1.0f).GetNormalize(),
        S3D(0.0f, 0.0f, -1.0f),
        S3D(0.0f, 0.0f, 1.0f)};
}

testing::AssertionResult AreEqual(const std::vector<S3D>& expected, const std::vector<S3D>& actual)
{
    if (actual.size() != expected.size())
        return testing::AssertionFailure() << actual.size() << " entries";
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        if (actual[i] != expected[i])
            return AreEqual(expected[i], actual[i]) << ", entry " << i;
    }
    return testing::AssertionSuccess();
}

// Cameras and points

CCamera CreateCamera(CRandom& random)
{
    CCamera camera;
    camera.SetPos(random.Vector3Between(-50.0f, 50.0f));
    camera.AddAngle(random.Between(-180.0f, 180.0f));
    camera.AddAngleP(random.Between(-90.0f, 90.0f));
    return camera;
}

S3D ToWorld(const CCamera& camera, const Eigen::RowVector3d& view)
{
    const Eigen::RowVector3d world =
        view * ToRotation(camera.GetQuaternion()) + ToDouble(camera.GetPos());
    const Eigen::RowVector3f rounded = world.cast<float>();
    return S3D(rounded[0], rounded[1], rounded[2]);
}

Eigen::RowVector3d ToView(const CCamera& camera, const S3D& world)
{
    return (ToDouble(world) - ToDouble(camera.GetPos())) *
           ToRotation(camera.GetQuaternion()).transpose();
}

bool IsInsideAll(const std::vector<SPlane>& planes, const S3D& point)
{
    return std::none_of(
        planes.begin(), planes.end(),
        [&point](const SPlane& plane) { return plane.TestFrontPos(point); });
}

bool IsInRange(const S4D& clip)
{
    return clip.w > 0.0f && std::abs(clip.x) <= clip.w && std::abs(clip.y) <= clip.w &&
           clip.z >= 0.0f && clip.z <= clip.w;
}

/// The pyramid of the perspective with the scales m00 and m11, between near and far, by the heights
/// of a view-space point over its six planes: all negative inside. In double precision.
class CPyramid
{
public:
    CPyramid(const SMatrix& matrix, double near, double far, const Eigen::RowVector3d& view)
        : m_Heights(
              {SideHeight(matrix.m[0][0], view.x(), view.z()),
               SideHeight(matrix.m[1][1], view.y(), view.z()), near - view.z(), view.z() - far})
    {
    }

    bool IsInside() const { return Highest() < 0.0; }

    /// Whether the point is so near to a plane that single precision may put it on either side. The
    /// coordinates reach some hundreds, whose last place is 3e-5.
    bool IsUnclear() const
    {
        return std::any_of(
            m_Heights.begin(), m_Heights.end(),
            [](double height) { return std::abs(height) < 0.005; });
    }

private:
    static double SideHeight(double scale, double side, double depth)
    {
        return (std::abs(side * scale) - depth) / std::sqrt(scale * scale + 1.0);
    }

    double Highest() const { return *std::max_element(m_Heights.begin(), m_Heights.end()); }

    std::array<double, 4> m_Heights;
};

/// A screen seen by a camera, to compare what its planes contain with what it projects.
class CScene
{
public:
    CScene(const SScreen& screen, const CCamera& camera)
        : m_Screen(screen)
        , m_Camera(camera)
        , m_Projection(screen.Project())
        , m_Planes(m_Projection.CalcViewFrustumPlaneList(camera))
        , m_ToClip(camera.GetMatrix() * m_Projection.GetMatrix())
    {
    }

    /// A point within and around the frustum; inside in about one case of four.
    S3D RandomPoint(CRandom& random) const
    {
        const double z = m_Screen.far * random.Between(-0.2f, 1.3f);
        const double x = random.Between(-1.5f, 1.5f) * z / Scale(0);
        const double y = random.Between(-1.5f, 1.5f) * z / Scale(1);
        return ToWorld(m_Camera, Eigen::RowVector3d(x, y, z));
    }

    bool Contains(const S3D& point) const { return IsInsideAll(m_Planes, point); }

    bool Shows(const S3D& point) const { return IsInRange(S4D(point) * m_ToClip); }

    CPyramid Pyramid(const S3D& point) const
    {
        return CPyramid(
            m_Projection.GetMatrix(), m_Screen.near, m_Screen.far, ToView(m_Camera, point));
    }

    double Scale(int axis) const { return m_Projection.GetMatrix().m[axis][axis]; }

    std::string Print(const S3D& point) const
    {
        return m_Screen.Print() + PrintInput(m_Camera.GetPos(), m_Camera.GetQuaternion(), point);
    }

private:
    SScreen m_Screen;
    CCamera m_Camera;
    CProjection m_Projection;
    std::vector<SPlane> m_Planes;
    SMatrix m_ToClip;
};

/// A screen of moderate angles, so that a point at the edge is well above rounding.
SScreen CreateFrustum(CRandom& random, std::pair<int, int> widths, std::pair<int, int> heights)
{
    SScreen screen = {};
    screen.width = random.Whole(widths.first, widths.second);
    screen.height = random.Whole(heights.first, heights.second);
    screen.near = random.Between(0.5f, 5.0f);
    screen.far = screen.near + random.Between(10.0f, 200.0f);
    screen.deg = random.Between(30.0f, 120.0f);
    return screen;
}

void ExpectPlanesContainWhatIsShown(
    unsigned int seed, std::pair<int, int> widths, std::pair<int, int> heights)
{
    CRandom random(seed);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const CScene scene(CreateFrustum(random, widths, heights), camera);
        for (int k = 0; k < 50; ++k)
        {
            const S3D point = scene.RandomPoint(random);
            if (scene.Pyramid(point).IsUnclear())
                continue;
            ASSERT_EQ(scene.Contains(point), scene.Shows(point)) << scene.Print(point);
            ++outcomes[scene.Shows(point) ? 1 : 0];
        }
    }
    EXPECT_GT(outcomes[0], 1500);
    EXPECT_GT(outcomes[1], 1500);
}

/// An orthographic screen whose depth 1 lies between its clip distances.
SScreen CreateOrthographicFrustum(CRandom& random)
{
    SScreen screen =
        CreateFrustum(random, std::pair<int, int>(200, 2000), std::pair<int, int>(200, 2000));
    screen.near = random.Between(0.1f, 0.8f);
    screen.far = screen.near + random.Between(3.0f, 20.0f);
    screen.deg = -random.Between(0.2f, 3.0f);
    return screen;
}

/// A view-space point at a depth, whose projection is within 1.5 times the screen.
S3D CreatePointAtDepth(CRandom& random, const CScene& scene, const CCamera& camera, double z)
{
    const double x = random.Between(-1.5f, 1.5f) / scene.Scale(0);
    const double y = random.Between(-1.5f, 1.5f) / scene.Scale(1);
    return ToWorld(camera, Eigen::RowVector3d(x, y, z));
}

/// x, y and depth of a point after the matrix and the division by w.
Eigen::RowVector3d CalcProjected(const Eigen::RowVector3d& view, const SMatrix& matrix)
{
    const Eigen::RowVector4d clip =
        Eigen::RowVector4d(view.x(), view.y(), view.z(), 1.0) * ToDouble(matrix);
    return clip.head<3>() / clip.w();
}

} // namespace

TEST(CProjection, HasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<CProjection>);
}

TEST(CProjection, DefaultIsTheIdentityWithoutSizesAndNormals)
{
    const CProjection projection;
    EXPECT_TRUE(AreEqual(SMatrix(), projection.GetMatrix()));
    EXPECT_EQ(projection.GetWidth(), 0);
    EXPECT_EQ(projection.GetHeight(), 0);
    EXPECT_EQ(projection.GetNear(), 0.0f);
    EXPECT_EQ(projection.GetFar(), 0.0f);
    EXPECT_EQ(projection.GetDeg(), 0.0f);
    EXPECT_TRUE(projection.GetNormalList().empty());
}

TEST(CProjection, MovingTakesTheNormalsAlong)
{
    CProjection projection;
    projection.Set(800, 600, 1.0f, 100.0f, 90.0f);
    const S3D* const normals = projection.GetNormalList().data();
    CProjection constructed = std::move(projection);
    EXPECT_EQ(constructed.GetNormalList().data(), normals);
    CProjection assigned;
    assigned = std::move(constructed);
    EXPECT_EQ(assigned.GetNormalList().data(), normals);
    EXPECT_EQ(assigned.GetNormalList().size(), 6u);
    EXPECT_EQ(assigned.GetWidth(), 800);
}

// Set and Resize

TEST(CProjection, SetKeepsItsFiveValues)
{
    const CProjection projection = Sample.Project();
    EXPECT_EQ(projection.GetWidth(), 800);
    EXPECT_EQ(projection.GetHeight(), 600);
    EXPECT_EQ(projection.GetNear(), 1.0f);
    EXPECT_EQ(projection.GetFar(), 100.0f);
    EXPECT_EQ(projection.GetDeg(), 90.0f);
}

TEST(CProjection, SetKeepsTheAngleUnscaledOnATallScreen)
{
    EXPECT_EQ((SScreen{600, 800, 1.0f, 100.0f, 90.0f}.Project().GetDeg()), 90.0f);
}

TEST(CProjection, NinetyDegreesOnAWideScreenGiveOneAndTheAspectRatio)
{
    const SMatrix expected(
        1.0f, 0.0f, 0.0f, 0.0f,            //
        0.0f, 800.0f / 600.0f, 0.0f, 0.0f, //
        0.0f, 0.0f, 100.0f / 99.0f, 1.0f,  //
        0.0f, 0.0f, -100.0f / 99.0f, 0.0f);
    EXPECT_TRUE(AreEqual(expected, Sample.Project().GetMatrix()));
}

TEST(CProjection, TallScreenScalesTheAngleItself)
{
    const SMatrix matrix = SScreen{600, 800, 1.0f, 100.0f, 90.0f}.Project().GetMatrix();
    // 90 * 600 / 800 = 67.5 degrees, and the tangent of 33.75 is 0.66817863791929892.
    EXPECT_EQ(matrix.m[0][0], static_cast<float>(1.0 / 0.66817863791929892));
    EXPECT_EQ(matrix.m[1][1], static_cast<float>(600.0 / (0.66817863791929892 * 800.0)));
}

TEST(CProjection, PerspectiveFollowsItsFormulaToTheBit)
{
    CRandom random(1);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SScreen screen = CreatePerspective(random);
        ASSERT_TRUE(AreEqual(PerspectiveMatrix(screen), screen.Project().GetMatrix()))
            << screen.Print();
    }
}

TEST(CProjection, SquareScreenDoesNotScaleTheAngle)
{
    CRandom random(2);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        // Times and divided by the same number, some angles would change in the last place.
        SScreen screen = CreatePerspective(random);
        screen.height = screen.width;
        ASSERT_TRUE(AreEqual(PerspectiveMatrix(screen), screen.Project().GetMatrix()))
            << screen.Print();
    }
}

TEST(CProjection, SmallestPositiveAngleIsStillAPerspective)
{
    const SMatrix matrix = SScreen{800, 600, 1.0f, 100.0f, 1e-3f}.Project().GetMatrix();
    EXPECT_EQ(matrix.m[2][3], 1.0f);
    EXPECT_EQ(matrix.m[3][3], 0.0f);
    EXPECT_NEAR(matrix.m[0][0], 114591.56f, 0.05f); // 1 / (0.0005 * pi / 180)
}

TEST(CProjection, PerspectiveMapsTheScreensEdgesAndTheClipDistances)
{
    const SMatrix matrix = Sample.Project().GetMatrix();
    // At depth 10 the screen spans 10 to each side, and three quarters of that up and down.
    const Eigen::RowVector3d corner = CalcProjected(Eigen::RowVector3d(10.0, -7.5, 10.0), matrix);
    EXPECT_NEAR(corner.x(), 1.0, 1e-6);
    EXPECT_NEAR(corner.y(), -1.0, 1e-6);
    EXPECT_NEAR(CalcProjected(Eigen::RowVector3d(0.0, 0.0, 1.0), matrix).z(), 0.0, 1e-6);
    EXPECT_NEAR(CalcProjected(Eigen::RowVector3d(0.0, 0.0, 100.0), matrix).z(), 1.0, 1e-6);
}

TEST(CProjection, NegativeAngleGivesTheOrthographicForm)
{
    const SMatrix expected(
        0.5f, 0.0f, 0.0f, 0.0f,  //
        0.0f, 1.0f, 0.0f, 0.0f,  //
        0.0f, 0.0f, 0.25f, 0.0f, //
        0.0f, 0.0f, 0.0f, 1.0f);
    const SMatrix matrix = SScreen{1024, 512, 1.0f, 5.0f, -0.5f}.Project().GetMatrix();
    EXPECT_TRUE(AreEqual(expected, matrix));
}

TEST(CProjection, OrthographicFormOnATallScreenKeepsTheScaleAcross)
{
    const SMatrix matrix = SScreen{512, 1024, 1.0f, 5.0f, -0.5f}.Project().GetMatrix();
    EXPECT_EQ(matrix.m[0][0], 0.5f);
    EXPECT_EQ(matrix.m[1][1], 0.25f);
}

TEST(CProjection, AngleOfZeroGivesAnOrthographicFormOfNoScale)
{
    for (const float zero : {0.0f, -0.0f})
    {
        const SMatrix matrix = SScreen{800, 600, 1.0f, 5.0f, zero}.Project().GetMatrix();
        const SMatrix expected(
            0.0f, 0.0f, 0.0f, 0.0f,  //
            0.0f, 0.0f, 0.0f, 0.0f,  //
            0.0f, 0.0f, 0.25f, 0.0f, //
            0.0f, 0.0f, 0.0f, 1.0f);
        EXPECT_TRUE(AreEqual(expected, matrix));
    }
}

TEST(CProjection, OrthographicFormFollowsItsFormula)
{
    CRandom random(3);
    for (int i = 0; i < RandomCases; ++i)
    {
        const SScreen screen = CreateOrthographic(random);
        SMatrix matrix = screen.Project().GetMatrix();
        const double m11 = -static_cast<double>(screen.deg) * screen.width / screen.height;
        const double m22 = 1.0 / (static_cast<double>(screen.far) - screen.near);
        // Two roundings, in single or in double precision.
        ASSERT_NEAR(matrix.m[1][1], m11, 1.3e-7 * m11) << screen.Print();
        ASSERT_NEAR(matrix.m[2][2], m22, 1.3e-7 * m22) << screen.Print();
        matrix.m[1][1] = 0.0f;
        matrix.m[2][2] = 0.0f;
        SMatrix others = CreateZeroMatrix();
        others.m[0][0] = -screen.deg;
        others.m[3][3] = 1.0f;
        ASSERT_TRUE(AreEqual(others, matrix)) << screen.Print();
    }
}

TEST(CProjection, SetReplacesWhatTheOtherFormLeft)
{
    const SScreen orthographic = {640, 480, 2.0f, 50.0f, -0.25f};
    CProjection projection = Sample.Project();
    projection.Set(640, 480, 2.0f, 50.0f, -0.25f);
    EXPECT_TRUE(AreEqual(orthographic.Project().GetMatrix(), projection.GetMatrix()));
    EXPECT_TRUE(AreEqual(orthographic.Project().GetNormalList(), projection.GetNormalList()));
    projection.Set(800, 600, 1.0f, 100.0f, 90.0f);
    EXPECT_TRUE(AreEqual(Sample.Project().GetMatrix(), projection.GetMatrix()));
    EXPECT_TRUE(AreEqual(Sample.Project().GetNormalList(), projection.GetNormalList()));
}

TEST(CProjection, ResizeTakesTheSizeAndKeepsTheRest)
{
    CProjection projection = Sample.Project();
    projection.Resize(300, 400);
    EXPECT_EQ(projection.GetWidth(), 300);
    EXPECT_EQ(projection.GetHeight(), 400);
    EXPECT_EQ(projection.GetNear(), 1.0f);
    EXPECT_EQ(projection.GetFar(), 100.0f);
    EXPECT_EQ(projection.GetDeg(), 90.0f);
}

TEST(CProjection, ResizeIsSetWithTheNewSize)
{
    CRandom random(4);
    for (int i = 0; i < RandomCases / 20; ++i)
    {
        SScreen screen = i % 2 == 0 ? CreatePerspective(random) : CreateOrthographic(random);
        CProjection projection = screen.Project();
        for (int resize = 0; resize < 3; ++resize)
        {
            screen.width = random.Whole(1, 4096);
            screen.height = random.Whole(1, 4096);
            projection.Resize(screen.width, screen.height);
        }
        ASSERT_TRUE(AreEqual(screen.Project().GetMatrix(), projection.GetMatrix()))
            << screen.Print();
        ASSERT_TRUE(AreEqual(screen.Project().GetNormalList(), projection.GetNormalList()))
            << screen.Print();
    }
}

// The normals

TEST(CProjection, NormalsAreLeftRightTopBottomNearFarAndPointOut)
{
    const CProjection projection = SScreen{512, 512, 1.0f, 100.0f, 90.0f}.Project();
    const float half = 1.0f / std::sqrt(2.0f);
    const std::vector<S3D> expected = {S3D(-half, 0.0f, -half), S3D(half, 0.0f, -half),
                                       S3D(0.0f, half, -half),  S3D(0.0f, -half, -half),
                                       S3D(0.0f, 0.0f, -1.0f),  S3D(0.0f, 0.0f, 1.0f)};
    EXPECT_TRUE(AreEqual(expected, projection.GetNormalList()));
}

TEST(CProjection, NormalsFollowFromTheMatrixToTheBit)
{
    CRandom random(5);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = CreatePerspective(random);
        const CProjection projection = screen.Project();
        ASSERT_TRUE(AreEqual(NormalListOf(projection.GetMatrix()), projection.GetNormalList()))
            << screen.Print();
    }
}

TEST(CProjection, OrthographicNormalsFollowFromTheMatrixToTheBit)
{
    CRandom random(6);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = CreateOrthographic(random);
        const CProjection projection = screen.Project();
        ASSERT_TRUE(AreEqual(NormalListOf(projection.GetMatrix()), projection.GetNormalList()))
            << screen.Print();
    }
}

// GetPosOnNearPlane

TEST(CProjection, CornersOfTheScreenLieOnTheNearPlane)
{
    const CProjection projection = Sample.Project();
    EXPECT_SAME_BITS(S3D(-1.0f, 0.75f, 1.0f), projection.GetPosOnNearPlane(0, 0));
    EXPECT_SAME_BITS(S3D(1.0f, -0.75f, 1.0f), projection.GetPosOnNearPlane(800, 600));
    EXPECT_SAME_BITS(S3D(1.0f, 0.75f, 1.0f), projection.GetPosOnNearPlane(800, 0));
    EXPECT_SAME_BITS(S3D(-1.0f, -0.75f, 1.0f), projection.GetPosOnNearPlane(0, 600));
}

TEST(CProjection, MiddleOfTheScreenLiesStraightAhead)
{
    EXPECT_SAME_BITS(S3D(0.0f, 0.0f, 1.0f), Sample.Project().GetPosOnNearPlane(400, 300));
}

TEST(CProjection, PixelsBesideTheScreenLieBesideTheFrustum)
{
    EXPECT_SAME_BITS(S3D(-2.0f, -1.5f, 1.0f), Sample.Project().GetPosOnNearPlane(-400, 900));
}

TEST(CProjection, PosOnNearPlaneFollowsItsFormulaToTheBit)
{
    CRandom random(7);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = i % 2 == 0 ? CreatePerspective(random) : CreateOrthographic(random);
        const CProjection projection = screen.Project();
        const int x = random.Whole(0, screen.width);
        const int y = random.Whole(0, screen.height);
        const float scaleX = 1.0f / projection.GetMatrix().m[0][0];
        const float scaleY = 1.0f / projection.GetMatrix().m[1][1];
        const float left = -screen.near * scaleX;
        const float right = screen.near * scaleX;
        const float top = screen.near * scaleY;
        const float bottom = -screen.near * scaleY;
        const float u = static_cast<float>(x) / static_cast<float>(screen.width);
        const float v = static_cast<float>(y) / static_cast<float>(screen.height);
        const S3D expected(left + (right - left) * u, top + (bottom - top) * v, screen.near);
        ASSERT_SAME_BITS(expected, projection.GetPosOnNearPlane(x, y))
            << screen.Print() << PrintInput(math3d::S2DI(x, y));
    }
}

TEST(CProjection, PosOnNearPlaneProjectsBackToThePixel)
{
    CRandom random(8);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = CreatePerspective(random);
        const CProjection projection = screen.Project();
        const int x = random.Whole(0, screen.width);
        const int y = random.Whole(0, screen.height);
        const Eigen::RowVector3d projected =
            CalcProjected(ToDouble(projection.GetPosOnNearPlane(x, y)), projection.GetMatrix());
        ASSERT_NEAR((projected.x() + 1.0) / 2.0 * screen.width, x, 1e-6 * screen.width)
            << screen.Print() << PrintInput(math3d::S2DI(x, y));
        ASSERT_NEAR((1.0 - projected.y()) / 2.0 * screen.height, y, 1e-6 * screen.height)
            << screen.Print() << PrintInput(math3d::S2DI(x, y));
        // Depth 0, but for the rounding of m22, of up to 11 where far is close to near.
        ASSERT_NEAR(projected.z(), 0.0, 2e-7 * projection.GetMatrix().m[2][2])
            << screen.Print() << PrintInput(math3d::S2DI(x, y));
    }
}

TEST(CProjection, OrthographicPosOnNearPlaneProjectsBackToThePixelWhenNearIsOne)
{
    // The scales are those of a perspective: the position on the screen is multiplied by near.
    CRandom random(9);
    for (int i = 0; i < RandomCases / 20; ++i)
    {
        SScreen screen = CreateOrthographic(random);
        for (const float near : {1.0f, 3.0f})
        {
            screen.near = near;
            screen.far = 100.0f;
            const CProjection projection = screen.Project();
            const int x = random.Whole(0, screen.width);
            const Eigen::RowVector3d projected =
                CalcProjected(ToDouble(projection.GetPosOnNearPlane(x, 0)), projection.GetMatrix());
            ASSERT_NEAR(projected.x(), near * (2.0 * x / screen.width - 1.0), 1e-6 * near)
                << screen.Print() << PrintInput(math3d::S2DI(x, 0));
            ASSERT_NEAR(projected.y(), near, 1e-6 * near)
                << screen.Print() << PrintInput(math3d::S2DI(x, 0));
        }
    }
}

// The frustum's planes

TEST(CProjection, FrustumBeforeTheFirstSetHasNoPlanes)
{
    EXPECT_TRUE(CProjection().CalcViewFrustumPlaneList(CCamera()).empty());
}

TEST(CProjection, FrustumOfAnUnturnedCameraIsMovedToItsPosition)
{
    CCamera camera;
    camera.SetPos(1.0f, 2.0f, 3.0f);
    const CProjection projection = SScreen{512, 512, 1.0f, 10.0f, 90.0f}.Project();
    const std::vector<SPlane> planes = projection.CalcViewFrustumPlaneList(camera);
    ASSERT_EQ(planes.size(), 6u);
    const double half = std::sqrt(0.5);
    const auto expectPlane = [&planes](std::size_t i, double a, double b, double c, double d)
    {
        EXPECT_NEAR(planes[i].a, a, 1e-6) << i;
        EXPECT_NEAR(planes[i].b, b, 1e-6) << i;
        EXPECT_NEAR(planes[i].c, c, 1e-6) << i;
        EXPECT_NEAR(planes[i].d, d, 1e-6) << i;
    };
    expectPlane(0, -half, 0.0, -half, 4.0 * half);
    expectPlane(1, half, 0.0, -half, 2.0 * half);
    expectPlane(2, 0.0, half, -half, 1.0 * half);
    expectPlane(3, 0.0, -half, -half, 5.0 * half);
    expectPlane(4, 0.0, 0.0, -1.0, 4.0);
    expectPlane(5, 0.0, 0.0, 1.0, -13.0);
}

TEST(CProjection, FrustumPlanesFollowFromTheNormalsToTheBit)
{
    CRandom random(10);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = i % 2 == 0 ? CreatePerspective(random) : CreateOrthographic(random);
        const CCamera camera = CreateCamera(random);
        const CProjection projection = screen.Project();
        const std::vector<SPlane> planes = projection.CalcViewFrustumPlaneList(camera);
        const S3D pos = camera.GetPos();
        const S3D view = camera.GetViewVec();
        const std::vector<S3D> points = {
            pos, pos, pos, pos, pos + view * screen.near, pos + view * screen.far};
        ASSERT_EQ(planes.size(), points.size());
        for (std::size_t k = 0; k < points.size(); ++k)
        {
            const S3D normal = projection.GetNormalList()[k].MulMatrixRot(camera.GetRotInvMatrix());
            ASSERT_SAME_BITS(Coefficients(SPlane(points[k], normal)), Coefficients(planes[k]))
                << k << screen.Print() << PrintInput(pos, camera.GetQuaternion());
        }
    }
}

TEST(CProjection, FrustumContainsExactlyWhatAWideScreenShows)
{
    ExpectPlanesContainWhatIsShown(12, {800, 2000}, {200, 800});
}

TEST(CProjection, FrustumContainsExactlyWhatATallScreenShows)
{
    ExpectPlanesContainWhatIsShown(13, {400, 800}, {800, 1600});
}

TEST(CProjection, FrustumContainsExactlyWhatASquareScreenShows)
{
    ExpectPlanesContainWhatIsShown(14, {512, 512}, {512, 512});
}

TEST(CProjection, FrustumAgreesWithThePyramidInDoublePrecision)
{
    CRandom random(15);
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const CScene scene(CreateFrustum(random, {200, 2000}, {200, 2000}), camera);
        for (int k = 0; k < 50; ++k)
        {
            const S3D point = scene.RandomPoint(random);
            const CPyramid pyramid = scene.Pyramid(point);
            if (!pyramid.IsUnclear())
            {
                ASSERT_EQ(scene.Contains(point), pyramid.IsInside()) << scene.Print(point);
            }
        }
    }
}

// The frustum of the orthographic form. What the matrix shows is a box, |m00 * x| < 1 and
// |m11 * y| < 1 with 0 < z < far - near; what the planes contain is a pyramid from the camera,
// |m00 * x| < z and |m11 * y| < z with near < z < far. They meet at depth 1.

TEST(CProjection, OrthographicFrustumIsThePyramidOfAPerspectiveWithTheSameScales)
{
    CRandom random(16);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const CScene scene(CreateOrthographicFrustum(random), camera);
        for (int k = 0; k < 50; ++k)
        {
            const S3D point = scene.RandomPoint(random);
            const CPyramid pyramid = scene.Pyramid(point);
            if (pyramid.IsUnclear())
                continue;
            ASSERT_EQ(scene.Contains(point), pyramid.IsInside()) << scene.Print(point);
            ++outcomes[pyramid.IsInside() ? 1 : 0];
        }
    }
    EXPECT_GT(outcomes[0], 1500);
    EXPECT_GT(outcomes[1], 1500);
}

TEST(CProjection, OrthographicFrustumContainsExactlyWhatIsShownAtDepthOne)
{
    CRandom random(17);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const CScene scene(CreateOrthographicFrustum(random), camera);
        for (int k = 0; k < 50; ++k)
        {
            const S3D point = CreatePointAtDepth(random, scene, camera, 1.0);
            if (scene.Pyramid(point).IsUnclear())
                continue;
            ASSERT_EQ(scene.Contains(point), scene.Shows(point)) << scene.Print(point);
            ++outcomes[scene.Shows(point) ? 1 : 0];
        }
    }
    EXPECT_GT(outcomes[0], 1500);
    EXPECT_GT(outcomes[1], 1500);
}

TEST(CProjection, OrthographicFrustumBeyondDepthOneContainsAllThatIsShownAndMore)
{
    CRandom random(18);
    int shown = 0;
    int more = 0;
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const SScreen screen = CreateOrthographicFrustum(random);
        const CScene scene(screen, camera);
        for (int k = 0; k < 50; ++k)
        {
            const double z = random.Between(1.01f, screen.far - screen.near);
            const S3D point = CreatePointAtDepth(random, scene, camera, z);
            if (scene.Pyramid(point).IsUnclear())
                continue;
            if (scene.Shows(point))
            {
                ASSERT_TRUE(scene.Contains(point)) << scene.Print(point);
            }
            shown += scene.Shows(point) ? 1 : 0;
            more += scene.Contains(point) && !scene.Shows(point) ? 1 : 0;
        }
    }
    EXPECT_GT(shown, 1500);
    EXPECT_GT(more, 1500);
}

TEST(CProjection, OrthographicFrustumBeforeDepthOneContainsOnlyWhatIsShownButNotAll)
{
    CRandom random(19);
    int contained = 0;
    int missing = 0;
    for (int i = 0; i < 300; ++i)
    {
        const CCamera camera = CreateCamera(random);
        const SScreen screen = CreateOrthographicFrustum(random);
        const CScene scene(screen, camera);
        for (int k = 0; k < 50; ++k)
        {
            const double z = random.Between(screen.near, 0.99f);
            const S3D point = CreatePointAtDepth(random, scene, camera, z);
            if (scene.Pyramid(point).IsUnclear())
                continue;
            if (scene.Contains(point))
            {
                ASSERT_TRUE(scene.Shows(point)) << scene.Print(point);
            }
            contained += scene.Contains(point) ? 1 : 0;
            missing += scene.Shows(point) && !scene.Contains(point) ? 1 : 0;
        }
    }
    EXPECT_GT(contained, 1000);
    EXPECT_GT(missing, 1000);
}

TEST(CProjection, OrthographicDepthIsShownFromTheCameraButContainedFromNear)
{
    const CScene scene({512, 512, 2.0f, 10.0f, -0.001f}, CCamera());
    const S3D beforeNear(0.0f, 0.0f, 1.5f);
    EXPECT_TRUE(scene.Shows(beforeNear));
    EXPECT_FALSE(scene.Contains(beforeNear));
    const S3D behindTheShownDepth(0.0f, 0.0f, 8.5f);
    EXPECT_FALSE(scene.Shows(behindTheShownDepth));
    EXPECT_TRUE(scene.Contains(behindTheShownDepth));
    const S3D between(0.0f, 0.0f, 7.5f);
    EXPECT_TRUE(scene.Shows(between));
    EXPECT_TRUE(scene.Contains(between));
}

TEST(CProjection, OrthographicFrustumOfNoScaleAndNoNearContainsExactlyWhatIsShown)
{
    CRandom random(20);
    std::array<int, 2> outcomes = {};
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        SScreen screen = CreateOrthographicFrustum(random);
        screen.near = 0.0f;
        screen.deg = 0.0f;
        const CCamera camera = CreateCamera(random);
        const CScene scene(screen, camera);
        const double x = random.Between(-50.0f, 50.0f);
        const double y = random.Between(-50.0f, 50.0f);
        const double z = screen.far * random.Between(-0.5f, 1.5f);
        const S3D point = ToWorld(camera, Eigen::RowVector3d(x, y, z));
        if (scene.Pyramid(point).IsUnclear())
            continue;
        ASSERT_EQ(scene.Contains(point), scene.Shows(point)) << scene.Print(point);
        ++outcomes[scene.Shows(point) ? 1 : 0];
    }
    EXPECT_GT(outcomes[0], 1500);
    EXPECT_GT(outcomes[1], 1500);
}

// CalcFOVMatrix

TEST(CProjection, FourEqualHalfAnglesGiveTheMatrixOfSetOnASquareScreen)
{
    for (int deg = 1; deg < 180; ++deg)
    {
        const SScreen screen = {512, 512, 0.5f, 300.0f, static_cast<float>(deg)};
        const float half = screen.deg / 2.0f;
        EXPECT_TRUE(AreEqual(
            screen.Project().GetMatrix(),
            CProjection::CalcFOVMatrix(half, half, half, half, 0.5f, 300.0f)))
            << deg;
    }
}

TEST(CProjection, EqualHalfAnglesInPairsGiveTheMatrixOfSetOnAnyScreen)
{
    CRandom random(21);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        SScreen screen = CreatePerspective(random);
        if (screen.height > screen.width)
            std::swap(screen.width, screen.height);
        const double tangent = TanOfDegrees(screen.deg / 2.0) * screen.height / screen.width;
        const float across = screen.deg / 2.0f;
        const float upright = static_cast<float>(std::atan(tangent) * 180.0 / PiDouble);
        const Eigen::Matrix4d expected = ToDouble(screen.Project().GetMatrix());
        const Eigen::Matrix4d actual = ToDouble(
            CProjection::CalcFOVMatrix(across, across, upright, upright, screen.near, screen.far));
        // The upright angle is rounded, which a steep or a small tangent stretches.
        const double stretch = 1.0 + (tangent + 1.0 / tangent) * std::atan(tangent);
        const Eigen::Matrix4d tolerance = 3e-7 * stretch * expected.cwiseAbs();
        ASSERT_TRUE(((actual - expected).cwiseAbs().array() <= tolerance.array()).all())
            << actual << "\ninstead of\n"
            << expected << screen.Print();
    }
}

TEST(CProjection, FOVMatrixOfOneSidedAnglesPutsTheOtherEdgesInTheMiddle)
{
    // From straight ahead to 45 degrees right and up: x from 0 to z, y from 0 to z.
    const SMatrix matrix = CProjection::CalcFOVMatrix(0.0f, 45.0f, 45.0f, 0.0f, 1.0f, 3.0f);
    const SMatrix expected(
        2.0f, 0.0f, 0.0f, 0.0f,   //
        0.0f, 2.0f, 0.0f, 0.0f,   //
        -1.0f, -1.0f, 1.5f, 1.0f, //
        0.0f, 0.0f, -1.5f, 0.0f);
    EXPECT_CLOSE(ToDouble(expected), ToDouble(matrix), 1e-6);
}

TEST(CProjection, FOVMatrixTakesANegativeAngleAsAnEdgeBeyondTheMiddle)
{
    // From 45 degrees right to about 71.565 degrees right: x from z to 3 z.
    const SMatrix matrix = CProjection::CalcFOVMatrix(-45.0f, 71.565051f, 10.0f, 20.0f, 1.0f, 3.0f);
    EXPECT_NEAR(CalcProjected(Eigen::RowVector3d(1.0, 0.0, 1.0), matrix).x(), -1.0, 1e-6);
    EXPECT_NEAR(CalcProjected(Eigen::RowVector3d(2.0, 0.0, 1.0), matrix).x(), 0.0, 1e-6);
    EXPECT_NEAR(CalcProjected(Eigen::RowVector3d(3.0, 0.0, 1.0), matrix).x(), 1.0, 1e-6);
}

TEST(CProjection, FOVMatrixMapsTheFourEdgesAndTheClipDistances)
{
    CRandom random(22);
    int checked = 0;
    for (int i = 0; i < RandomCases; ++i)
    {
        const float left = random.Between(-60.0f, 80.0f);
        const float right = random.Between(-60.0f, 80.0f);
        const float top = random.Between(-60.0f, 80.0f);
        const float bottom = random.Between(-60.0f, 80.0f);
        const float near = random.Between(0.1f, 10.0f);
        const float far = near + random.Between(1.0f, 1000.0f);
        if (left + right < 10.0f || top + bottom < 10.0f)
            continue;
        const SMatrix matrix = CProjection::CalcFOVMatrix(left, right, top, bottom, near, far);
        const std::string input = PrintInput(left, right, top, bottom, near, far);

        // At any depth, and at any place along the edge.
        const double z = random.Between(near, far);
        const double along = random.Between(-1.0f, 1.0f) * z;
        const double leftX = -TanOfDegrees(left) * z;
        const double rightX = TanOfDegrees(right) * z;
        const double topY = TanOfDegrees(top) * z;
        const double bottomY = -TanOfDegrees(bottom) * z;
        // The off-centre term takes back what a narrow field far off the middle scales up.
        const double toleranceX =
            3e-7 * (1.0 + (std::abs(leftX) + std::abs(rightX)) / (rightX - leftX));
        const double toleranceY =
            3e-7 * (1.0 + (std::abs(topY) + std::abs(bottomY)) / (topY - bottomY));
        ASSERT_NEAR(CalcProjected({leftX, along, z}, matrix).x(), -1.0, toleranceX) << input;
        ASSERT_NEAR(CalcProjected({rightX, along, z}, matrix).x(), 1.0, toleranceX) << input;
        ASSERT_NEAR(CalcProjected({along, topY, z}, matrix).y(), 1.0, toleranceY) << input;
        ASSERT_NEAR(CalcProjected({along, bottomY, z}, matrix).y(), -1.0, toleranceY) << input;

        const double toleranceZ = 2e-7 * matrix.m[2][2];
        ASSERT_NEAR(CalcProjected({leftX, topY, near}, matrix).z(), 0.0, toleranceZ) << input;
        ASSERT_NEAR(CalcProjected({rightX, bottomY, far}, matrix).z(), 1.0, toleranceZ) << input;
        ++checked;
    }
    EXPECT_GT(checked, 3000);
}

TEST(CProjection, FOVMatrixHasTheDepthOfSetAndZeroElsewhere)
{
    CRandom random(23);
    for (int i = 0; i < RandomCases / 4; ++i)
    {
        const SScreen screen = CreatePerspective(random);
        const SMatrix set = screen.Project().GetMatrix();
        const SMatrix matrix =
            CProjection::CalcFOVMatrix(10.0f, 20.0f, 30.0f, 40.0f, screen.near, screen.far);
        SMatrix expected = CreateZeroMatrix();
        expected.m[0][0] = matrix.m[0][0];
        expected.m[1][1] = matrix.m[1][1];
        expected.m[2][0] = matrix.m[2][0];
        expected.m[2][1] = matrix.m[2][1];
        expected.m[2][2] = set.m[2][2];
        expected.m[2][3] = 1.0f;
        expected.m[3][2] = set.m[3][2];
        ASSERT_TRUE(AreEqual(expected, matrix)) << screen.Print();
    }
}

TEST(CProjection, EqualClipDistancesGiveAnInfiniteDepth)
{
    const SMatrix matrix = SScreen{800, 600, 2.0f, 2.0f, 90.0f}.Project().GetMatrix();
    EXPECT_EQ(Infinity, matrix.m[2][2]);
    EXPECT_EQ(-Infinity, matrix.m[3][2]);
    EXPECT_EQ(Infinity, (SScreen{800, 600, 2.0f, 2.0f, -1.0f}.Project().GetMatrix().m[2][2]));
}

TEST(CProjection, ScreenWithoutWidthOrHeightHasNoUsableScale)
{
    EXPECT_EQ(Infinity, (SScreen{800, 0, 1.0f, 9.0f, 90.0f}.Project().GetMatrix().m[1][1]));
    EXPECT_EQ(Infinity, (SScreen{0, 600, 1.0f, 9.0f, 90.0f}.Project().GetMatrix().m[0][0]));
    EXPECT_EQ(0.0f, (SScreen{0, 600, 1.0f, 9.0f, -1.0f}.Project().GetMatrix().m[1][1]));
}

TEST(CProjection, FOVMatrixOfCoincidingSidesIsInfinite)
{
    EXPECT_EQ(
        Infinity, CProjection::CalcFOVMatrix(-45.0f, 45.0f, 10.0f, 10.0f, 1.0f, 3.0f).m[0][0]);
}
