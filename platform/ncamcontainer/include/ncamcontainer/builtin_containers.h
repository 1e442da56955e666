// builtin_containers.h: names for the containers of numbers and strings.
#pragma once

#include <ncamcontainer/coDList.h>
#include <ncamcontainer/coDynArr.h>
#include <ncamcontainer/coFixedArr.h>
#include <ncamcontainer/coPageArr.h>
#include <ncamcontainer/coSList.h>
#include <ncamcontainer/coSet.h>
#include <ncamcontainer/co_hash.h>
#include <utils/utString.h>

using intcoFixedArr = coFixedArr<int>;
using intcoDynArr = coDynArr<int>;
using intcoPageArr = coPageArr<int>;
using intcoDList = coDList<int>;
using intcoSList = coSList<int>;
using intcoSet = coSet<int>;

using doublecoFixedArr = coFixedArr<double>;
using doublecoDynArr = coDynArr<double>;
using doublecoPageArr = coPageArr<double>;
using doublecoDList = coDList<double>;

using utStringcoDList = coDList<utString>;
using utStringcoDynArr = coDynArr<utString>;

/// Hash of the bytes; the null string and the empty text have the same.
inline unsigned int co_hash(const utString& text) { return co_hash(text.c_str(), text.length()); }

using utStringcoSet = coSet<utString>;
