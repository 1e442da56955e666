// ordering.h: everything that orders machining items.
#pragma once

#include <nmktoolbox/ordering/nmkAnneal.h>
#include <nmktoolbox/ordering/nmkAnnealItemOrientedTP.h>
#include <nmktoolbox/ordering/nmkAnnealItemTP.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>
#include <nmktoolbox/ordering/nmkAnnealOrderTPState.h>
#include <nmktoolbox/ordering/nmkAnnealState.h>
#include <nmktoolbox/ordering/nmkAnnealStateNonReversible.h>
#include <nmktoolbox/ordering/nmkAnnealStatePoints.h>
#include <nmktoolbox/ordering/nmkAnnealStateReversibleLines.h>
#include <nmktoolbox/ordering/nmkAnnealStateTester.h>
#include <nmktoolbox/ordering/nmkAnnealStateTwoItemStates.h>
