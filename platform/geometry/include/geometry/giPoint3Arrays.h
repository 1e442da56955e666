// giPoint3Arrays.h: the arrays and lists of points that come with the geometry library.
#pragma once

#include <geometry/giPoint3.h>
#include <ncamcontainer/coDList.h>
#include <ncamcontainer/coDynArr.h>
#include <ncamcontainer/coPageArr.h>

using giPoint3coPageArr = coPageArr<giPoint3>;
using giPoint3coDynArr = coDynArr<giPoint3>;
using giPoint3coDList = coDList<giPoint3>;
