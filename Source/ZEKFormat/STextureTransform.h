#pragma once

#include "Independent/Math3D/SUV.h"

namespace zek
{

/// How a material places a texture: uv * scale + offset.
struct STextureTransform
{
    SUV scale = SUV(1.0f, 1.0f);
    SUV offset = SUV(0.0f, 0.0f);
};

} // namespace zek
