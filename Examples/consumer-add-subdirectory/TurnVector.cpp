// Prints where a point ahead stands after a turn to the right about the vertical axis:
//
//     TurnVector DEGREES

#include <cstdio>
#include <string>

#include "Independent/FormatString/FormatString.h"
#include "Independent/FormatString/LFormat.h"
#include "Independent/Math3D/S3D.h"
#include "Independent/Math3D/SMatrix.h"

int main(int argc, char* argv[])
{
    float degrees;
    if (argc != 2 || !formatstring::ScanFloat(argv[1], degrees))
    {
        std::fprintf(stderr, "usage: TurnVector DEGREES\n");
        return 1;
    }

    const S3D turned = S3D(0.0f, 0.0f, 1.0f) * SMatrix::CreateRotH(degrees);
    std::puts(LFormat::Make("%.2f %.2f %.2f", turned[0], turned[1], turned[2]).c_str());
    return 0;
}
