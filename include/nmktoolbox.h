// nmktoolbox: the whole library.
#pragma once

#include <nmktoolbox/archive.h>
#include <nmktoolbox/collections.h>
#include <nmktoolbox/curves.h>
#include <nmktoolbox/files.h>
#include <nmktoolbox/ordering.h>
#include <nmktoolbox/runtime.h>
#include <nmktoolbox/search.h>
#include <nmktoolbox/serializationexerciser.h>
#include <nmktoolbox/solver.h>
#include <nmktoolbox/trifile.h>
#include <nmktoolbox/uniqueid.h>
#include <nmktoolbox/xml.h>
