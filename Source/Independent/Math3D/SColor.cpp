#include "Independent/Math3D/SColor.h"

#include <algorithm>

#include "Independent/Math3D/Scalar.h"

// Constant expressions, so that static objects of other files may use them from the start.
constexpr SColor SColor::Black(0.0f, 0.0f, 0.0f, 1.0f);
constexpr SColor SColor::White(1.0f, 1.0f, 1.0f, 1.0f);
constexpr SColor SColor::Zero(0.0f, 0.0f, 0.0f, 0.0f);

namespace
{

std::uint32_t ChannelToByte(float channel)
{
    return static_cast<std::uint32_t>(std::clamp(math3d::TruncateToInt(channel * 255.0f), 0, 255));
}

std::uint32_t PackBytes(float first, float second, float third, float fourth)
{
    return ChannelToByte(first) << 24 | ChannelToByte(second) << 16 | ChannelToByte(third) << 8 |
           ChannelToByte(fourth);
}

} // namespace

std::uint32_t SColor::GetDWORD() const noexcept
{
    return PackBytes(a, r, g, b);
}

std::uint32_t SColor::GetRGBA() const noexcept
{
    return PackBytes(a, b, g, r);
}
