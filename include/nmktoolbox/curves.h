// curves.h: workplanes, units, sets of points, and curves: made, measured, divided, compared.
#pragma once

#include <nmktoolbox/curves/Serialize.h>
#include <nmktoolbox/curves/nmkNgkArcLengthPositions.h>
#include <nmktoolbox/curves/nmkNgkCurveCompare.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>
#include <nmktoolbox/curves/nmkNgkPolylineUtils.h>
#include <nmktoolbox/curves/nmkNgkReadUtils.h>
#include <nmktoolbox/curves/nmkNgkSubCurves.h>
#include <nmktoolbox/curves/nmkNgkWriteUtils.h>
#include <nmktoolbox/curves/nmkPolySplitter.h>
#include <nmktoolbox/curves/nmkUnitsUtils.h>
#include <nmktoolbox/curves/nmkWorkPlane.h>
#include <nmktoolbox/curves/nmkWorkplaneUtils.h>
#include <nmktoolbox/curves/nmkgiPoint3Set.h>
