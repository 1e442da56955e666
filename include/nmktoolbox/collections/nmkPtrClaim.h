// nmkPtrClaim.h: the tag that picks the constructor which takes a pointer's target over.
#pragma once

/// Only picks an overload; its value is not read.
enum nmkPtrClaim { nmk_ptr_claim = 0 };
