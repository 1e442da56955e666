// random_number.h: numbers that nobody can foresee.
#pragma once

#include <cstdint>

namespace winapi {

/// 64 bits from the kernel; false, with errno, if it has none to give.
bool random_number(std::uint64_t& number);

}  // namespace winapi
