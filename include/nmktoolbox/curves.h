// curves.h: workplanes, units and sets of points.
#pragma once

#include <nmktoolbox/curves/Serialize.h>
#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/curves/nmkWorkPlane.h>
#include <nmktoolbox/curves/nmkWorkplaneUtils.h>
#include <nmktoolbox/curves/nmkgiPoint3Set.h>
