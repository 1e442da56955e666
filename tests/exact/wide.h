// wide.h: numbers of 113 bits, in which plain ways are worked out before they are rounded once.
#pragma once

#include <cfloat>

#if LDBL_MANT_DIG == 113
using Wide = long double;
#else
__extension__ using Wide = __float128;
#endif
