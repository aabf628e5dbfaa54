#include "Independent/Math3D/S4D.h"

S3D Use(const S3D& point, const SMatrix& matrix)
{
    const S4D product = S4D(point) * matrix;
    return product.GetS3D() + product.GetS3DNotDivideW();
}

int main() {}
