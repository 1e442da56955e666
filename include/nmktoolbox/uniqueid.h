// uniqueid.h: identities that survive saving and loading, and references to them.
#pragma once

#include <nmktoolbox/uniqueid/nmkActionBlocker.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponent.h>
#include <nmktoolbox/uniqueid/nmkMachinableComponentPtr.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkObjectIdAccessor.h>
#include <nmktoolbox/uniqueid/nmkParThicknessInterface.h>
#include <nmktoolbox/uniqueid/nmkPtrInvalid.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectIdList.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPair.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPtr.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdTable.h>
