#include <nmktoolbox/ordering/nmkAnnealState.h>

#include "ordering/run_time_type.h"

const utTypeID& nmkAnnealState::ut_dynamic_type() const { return ut_static_type(); }

int nmkAnnealState::ut_is_kind_of(const utTypeID& type) const {
    return nmk_ordering::is_kind(*this, type);
}

// Pure, but with a body: the implicit assignment of a caller's own state calls it.
nmkAnnealState& nmkAnnealState::operator=(const nmkAnnealState&) { return *this; }

nmkAnnealState::~nmkAnnealState() = default;

const utTypeID& nmkAnnealState::ut_static_type() {
    static const utTypeID type("nmkAnnealState");
    return type;
}

nmkAnnealState* nmkAnnealState::ut_dynamic_cast(nmkAnnealState* state) { return state; }

const nmkAnnealState* nmkAnnealState::ut_dynamic_cast(const nmkAnnealState* state) { return state; }
