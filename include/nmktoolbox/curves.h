// curves.h: workplanes, units and sets of points.
#pragma once

#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/curves/nmkgiPoint3Set.h>
