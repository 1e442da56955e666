// search.h: everything of the search subsystem.
#pragma once

#include <nmktoolbox/search/nmk2dSearchGoal.h>
#include <nmktoolbox/search/nmk2dSearchNode.h>
#include <nmktoolbox/search/nmk2dSearchNodeGenerator.h>
#include <nmktoolbox/search/nmk2dSearchNodeVerifier.h>
#include <nmktoolbox/search/nmkAStarSearch.h>
#include <nmktoolbox/search/nmkAStarSearchNode.h>
#include <nmktoolbox/search/nmkLatticeRoute.h>
#include <nmktoolbox/search/nmkSearchGoal.h>
#include <nmktoolbox/search/nmkSearchNode.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>
#include <nmktoolbox/search/nmkSearchNodeVerifier.h>
