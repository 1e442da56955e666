// collections.h: the subsystem collections, all of its headers.
#pragma once

#include <nmktoolbox/collections/CRuntimeClassPtrObj.h>
#include <nmktoolbox/collections/nmkBalBinTree.h>
#include <nmktoolbox/collections/nmkPtrClaim.h>
#include <nmktoolbox/collections/nmkTransPairutStringcoTable.h>
