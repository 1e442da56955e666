// run_time_type.h: the run-time types of states and items, by one rule.
//
// An object is of the kind of the type that it reports by ut_dynamic_type, of every base of that
// type, and of every library class that its C++ class derives from. So a caller's class that only
// overrides ut_dynamic_type is of its own kind, and one whose type names no base, or that overrides
// nothing, is still of the kind of its base class.
#pragma once

#include <utils/utTypeID.h>

namespace nmk_ordering {

/// ut_is_kind_of for an object of Class or of a class derived from it: 1 or 0.
template <class Class>
int is_kind(const Class& object, const utTypeID& type) {
    const bool is_reported = object.ut_dynamic_type().is_kind_of(type);
    return is_reported || Class::ut_static_type().is_kind_of(type) ? 1 : 0;
}

/// `object` as a pointer to Derived; null if it is null or of another kind.
template <class Derived, class Base>
Derived* cast_to_kind(Base* object) {
    const bool is_derived =
        object != nullptr && object->ut_is_kind_of(Derived::ut_static_type()) != 0;
    return is_derived ? static_cast<Derived*>(object) : nullptr;
}

}  // namespace nmk_ordering
