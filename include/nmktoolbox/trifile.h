// trifile.h: triangle models, read, joined, marked, bounded and written.
#pragma once

#include <nmktoolbox/trifile/TriangleFileFlue.h>
#include <nmktoolbox/trifile/TriangleFileTTR.h>
#include <nmktoolbox/trifile/nmkAppendTri.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>
#include <nmktoolbox/trifile/nmkGiTriDataTypes.h>
#include <nmktoolbox/trifile/nmkNMTFileMaker.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>
#include <nmktoolbox/trifile/nmkSTLFileWrite.h>
#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>
#include <nmktoolbox/trifile/nmkTriBoundary.h>
#include <nmktoolbox/trifile/nmkTriFileNMT.h>
#include <nmktoolbox/trifile/nmkTriFileReader.h>
