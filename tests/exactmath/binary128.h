// binary128.h: numbers of 113 bits, in which plain ways compute before they round once.
#pragma once

#include <cfloat>

#if LDBL_MANT_DIG == 113
using Binary128 = long double;
#else
__extension__ using Binary128 = __float128;
#endif
