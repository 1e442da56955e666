// utMath.h: arithmetic that must come out the same on every machine.
#pragma once

#include <utils/utExport.h>

struct UT_EXPORT utMath {
    /// `base` to the power `exponent`. Powers of ten are the doubles nearest to them on every
    /// processor, 0 below and infinity above their range; other bases go through the C library.
    static double pow(double base, int exponent);
};
