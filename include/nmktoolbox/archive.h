// archive.h: archives of electrodes.
#pragma once

#include <nmktoolbox/archive/nmkTrodeArchive.h>
