#include "Independent/Math3D/SQuaternion.h"

SMatrix Use(const S3D& from, const S3D& to)
{
    const SQuaternion rotation = SQuaternion::CreateFromToRotation(from, to);
    return (rotation * SQuaternion::CreateAxisRotation(to, 1.0f)).GetMatrix();
}

int main() {}
