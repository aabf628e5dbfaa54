#include "Independent/Math3D/S3D.h"

S3D Use(S3D point, const SMatrix& matrix)
{
    point *= matrix;
    return point * matrix + point.MulMatrixRot(matrix);
}

int main() {}
