// nmkPtrClaim.h: the tag that selects the constructor which takes ownership of a pointer's target.
#pragma once

/// Only selects an overload; its value is not read.
enum nmkPtrClaim { nmk_ptr_claim = 0 };
