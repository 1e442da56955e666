// random_number.h: numbers that cannot be predicted.
#pragma once

#include <cstdint>

namespace nmk_filesystem {

/// Stores 64 bits from the kernel's generator; false, with errno, if it fails.
bool random_number(std::uint64_t& number);

}  // namespace nmk_filesystem
