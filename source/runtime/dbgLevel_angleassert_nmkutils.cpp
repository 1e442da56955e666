#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>

dbgLevel dbgLevel_angleassert_nmkutils(
    "nmkutils:angleassert", "Check solutions to anglesolver.", 0,
    "https://nmktoolbox.invalid/nmk/doc/dbgLevel/nmkutils/angleassert.htm", __FILE__, 0);
