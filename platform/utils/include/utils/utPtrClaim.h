// utPtrClaim.h: whether a pointer is handed over together with the ownership of its target.
#pragma once

enum utPtrClaim : int { utPtrBorrow = 0, utPtrClaimed = 1 };
