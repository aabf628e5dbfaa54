#include "Independent/Math3D/SColor.h"

// Constant expressions, so that static objects of other files may use them from the start.
constexpr SColor SColor::Black(0.0f, 0.0f, 0.0f, 1.0f);
constexpr SColor SColor::White(1.0f, 1.0f, 1.0f, 1.0f);
constexpr SColor SColor::Zero(0.0f, 0.0f, 0.0f, 0.0f);
