// files.h: names and files, the string toolkit, character conversion, dates.
#pragma once

#include <nmktoolbox/files/nmkformat_double.h>
#include <nmktoolbox/files/nmktrim_trailing_zeros.h>
