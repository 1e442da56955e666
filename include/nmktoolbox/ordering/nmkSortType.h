// nmkSortType: the orders that nmkPointSorter knows.
//
// The letters of a name give the direction of a grid: in "X" the rows are of equal y and are read
// along x. A Z at the end means zigzag: every second row runs backwards.
#pragma once

#include <nmktoolbox/export.h>

/// An order for nmkPointSorter. Values not listed here are unsupported.
enum nmkSortType : int {
    nmkSortTypeNone = 0,
    nmkSortTypeShortest = 1,
    nmkSortTypeClosest = 2,
    nmkSortTypeConcentric = 3,
    nmkSortTypeRadial = 4,
    nmkSortTypeX = 5,
    nmkSortTypeY = 6,
    nmkSortTypeDiag1 = 7,
    nmkSortTypeDiag2 = 8,
    nmkSortTypeXZ = 9,
    nmkSortTypeYZ = 10,
    nmkSortTypeDiag1Z = 11,
    nmkSortTypeDiag2Z = 12,
    nmkSortTypeCylinder = 13,        // named, but not sorted here
    nmkSortTypeShortestOneWay = 17,  // "Shortest" for lines that must not be reversed
};

/// The name of a type, and "Invalid" for every value above nmkSortTypeCylinder or below 0.
NMKTOOLBOX_EXPORT const char* _nmkSortType_get_str(nmkSortType type);
