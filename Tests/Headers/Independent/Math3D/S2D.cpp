#include "Independent/Math3D/S2D.h"

math3d::S2DI Use(const S2D& point)
{
    return point.GetS2DI();
}

int main() {}
