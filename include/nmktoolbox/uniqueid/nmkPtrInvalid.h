// nmkPtrInvalid.h: the tag that picks the overload which makes an invalid identifier.
#pragma once

/// Only picks an overload; its value is not read.
enum nmkPtrInvalid { nmk_ptr_invalid = 0 };
