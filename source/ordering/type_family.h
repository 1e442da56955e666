// type_family.h: what every class with its own run-time type does alike.
#pragma once

#include <utils/utTypeID.h>

namespace nmk_ordering {

/// `object` as a pointer to Derived, null if it is null or of another kind.
template <class Derived, class Base>
Derived* cast_to_kind(Base* object) {
    const bool is_derived =
        object != nullptr && object->ut_is_kind_of(Derived::ut_static_type()) != 0;
    return is_derived ? static_cast<Derived*>(object) : nullptr;
}

}  // namespace nmk_ordering
