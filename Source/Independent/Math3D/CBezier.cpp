#include "Independent/Math3D/CBezier.h"

#include <cmath>

#include "Independent/Math3D/Scalar.h"

namespace math3d
{

namespace
{

float Factorial(int n)
{
    int product = 1;
    for (int factor = 1; factor <= n && product != 0; ++factor)
        product = WrappingMultiply(product, factor);
    return static_cast<float>(product);
}

} // namespace

float CBezier::Bernstein(int i, int n, float t) noexcept
{
    const int rest = WrappingSubtract(n, i);
    const float coefficient = Factorial(n) / (Factorial(i) * Factorial(rest));
    return coefficient * std::pow(t, static_cast<float>(i)) *
           std::pow(1.0f - t, static_cast<float>(rest));
}

S2D CBezier::CalcBezier(const std::array<S2D, 4>& points, float t) noexcept
{
    S2D sum;
    for (int i = 0; i <= 3; ++i)
        sum += points[static_cast<std::size_t>(i)] * Bernstein(i, 3, t);
    return sum;
}

} // namespace math3d
