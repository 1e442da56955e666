// trifile.h: triangle models, read, joined, marked, bounded and written.
#pragma once

#include <nmktoolbox/trifile/nmkAppendTri.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>
#include <nmktoolbox/trifile/nmkGiTriDataTypes.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>
#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>
#include <nmktoolbox/trifile/nmkTriBoundary.h>
