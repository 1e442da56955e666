// utMath.h: arithmetic with the same results on every machine.
#pragma once

#include <utils/utExport.h>

struct UT_EXPORT utMath {
    /// `base` to the power `exponent`. A power of ten is the double nearest to it on every
    /// processor, 0 below and infinity above the range; other bases use the C library.
    static double pow(double base, int exponent);
};
