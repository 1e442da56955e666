// or_throw.h: the value of a Result; its Error is thrown up to the command.
#pragma once

#include <utility>

#include "text/result.h"

namespace nmk_curve {

template <class Value>
Value or_throw(nmk_text::Result<Value> result) {
    if (!result) throw nmk_text::Error(result.error());
    return *std::move(result);
}

}  // namespace nmk_curve
