// trifile.h: triangle models, read, joined, marked, bounded and written.
#pragma once

#include <nmktoolbox/trifile/nmkAppendTri.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>
