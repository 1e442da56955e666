#include <nmktoolbox/solver/dbgLevel_angleassert_nmkutils.h>

dbgLevel dbgLevel_angleassert_nmkutils("nmkutils:angleassert", "Check solutions to anglesolver.", 0,
                                       nullptr, nullptr, 0);
